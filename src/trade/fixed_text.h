#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

// A fixed-width text field of a packed record: 8-bit characters, zero-terminated when shorter than the field.
// Reading never runs past the field, so an unterminated field costs a cut text and nothing else; writing cuts
// at Width - 1 characters and fills the rest with zeros.
template <std::size_t Width>
struct FixedText {
    static constexpr std::size_t kWidth = Width;
    char chars[Width];

    std::string_view View() const {
        const void* end = std::memchr(chars, 0, Width);
        return {chars, end ? static_cast<std::size_t>(static_cast<const char*>(end) - chars) : Width};
    }
    std::string Str() const { return std::string(View()); }
    bool Empty() const { return chars[0] == 0; }

    void Set(std::string_view text) {
        text = text.substr(0, text.find('\0'));
        const std::size_t length = text.size() < Width ? text.size() : Width - 1;
        if (length) {  // an empty view may point nowhere
            std::memmove(chars, text.data(), length);
        }
        std::memset(chars + length, 0, Width - length);
    }

    friend bool operator==(const FixedText& field, std::string_view text) { return field.View() == text; }
};
