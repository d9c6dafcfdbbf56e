// A host's price text, a tick and a denominator: splitting, stepping and writing agree with each other.
#include "entry/number_text.h"
#include "entry/price_row.h"
#include "fuzz/fuzz_input.h"
#include "trade/price_format.h"

#include <cmath>

namespace {

void StepThereAndBack(const SplitPrice& price, const StepRule& rule) {
    const std::string numerator = std::to_string(price.row.numerator);
    const PriceRow up = StepFraction(price.row.whole, numerator, true, rule);
    const PriceRow down = StepFraction(price.row.whole, numerator, false, rule);
    StepQuantity(price.row.whole, true);
    StepQuantity(price.row.whole, false);
    const bool inRow = price.row.numerator >= 0 && price.row.numerator < rule.denominator &&
                       std::fabs(ToDouble(price.row.whole)) < 1e6;
    if (inRow && rule.integerTick > 0 && rule.integerTick < 1'000'000) {
        Require(up.numerator >= 0 && up.numerator < rule.denominator);
        Require(down.numerator >= 0 && down.numerator < rule.denominator);
        Require(PriceValue(up, rule.denominator) > PriceValue(down, rule.denominator));
    }
}

void WriteAndSplit(double price, std::uint32_t denominator) {
    CommodityRecord commodity{};
    commodity.tickDenominator = denominator;
    const std::string text = FormatPriceText(price, &commodity);
    const SplitPrice split = SplitPriceText(text);
    if (std::fabs(price) < 1e6 && denominator < 1'000'000) {
        const double written = PriceValue(split.row, split.denominator);
        Require(std::fabs(written - price) <= (denominator >= 2 ? 0.5 / denominator : 1e-10) + 1e-9);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const auto tick = input.Take<double>();
    const auto integerTick = input.Take<std::int32_t>();
    const auto denominator = input.Take<std::int32_t>();
    const std::string text = input.TakeRest();

    const SplitPrice price = SplitPriceText(text);
    Require(text.find('/') != std::string::npos || price.row.whole == text);
    PriceValue(price.row, price.denominator);
    const StepRule rule{tick, integerTick, denominator};
    StepThereAndBack(price, rule);
    StepDecimal(price.row.whole, true, rule);
    StepDecimal(price.row.whole, false, rule);
    WriteAndSplit(ToDouble(price.row.whole), static_cast<std::uint32_t>(denominator));
    WriteAndSplit(tick, static_cast<std::uint32_t>(denominator));
    return 0;
}
