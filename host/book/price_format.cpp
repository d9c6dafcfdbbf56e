#include "book/price_format.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace {

constexpr int kMostDigits = 12;

bool ReadWhole(const std::string& text, double& value) {
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && std::isfinite(value);
}

}  // namespace

bool SamePrice(double a, double b) {
    return std::fabs(a - b) <= kPriceTolerance;
}

std::string DecimalText(double price, int minimumDigits) {
    char text[400];
    for (int digits = minimumDigits;; ++digits) {
        std::snprintf(text, sizeof text, "%.*f", digits, price);
        if (digits >= kMostDigits || std::fabs(std::strtod(text, nullptr) - price) <= kPriceTolerance) {
            return text;
        }
    }
}

std::string PriceText(double price, const CommodityRecord* commodity) {
    price += 0.0;  // no "-0"
    const double tick = commodity ? commodity->tickNumerator : 1;
    const std::uint32_t denominator = commodity ? commodity->tickDenominator : 1;
    if (denominator < 2) {
        int digits = 0;
        for (double scaled = tick; commodity && digits < 8 && std::fabs(scaled - std::round(scaled)) > 1e-7;
             scaled *= 10) {
            ++digits;
        }
        return DecimalText(price, digits);
    }
    double whole = std::floor(price);
    const double exact = (price - whole) * denominator;
    double numerator = std::round(exact);
    if (std::fabs(exact - numerator) > 1e-5) {
        return DecimalText(price, 0);
    }
    if (numerator >= denominator) {
        whole += 1;
        numerator = 0;
    }
    const std::string wholeText = DecimalText(whole, 0);
    return numerator == 0 ? wholeText
                          : wholeText + '+' + DecimalText(numerator, 0) + '/' + std::to_string(denominator);
}

std::optional<double> ReadPriceText(std::string_view text) {
    double whole = 0;
    double numerator = 0;
    double denominator = 1;
    const std::size_t plus = text.find('+', 1);
    if (plus != std::string_view::npos) {
        const std::size_t slash = text.find('/', plus);
        if (slash == std::string_view::npos ||
            !ReadWhole(std::string(text.substr(plus + 1, slash - plus - 1)), numerator) ||
            !ReadWhole(std::string(text.substr(slash + 1)), denominator) || denominator <= 0) {
            return std::nullopt;
        }
    }
    if (!ReadWhole(std::string(text.substr(0, plus)), whole)) {
        return std::nullopt;
    }
    return whole + numerator / denominator;
}
