#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Bytes from an offset of a record on.
struct BytesAt {
    std::size_t offset;
    std::string bytes;
};
using Bytes = std::vector<BytesAt>;

inline Bytes operator+(Bytes parts, const Bytes& more) {
    parts.insert(parts.end(), more.begin(), more.end());
    return parts;
}

// Compares the whole record: what no part names is zero, later parts overwrite earlier ones.
template <typename Record>
void ExpectBytes(const Record& record, const Bytes& parts) {
    std::string expected(sizeof(record), '\0');
    for (const BytesAt& part : parts) {
        expected.replace(part.offset, part.bytes.size(), part.bytes);
    }
    const char* actual = reinterpret_cast<const char*>(&record);
    for (std::size_t i = 0; i < sizeof(record); ++i) {
        EXPECT_EQ(static_cast<int>(actual[i]), static_cast<int>(expected[i])) << "at offset " << i;
    }
}
