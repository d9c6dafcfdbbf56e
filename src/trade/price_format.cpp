#include "trade/price_format.h"

#include "framework/number_conversion.h"
#include "framework/standard_arithmetic.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMostDigits = 15;    // more are noise of binary arithmetic
constexpr int kMostDecimals = 10;  // more than any tick has

std::string WholeText(double value) {
    return WriteDecimal(value + 0.0, 0);  // + 0.0: no negative zero
}

std::string DecimalText(double price) {
    const int decimals = std::min(kMostDecimals, kMostDigits - 1 - DecimalExponent(price, kMostDigits));
    if (decimals <= 0) {
        return WholeText(price);
    }
    const std::string text = WriteDecimal(price, decimals);
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
