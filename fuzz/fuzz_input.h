#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// What a fuzz target promises beyond not crashing. A broken promise ends the program, so that the fuzzer
// keeps the input.
inline void Require(bool kept) {
    if (!kept) {
        __builtin_trap();
    }
}

// Takes the fuzzer's bytes apart, from the front; what runs out is zero or empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size) {}

    template <typename Value>
    Value Take() {
        Value value{};
        const std::size_t count = m_rest.size() < sizeof(value) ? m_rest.size() : sizeof(value);
        if (count) {
            std::memcpy(&value, m_rest.data(), count);
        }
        m_rest.remove_prefix(count);
        return value;
    }
    // Up to the next line break.
    std::string TakeLine() {
        const std::size_t end = m_rest.find('\n');
        const std::string line(m_rest.substr(0, end));
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return line;
    }
    // In memory of exactly its size, so that reading past the end is seen.
    std::string TakeRest() { return std::string(m_rest); }
    std::string_view Rest() const { return m_rest; }

private:
    std::string_view m_rest;
};
