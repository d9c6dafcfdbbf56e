#include "entry/price_row.h"

#include "entry/number_text.h"
#include "framework/number_conversion.h"
#include "trade/code_tables.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kMaxWholeDigits = 260;

// Towards zero, within 32 bits.
template <typename Number>
std::int32_t Limited(Number value) {
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<Number>(value, Limits::min(), Limits::max()));
}

// Drops an expected character from the head of the text.
bool Take(std::string_view& text, char expected) {
    if (text.empty() || text.front() != expected) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

// Drops a number from the head of the text, 0 and false when there is none.
bool TakeInt(std::string_view& text, std::int32_t& number) {
    const std::size_t sign = text.empty() || (text[0] != '-' && text[0] != '+') ? 0 : 1;
    std::size_t end = text.find_first_not_of("0123456789", sign);
    end = end == std::string_view::npos ? text.size() : end;
    if (end == sign) {
        return false;
    }
    number = ReadInteger(text.substr(0, end));
    text.remove_prefix(end);
    return true;
}

}  // namespace

double PriceValue(const PriceRow& row, std::int32_t denominator) {
    const double whole = ToDouble(row.whole);
    return denominator == 0 ? whole : whole + row.numerator * 1.0 / denominator;
}

SplitPrice SplitPriceText(std::string_view text) {
    if (text.find('/') == std::string_view::npos) {
        return {{std::string(text), 0}, 0};
    }
    // The whole part of a price below zero keeps its sign: the numerator adds to it.
    const std::size_t digits = text.starts_with('-') ? 1 : 0;
    const std::size_t end = std::min(text.find_first_not_of("0123456789", digits), digits + kMaxWholeDigits);
    SplitPrice split;
    if (end == digits) {
        return split;
    }
    split.row.whole = text.substr(0, end);
    text.remove_prefix(end);
    if (Take(text, '+') && TakeInt(text, split.row.numerator) && Take(text, '/')) {
        TakeInt(text, split.denominator);
    }
    return split;
}

SplitPrice InPartsOf(std::int32_t denominator, SplitPrice price) {
    const std::int64_t parts = std::int64_t{price.row.numerator} * denominator;
    if (price.denominator > 0 && denominator > 0 && parts % price.denominator == 0) {
        price.row.numerator = Limited(parts / price.denominator);
        price.denominator = denominator;
    }
    return price;
}

StepRule StepRuleOf(const CommodityKey& commodity, bool firstLeg, const TradeData& trade) {
    const CommodityRecord* record = trade.Commodity(commodity);
    if (record && firstLeg && IsTwoLegType(commodity.commodityType)) {
        record = trade.Commodity({commodity.sign, record->relatedExchangeNo, record->relatedCommodityType,
                                  record->relatedCommodityNo});
    }
    StepRule rule;
    if (record) {
        rule.tick = record->tickNumerator;
        rule.integerTick =
            std::isfinite(rule.tick) && std::fabs(rule.tick) < std::numeric_limits<std::int32_t>::max()
                ? static_cast<std::int32_t>(rule.tick)
                : 0;
        rule.denominator = Limited(std::int64_t{record->tickDenominator});
    }
    return rule;
}

double StepDecimal(std::string_view whole, bool up, const StepRule& rule) {
    const double value = RoundToTick(ToDouble(whole), rule.tick);
    return up ? value + rule.tick : value - rule.tick;
}

PriceRow StepFraction(std::string_view whole, std::string_view numerator, bool up, const StepRule& rule) {
    const std::int64_t denominator = std::max(rule.denominator, 1);
    std::int64_t wholePart = Limited(ToDouble(whole));
    std::int64_t parts = TruncToTick(ReadInteger(numerator), rule.integerTick);
    if (up) {
        parts += rule.integerTick;
        if (parts >= denominator) {
            wholePart += parts / denominator;
            parts %= denominator;
        }
    } else {
        parts -= rule.integerTick;
        if (parts < 0) {
            const std::int64_t borrowed = (-parts + denominator - 1) / denominator;
            wholePart -= borrowed;
            parts += borrowed * denominator;
        }
    }
    return {std::to_string(Limited(wholePart)), Limited(parts)};
}

std::int32_t StepQuantity(std::string_view text, bool up) {
    const std::int64_t quantity = ReadInteger(text);
    return Limited(up ? quantity + 1 : quantity > 0 ? quantity - 1 : quantity);
}
