#include "services/journal.h"

#include <chrono>
#include <cstdio>
#include <ctime>

namespace {

std::string MachineTime() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch());
    char text[40];
    const std::size_t length =
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&seconds));
    std::snprintf(text + length, sizeof text - length, ".%03d", static_cast<int>(sinceEpoch.count() % 1000));
    return text;
}

}  // namespace

Journal::Journal() : Journal(MachineTime) {}

bool Journal::Open(const std::string& path) {
    m_file.close();
    m_file.clear();
    m_file.open(path, std::ios::binary | std::ios::app);
    return m_file.is_open();
}

void Journal::Write(const JournalEntry& entry) {
    Json line;
    line["time"] = m_clock();
    line["operation"] = entry.operation;
    for (const auto& [name, value] : entry.arguments.items()) {
        line[name] = value;
    }
    if (entry.layout && entry.record) {
        line["record"] = std::string(entry.layout->name);
        line["fields"] = RecordToJson(*entry.layout, entry.record);
        line["bytes"] = ToHex(entry.record, entry.layout->size);
    }
    line["result"] = entry.result;
    if (!entry.note.empty()) {
        line["note"] = entry.note;
    }
    Json& changes = line["changed"] = Json::array();
    for (const Change& change : entry.changes) {
        changes.push_back(
            {{"kind", change.kind}, {"id", change.id}, {"what", change.what}, {"text", change.text}});
    }
    if (review) {
        if (const std::vector<std::string> remarks = review(entry); !remarks.empty()) {
            line["remarks"] = remarks;
        }
    }
    m_lines.push_back(JsonText(line));
    if (m_file.is_open()) {
        m_file << m_lines.back() << '\n' << std::flush;
    }
    if (onLine) {
        onLine(m_lines.back());
    }
}
