#pragma once

#include "framework/standard_arithmetic.h"
#include "framework/trim_blanks.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>

// Numbers of texts, the same in every locale and under every floating-point setting of the host.

// The number at the start of a text as std::from_chars reads it, with a plus sign as well; `rest` is what
// follows it. 0, and the whole text as rest, when there is none or it is out of range.
template <typename Number>
Number ReadNumber(std::string_view text, std::string_view& rest) {
    rest = text;
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    Number value = 0;
    const StandardArithmetic standard;
    const auto [stopped, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(static_cast<double>(value))) {
        return 0;
    }
    rest = text.substr(static_cast<std::size_t>(stopped - text.data()));
    return value;
}

// The number that a text is, blanks at its ends aside; 0 when it is none.
template <typename Number>
Number ReadWholeNumber(std::string_view text) {
    std::string_view rest;
    const Number value = ReadNumber<Number>(TrimBlanks(text), rest);
    return rest.empty() ? value : 0;
}

// Every quantity and numerator that is entered is read by this.
inline std::int32_t ReadInteger(std::string_view text) {
    return ReadWholeNumber<std::int32_t>(text);
}
