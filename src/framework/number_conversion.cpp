#include "framework/number_conversion.h"

#include "framework/format_text.h"
#include "framework/standard_arithmetic.h"
#include "framework/trim_blanks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace {

constexpr std::size_t kDecidingDigits = 800;  // further ones matter only in being zeros or not
constexpr int kMostExponent = 100'000'000;    // as good as any greater one
constexpr int kShortDigits = 15;

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// A sign, which is taken off the text.
bool TakeMinus(std::string_view& text) {
    const bool minus = text.starts_with('-');
    if (minus || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    return minus;
}

// An exponent ("e-2"), which is taken off the text; 0 when there is none.
int TakeExponent(std::string_view& text) {
    if (!text.starts_with('e') && !text.starts_with('E')) {
        return 0;
    }
    std::string_view digits = text.substr(1);
    const bool minus = TakeMinus(digits);
    if (digits.empty() || !IsDigit(digits.front())) {
        return 0;
    }
    int exponent = 0;
    for (; !digits.empty() && IsDigit(digits.front()); digits.remove_prefix(1)) {
        exponent = std::min(exponent * 10 + (digits.front() - '0'), kMostExponent);
    }
    text = digits;
    return minus ? -exponent : exponent;
}

// The library's text with a point, whatever the host's locale has in its place, and without zeros at the end.
std::string Tidied(std::string text) {
    const std::size_t point = text.find_first_not_of("-0123456789");
    if (point == std::string::npos) {
        return text;
    }
    text.replace(point, text.find_first_of("0123456789", point) - point, ".");
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text;
}

struct Scientific {
    std::string mantissa;  // "-9.725"
    int exponent;
};

Scientific InDigits(double value, int digits) {
    const StandardArithmetic standard;
    const std::string text = FormatText("%.*e", digits - 1, value);
    const std::size_t exponent = text.rfind('e');
    return {Tidied(text.substr(0, exponent)), std::atoi(text.c_str() + exponent + 1)};
}

}  // namespace

double ReadDecimal(std::string_view text, std::string_view& rest) {
    rest = text;
    const bool minus = TakeMinus(text);
    std::string digits;  // from the first that is not zero
    int exponent = 0;    // of the last of them
    bool anyDigit = false;
    bool point = false;
    bool more = false;  // follows than was taken
    for (; !text.empty(); text.remove_prefix(1)) {
        const char character = text.front();
        if (character == '.' && !point) {
            point = true;
            continue;
        }
        if (!IsDigit(character)) {
            break;
        }
        anyDigit = true;
        exponent -= point;
        if (digits.size() == kDecidingDigits) {
            ++exponent;
            more = more || character != '0';
        } else if (character != '0' || !digits.empty()) {
            digits += character;
        }
    }
    if (!anyDigit) {
        return 0;
    }
    if (more) {
        digits += '1';
        --exponent;
    }
    exponent += TakeExponent(text);
    rest = text;
    const StandardArithmetic standard;
    // Without a point, which another locale could read otherwise: "-12345e-2".
    const std::string number = (minus ? "-0" : "0") + digits + 'e' + std::to_string(exponent);
    const double value = std::strtod(number.c_str(), nullptr);
    const bool tooSmall = value == 0 && !digits.empty();
    return std::isfinite(value) && !tooSmall ? value : 0;
}

double ReadWholeDecimal(std::string_view text) {
    std::string_view rest;
    const double value = ReadDecimal(TrimBlanks(text), rest);
    return rest.empty() ? value : 0;
}

std::int32_t ReadInteger(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    std::int32_t value = 0;
    const char* const end = text.data() + text.size();
    return std::from_chars(text.data(), end, value).ptr == end ? value : 0;
}

std::string WriteDecimal(double value, int decimals) {
    const StandardArithmetic standard;
    return Tidied(FormatText("%.*f", decimals, value));
}

std::string WriteShort(double value) {
    if (!std::isfinite(value)) {
        return std::string(std::signbit(value) ? "-" : "") + (std::isnan(value) ? "nan" : "inf");
    }
    const auto [mantissa, exponent] = InDigits(value, kShortDigits);
    if (exponent >= -4 && exponent < kShortDigits) {
        return WriteDecimal(value, kShortDigits - 1 - exponent);
    }
    return mantissa + FormatText("e%+03d", exponent);
}

int DecimalExponent(double value, int digits) {
    return InDigits(value, digits).exponent;
}
