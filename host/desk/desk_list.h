#pragma once

#include "book/book.h"
#include "services/journal.h"

#include <functional>
#include <string>
#include <vector>

// A column of a list. `Row` pointers are those that the list's reader returned; texts are UTF-8.
struct DeskColumn {
    std::string title;  // English, shown as Say has it
    int width;          // pixels at 96 dpi
    std::function<std::string(const void* row)> text;
    std::function<double(const void* row)> number;  // set: sorted by it and shown on the right
};

// The rows of one of the desk's lists in the order in which they are shown. No windows: a virtual list view
// asks it for the cells that are visible.
class DeskList {
public:
    using Reader = std::function<std::vector<const void*>()>;

    DeskList(std::string name, std::vector<DeskColumn> columns, Reader read)
        : m_name(std::move(name)), m_columns(std::move(columns)), m_read(std::move(read)) {}

    const std::string& Name() const { return m_name; }
    const std::vector<DeskColumn>& Columns() const { return m_columns; }

    // Reads the rows again and sorts them.
    void Reload();
    // Rows that are equal in the column keep the order of the book. A column of -1, or one that does not
    // exist, is the order of the book itself.
    void SortBy(int column, bool descending);
    int SortColumn() const { return m_sortColumn; }
    bool Descending() const { return m_descending; }

    std::size_t Count() const { return m_rows.size(); }
    // Null beyond the end.
    const void* Row(std::size_t index) const { return index < m_rows.size() ? m_rows[index] : nullptr; }
    std::string Text(std::size_t index, std::size_t column) const;
    // The place of a row, -1 when it is not there.
    int Find(const void* row) const;

    // True for rows that want attention. Empty: none does.
    std::function<bool(const void* row)> marked;

private:
    void Sort();

    std::string m_name;
    std::vector<DeskColumn> m_columns;
    Reader m_read;
    std::vector<const void*> m_rows;
    int m_sortColumn = -1;
    bool m_descending = false;
};

// A line of the journal, taken apart.
struct JournalRow {
    std::size_t line;  // in Journal::Lines
    std::string time;
    std::string operation;
    std::string subject;  // what was asked for, in the words of the first change
    std::string answer;   // "accepted", or why not
    std::string remarks;
};
JournalRow ReadJournalRow(const std::string& line, std::size_t number);

enum DeskListKind { kOrderList, kFillList, kPositionList, kAccountList, kJournalList, kDeskListCount };

// The five lists in the order of DeskListKind, read. The rows are const pointers to OrderEntry, FillEntry,
// PositionEntry, Entry<UserRecord> and JournalRow; they stay valid as long as book and lists live.
std::vector<DeskList> MakeDeskLists(const Book& book, const Journal& journal);
