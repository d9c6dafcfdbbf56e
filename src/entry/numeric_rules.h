#pragma once

#include "entry/price_row.h"
#include "trade/trade_data.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

// The numeric edits of a dialog as data: which controls form a row, and what may be typed and stepped in
// them.

// A price (whole part, spin button, numerator) or a quantity (edit and spin button, no numerator).
struct NumericRow {
    int edit = 0;  // whole part or quantity
    int spin = 0;
    int numerator = 0;  // 0: a quantity
    bool wheelSteps = true;
    // A price of a two-leg commodity that is stepped by the first leg's tick.
    bool firstLegTick = true;
    // The whole part takes a minus sign for a two-leg commodity.
    bool minusForTwoLegs = false;
};

enum class NumericKind { None, Quantity, Whole, Numerator, Fee };

// Which edit is judged when one reports a new text.
enum class TextRuleScope { ChangedEdit, FocusedEdit };

struct NumericTable {
    std::span<const NumericRow> rows;
    int feeEdit = 0;  // takes numbers, never steps
    TextRuleScope scope = TextRuleScope::ChangedEdit;
};

struct NumericTarget {
    const NumericRow* row = nullptr;  // null for the fee and for other controls
    NumericKind kind = NumericKind::None;
};

// What a control id is in the table.
NumericTarget FindNumeric(const NumericTable& table, int controlId);
// The row of a spin button; null for other controls.
const NumericRow* FindRowOfSpin(const NumericTable& table, int spinId);

// The contract that a dialog shows, as its numeric edits need it. Asked anew on every key.
class INumericContext {
public:
    virtual CommodityKey Commodity() const = 0;
    virtual TradeData Trade() const = 0;
    // A price in the notation of the contract, for a whole-part edit.
    virtual std::string FormatPrice(double price) const = 0;

protected:
    ~INumericContext() = default;
};

// True for a text that may be typed into the target.
bool MayBeTyped(const NumericTarget& target, std::string_view text, const INumericContext& context);

// The new texts of a row after one step; an absent text stays as it is. Nothing for a control without steps,
// and nothing when one of the texts could not have been typed.
struct NumericStep {
    std::string edit;
    std::optional<std::string> numerator;
};
std::optional<NumericStep> StepNumeric(const NumericTarget& target, std::string_view editText,
                                       std::string_view numeratorText, bool up,
                                       const INumericContext& context);
