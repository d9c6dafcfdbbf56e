#pragma once

#include "book/ledger.h"
#include "book/record_json.h"

#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// One request as it came in and what became of it.
struct JournalEntry {
    std::string operation;
    const RecordLayout* layout = nullptr;  // null when the request carries no record
    const void* record = nullptr;          // its bytes, as they came
    Json arguments = Json::object();       // what the request carries beside the record
    int result = 0;
    std::string note;  // the reason of a refusal, or the fault that was set
    std::vector<Change> changes;
};

// Keeps one JSON line a request and appends it to a file when one is given. docs/host.md describes the line.
class Journal {
public:
    using Clock = std::function<std::string()>;  // local time, "%Y-%m-%d %H:%M:%S.mmm"

    Journal();  // with the machine's clock
    explicit Journal(Clock clock) : m_clock(std::move(clock)) {}

    // Lines are appended to the file from now on. False when it cannot be opened.
    bool Open(const std::string& path);
    void Write(const JournalEntry& entry);

    const std::vector<std::string>& Lines() const { return m_lines; }
    // Asked for remarks on each entry before it is written, when set: UTF-8, for people, without any effect.
    std::function<std::vector<std::string>(const JournalEntry& entry)> review;
    // Called with each new line.
    std::function<void(const std::string& line)> onLine;

private:
    Clock m_clock;
    std::ofstream m_file;
    std::vector<std::string> m_lines;
};
