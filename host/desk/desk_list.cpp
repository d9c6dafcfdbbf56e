#include "desk/desk_list.h"

#include <algorithm>
#include <type_traits>

void DeskList::Reload() {
    m_rows = m_read();
    Sort();
}

void DeskList::SortBy(int column, bool descending) {
    m_sortColumn = column >= 0 && column < static_cast<int>(m_columns.size()) ? column : -1;
    m_descending = descending;
    m_rows = m_read();
    Sort();
}

// Keys are made once a row, not once a comparison.
void DeskList::Sort() {
    if (m_sortColumn < 0) {
        if (m_descending) {
            std::reverse(m_rows.begin(), m_rows.end());
        }
        return;
    }
    const DeskColumn& column = m_columns[static_cast<std::size_t>(m_sortColumn)];
    const auto sortBy = [&](const auto& keyOf) {
        using Key = std::decay_t<decltype(keyOf(nullptr))>;
        std::vector<std::pair<Key, const void*>> keyed;
        keyed.reserve(m_rows.size());
        for (const void* row : m_rows) {
            keyed.emplace_back(keyOf(row), row);
        }
        std::stable_sort(keyed.begin(), keyed.end(), [&](const auto& a, const auto& b) {
            return m_descending ? b.first < a.first : a.first < b.first;
        });
        std::transform(keyed.begin(), keyed.end(), m_rows.begin(),
                       [](const auto& pair) { return pair.second; });
    };
    if (column.number) {
        sortBy(column.number);
    } else {
        sortBy(column.text);
    }
}

std::string DeskList::Text(std::size_t index, std::size_t column) const {
    return index < m_rows.size() && column < m_columns.size() ? m_columns[column].text(m_rows[index])
                                                              : std::string();
}

int DeskList::Find(const void* row) const {
    const auto found = std::find(m_rows.begin(), m_rows.end(), row);
    return row && found != m_rows.end() ? static_cast<int>(found - m_rows.begin()) : -1;
}
