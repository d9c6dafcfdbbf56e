#include "controls/number_text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <regex>

namespace {

constexpr double kInt32Max = std::numeric_limits<std::int32_t>::max();
constexpr double kInt32Min = std::numeric_limits<std::int32_t>::min();

double HalfAwayFromZero(double x) {
    return std::trunc(x > 0 ? x + 0.5 : x - 0.5) + 0.0;  // + 0.0: no negative zero
}

std::string_view WithoutLeadingBlanks(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\n\v\f\r");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

// std::from_chars knows no plus sign.
std::string_view WithoutPlus(std::string_view text) {
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return plus ? text.substr(1) : text;
}

}  // namespace

bool IsNumberText(std::string_view text, bool integerOnly, bool negativeAllowed) {
    // Compiling a pattern costs hundreds of times a match.
    static const std::regex patterns[2][2] = {
        {std::regex(R"(^(\d+)?(\.)?(\d+)?$)"), std::regex(R"(^(-)?(\d+)?(\.)?(\d+)?$)")},
        {std::regex(R"(^(\d+)?$)"), std::regex(R"(^(-)?(\d+)?$)")},
    };
    // The matcher recurses once per character, so a long text is turned away before it.
    return text.size() <= kMaxNumberText &&
           std::regex_match(text.begin(), text.end(), patterns[integerOnly][negativeAllowed]);
}

double ToDouble(std::string_view text) {
    text = WithoutPlus(WithoutLeadingBlanks(text));
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return std::isfinite(value) ? value : 0;
}

std::int32_t ToInt(std::string_view text) {
    text = WithoutPlus(WithoutLeadingBlanks(text));
    std::int32_t value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        return text[0] == '-' ? std::numeric_limits<std::int32_t>::min()
                              : std::numeric_limits<std::int32_t>::max();
    }
    return value;
}

std::int32_t RoundHalfAwayFromZero(double x) {
    const double rounded = HalfAwayFromZero(x);
    if (std::isnan(rounded)) {
        return 0;
    }
    return static_cast<std::int32_t>(std::fmin(std::fmax(rounded, kInt32Min), kInt32Max));
}

double RoundToTick(double value, double tick) {
    return tick == 0.0 ? value : HalfAwayFromZero(value / tick) * tick;
}

std::int32_t TruncToTick(std::int32_t value, std::int32_t tick) {
    // The remainder is taken in 64 bits: the smallest number has no counterpart to divide into.
    return tick == 0 ? value : static_cast<std::int32_t>(value - std::int64_t{value} % tick);
}

bool IsWholeTicks(double price, double tick, double tolerance) {
    if (!(std::fabs(tick) > 0)) {
        return true;
    }
    double whole = 0;
    const double fraction = std::modf(std::fabs(price / tick), &whole);
    return fraction < tolerance || 1 - fraction < tolerance;
}
