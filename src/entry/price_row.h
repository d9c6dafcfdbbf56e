#pragma once

#include "trade/host_records.h"
#include "trade/trade_data.h"

#include <cstdint>
#include <string>
#include <string_view>

// A price as it is entered: whole part as text, numerator over the dialog's one denominator.
struct PriceRow {
    std::string whole;
    std::int32_t numerator = 0;
};

// atof(whole) + numerator / denominator.
double PriceValue(const PriceRow& row, std::int32_t denominator);

struct SplitPrice {
    PriceRow row;
    std::int32_t denominator = 0;  // 0: the text names none
};
// Splits a host price text: "97+3/8" into 97, 3 and 8; a text without "/" is the whole part.
SplitPrice SplitPriceText(std::string_view text);
// The same price in parts of `denominator`: a host may write 6/8 as 3/4. A fraction that has no such form,
// and a price without one, stays as it is.
SplitPrice InPartsOf(std::int32_t denominator, SplitPrice price);

// The tick of one step; tick 1 and denominator 1 without a commodity.
struct StepRule {
    double tick = 1;
    std::int32_t integerTick = 1;
    std::int32_t denominator = 1;
};
// Prices of a two-leg commodity other than the order price step by its first leg's commodity (`firstLeg`).
StepRule StepRuleOf(const CommodityKey& commodity, bool firstLeg, const TradeData& trade);

// One step of a decimal price: the value to be formatted by the host.
double StepDecimal(std::string_view whole, bool up, const StepRule& rule);
// One step of a fractional price, with carry and borrow.
PriceRow StepFraction(std::string_view whole, std::string_view numerator, bool up, const StepRule& rule);
// One step of a quantity; never below 0 by stepping down.
std::int32_t StepQuantity(std::string_view text, bool up);
