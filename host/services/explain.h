#pragma once

#include <optional>
#include <string>
#include <vector>

// A journal or a record for people, and the comparison of two.

// What a file holds: the lines of a journal, or one record, raw or as hexadecimal text. Throws
// std::invalid_argument with the reason, the line included.
struct ExplainInput {
    std::string name;  // what messages call it, normally the file
    std::string content;
    std::optional<std::string> record;  // "OrderRecord"; without it a raw record is known by its size
};

// Each request, field by field with the word of every code; fields that are empty or 0 are summed up in one
// line, bytes without a name are shown by offset. UTF-8.
std::string Explain(const ExplainInput& input);

// The differences, one a line, empty when there are none: requests are compared in order, by operation,
// result and every field. Addresses are never compared. With `ignoreClock` times, and the clock's digits
// inside generated numbers, count as equal, while what follows them ("_1", "~") does not.
std::string CompareRecords(const ExplainInput& first, const ExplainInput& second, bool ignoreClock);
