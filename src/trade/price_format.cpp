#include "trade/price_format.h"

#include "framework/standard_arithmetic.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr int kMostDigits = 15;    // more are noise of binary arithmetic
constexpr int kMostDecimals = 10;  // more than any tick has

std::string Written(double value, std::chars_format format, int decimals) {
    char buffer[400];  // the greatest double has 309 digits before the point
    const auto written = std::to_chars(buffer, buffer + sizeof(buffer), value, format, decimals);
    return {buffer, written.ptr};
}

std::string WholeText(double value) {
    return Written(value + 0.0, std::chars_format::fixed, 0);  // + 0.0: no negative zero
}

std::string DecimalText(double price) {
    // "-d.ddde+xx", whose exponent is one less than the digits in front of the point.
    const std::string digits = Written(price, std::chars_format::scientific, kMostDigits - 1);
    int exponent = 0;
    const char* const exponentSign = digits.data() + digits.find('e') + 1;
    std::from_chars(exponentSign + (*exponentSign == '+'), digits.data() + digits.size(), exponent);
    const int decimals = std::min(kMostDecimals, kMostDigits - 1 - exponent);
    if (decimals <= 0) {
        return WholeText(price);
    }
    std::string text = Written(price, std::chars_format::fixed, decimals);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') {
        text.pop_back();
    }
    return text == "-0" ? "0" : text;
}

std::string FractionText(double price, std::uint32_t denominator) {
    double whole = std::floor(price);
    double numerator = std::round((price - whole) * denominator);
    if (numerator >= denominator) {
        whole += 1;
        numerator = 0;
    }
    return WholeText(whole) + "+" + WholeText(numerator) + "/" + std::to_string(denominator);
}

}  // namespace

std::string FormatPriceText(double price, const CommodityRecord* commodity) {
    if (!std::isfinite(price)) {
        return {};
    }
    const StandardArithmetic standard;
    const std::uint32_t denominator = commodity ? commodity->tickDenominator : 1;
    return denominator >= 2 ? FractionText(price, denominator) : DecimalText(price);
}
