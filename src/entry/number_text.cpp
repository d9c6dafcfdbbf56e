#include "entry/number_text.h"

#include "framework/number_conversion.h"

#include <cmath>
#include <limits>

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

}  // namespace

bool IsNumberText(std::string_view text, bool integerOnly, bool negativeAllowed) {
    if (text.size() > kMaxNumberText) {
        return false;
    }
    if (negativeAllowed && text.starts_with('-')) {
        text.remove_prefix(1);
    }
    bool pointAllowed = !integerOnly;
    for (const char character : text) {
        const bool point = character == '.';
        if (point ? !pointAllowed : character < '0' || character > '9') {
            return false;
        }
        pointAllowed = pointAllowed && !point;
    }
    return true;
}

double ToDouble(std::string_view text) {
    std::string_view rest;
    return ReadDecimal(WithoutLeadingBlanks(text), rest);
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
    const double ticks = std::fabs(price / tick);
    const double fraction = ticks - std::trunc(ticks);
    return fraction < tolerance || 1 - fraction < tolerance;
}
