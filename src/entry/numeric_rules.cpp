#include "entry/numeric_rules.h"

#include "entry/number_text.h"
#include "trade/code_tables.h"

namespace {

// Above this a commodity quotes in fractions, so that its whole parts take no point.
constexpr double kWholeDenominator = 1.0001;
constexpr std::int32_t kFractionDenominator = 2;

bool QuotesInFractions(const INumericContext& context) {
    const CommodityRecord* commodity = context.Trade().Commodity(context.Commodity());
    return commodity && commodity->tickDenominator > kWholeDenominator;
}

}  // namespace

NumericTarget FindNumeric(const NumericTable& table, int controlId) {
    if (controlId == 0) {
        return {};
    }
    if (controlId == table.feeEdit) {
        return {nullptr, NumericKind::Fee};
    }
    for (const NumericRow& row : table.rows) {
        if (controlId == row.edit) {
            return {&row, row.numerator == 0 ? NumericKind::Quantity : NumericKind::Whole};
        }
        if (controlId == row.numerator) {
            return {&row, NumericKind::Numerator};
        }
    }
    return {};
}

const NumericRow* FindRowOfSpin(const NumericTable& table, int spinId) {
    for (const NumericRow& row : table.rows) {
        if (row.spin == spinId) {
            return &row;
        }
    }
    return nullptr;
}

bool MayBeTyped(const NumericTarget& target, std::string_view text, const INumericContext& context) {
    const bool price = target.kind == NumericKind::Whole || target.kind == NumericKind::Fee;
    const bool integerOnly = !price || QuotesInFractions(context);
    const bool negativeAllowed = target.kind == NumericKind::Whole && target.row->minusForTwoLegs &&
                                 IsTwoLegType(context.Commodity().commodityType);
    return target.kind == NumericKind::None || IsNumberText(text, integerOnly, negativeAllowed);
}

std::optional<NumericStep> StepNumeric(const NumericTarget& target, std::string_view editText,
                                       std::string_view numeratorText, bool up,
                                       const INumericContext& context) {
    if (!target.row) {
        return std::nullopt;
    }
    NumericStep step;
    const StepRule rule = StepRuleOf(context.Commodity(), target.row->firstLegTick, context.Trade());
    if (target.kind == NumericKind::Quantity) {
        step.edit = std::to_string(StepQuantity(editText, up));
    } else if (rule.denominator < kFractionDenominator) {
        step.edit = context.FormatPrice(StepDecimal(editText, up, rule));
    } else {
        const PriceRow stepped = StepFraction(editText, numeratorText, up, rule);
        step = {stepped.whole, std::to_string(stepped.numerator)};
    }
    const NumericKind kind = target.kind == NumericKind::Quantity ? target.kind : NumericKind::Whole;
    const bool typable =
        MayBeTyped({target.row, kind}, step.edit, context) &&
        (!step.numerator || MayBeTyped({target.row, NumericKind::Numerator}, *step.numerator, context));
    return typable ? std::optional(step) : std::nullopt;
}
