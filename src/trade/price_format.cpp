#include "trade/price_format.h"

#include <charconv>
#include <cmath>

namespace {

std::string FixedDecimals(double value, int decimals) {
    char buffer[400];  // the greatest double has 309 digits before the point
    const auto written =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::fixed, decimals);
    return {buffer, written.ptr};
}

// Ten decimals are more than any tick has and fewer than the noise of binary arithmetic.
std::string DecimalText(double price) {
    std::string text = FixedDecimals(price, 10);
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
    return FixedDecimals(whole + 0.0, 0) + "+" + FixedDecimals(numerator, 0) + "/" +
           std::to_string(denominator);
}

}  // namespace

std::string FormatPriceText(double price, const CommodityRecord* commodity) {
    if (!std::isfinite(price)) {
        return {};
    }
    const std::uint32_t denominator = commodity ? commodity->tickDenominator : 1;
    return denominator >= 2 ? FractionText(price, denominator) : DecimalText(price);
}
