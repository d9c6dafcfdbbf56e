#pragma once

#include "entry/control_state.h"
#include "entry/date_text.h"
#include "order/order_form.h"
#include "res/resource_ids.h"
#include "trade/trade_data.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

// Which control of the order dialog is shown, enabled, and what it shows, as data that the dialog applies.

// The controls of one price row.
struct PriceRowControls {
    int label;
    int whole;
    int spin;
    int plus;
    int numerator;
    int slash;
    int denominator;
    PriceRow OrderForm::*value;
};

enum PriceRowKind {
    kOrderPriceRow,
    kTriggerPriceRow,
    kFillPriceRow,
    kFillPrice2Row,
    kNearPositionPriceRow,
    kForwardPositionPriceRow,
};

inline constexpr std::array<PriceRowControls, 6> kPriceRows{{
    {IDC_ORDER_PRICE_LABEL, IDC_ORDER_PRICE_WHOLE, IDC_ORDER_PRICE_SPIN, IDC_ORDER_PRICE_PLUS,
     IDC_ORDER_PRICE_NUMERATOR, IDC_ORDER_PRICE_SLASH, IDC_ORDER_PRICE_DENOMINATOR, &OrderForm::orderPrice},
    {IDC_TRIGGER_PRICE_LABEL, IDC_TRIGGER_PRICE_WHOLE, IDC_TRIGGER_PRICE_SPIN, IDC_TRIGGER_PRICE_PLUS,
     IDC_TRIGGER_PRICE_NUMERATOR, IDC_TRIGGER_PRICE_SLASH, IDC_TRIGGER_PRICE_DENOMINATOR,
     &OrderForm::triggerPrice},
    {IDC_FILL_PRICE_LABEL, IDC_FILL_PRICE_WHOLE, IDC_FILL_PRICE_SPIN, IDC_FILL_PRICE_PLUS,
     IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_SLASH, IDC_FILL_PRICE_DENOMINATOR, &OrderForm::fillPrice},
    {IDC_FILL_PRICE2_LABEL, IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN, IDC_FILL_PRICE2_PLUS,
     IDC_FILL_PRICE2_NUMERATOR, IDC_FILL_PRICE2_SLASH, IDC_FILL_PRICE2_DENOMINATOR, &OrderForm::fillPrice2},
    {IDC_NEAR_POSITION_PRICE_LABEL, IDC_NEAR_POSITION_PRICE_WHOLE, IDC_NEAR_POSITION_PRICE_SPIN,
     IDC_NEAR_POSITION_PRICE_PLUS, IDC_NEAR_POSITION_PRICE_NUMERATOR, IDC_NEAR_POSITION_PRICE_SLASH,
     IDC_NEAR_POSITION_PRICE_DENOMINATOR, &OrderForm::nearPositionPrice},
    {IDC_FORWARD_POSITION_PRICE_LABEL, IDC_FORWARD_POSITION_PRICE_WHOLE, IDC_FORWARD_POSITION_PRICE_SPIN,
     IDC_FORWARD_POSITION_PRICE_PLUS, IDC_FORWARD_POSITION_PRICE_NUMERATOR, IDC_FORWARD_POSITION_PRICE_SLASH,
     IDC_FORWARD_POSITION_PRICE_DENOMINATOR, &OrderForm::forwardPositionPrice},
}};

// One change of a control. The list of a refresh is applied from the first to the last, since a change can
// set off a reaction that reads what the changes before it have made.
struct ControlChange {
    enum class Then {
        Nothing,
        EnterCode,     // `code` is entered in a list of words
        TellChanged,   // the edit's text is reported as changed, whether it was or not
        TellFocusLost  // the edit is reported to have lost the focus
    };
    ControlState state;
    std::optional<std::string> text;
    Then then = Then::Nothing;
    char code = 0;
};

// What the controls follow.
struct OrderView {
    OrderMode mode = OrderMode::Input;
    char orderType = 0;
    char orderState = 0;
    char validType = 0;
    bool fractional = false;  // prices are quoted in fractions of the denominator
    bool spread = false;
    bool nearPositionChosen = false;
    bool forwardPositionChosen = false;
    std::int32_t denominator = 1;
    std::string orderPriceWhole;
    bool newDenominator = false;  // another one than the entered numerators belong to
};

// `commodity` is the one that the form names, null when it is not known: then the form's denominator stays.
OrderView ViewOf(const OrderForm& form, const CommodityRecord* commodity);

// The refresh that follows a new order type, state, source or contract. Not for the exercise, whose template
// is left as it is. A refresh must not be started while its changes are applied.
std::vector<ControlChange> RefreshChanges(const OrderView& view);

// As much of a refresh as follows the commodity alone, for a contract that is typed: the fractions and the
// second fill price. Of the entries only numerators that no longer count are touched.
std::vector<ControlChange> CommodityChanges(const OrderView& view);

// What a mode wants once, after the first refresh.
struct ModeSetup {
    std::string title;        // empty: as it is
    std::string confirmText;  // empty: as it is
    // Every child control is disabled first, confirm and cancel button excepted.
    bool disableAll = false;
    std::vector<ControlChange> changes;
    int focusId = 0;  // 0: where it is
};
ModeSetup ModeSetupOf(const OrderForm& form, const TradeData& trade, const LocalMoment& now);

// The validity type decides alone over the valid-until date.
std::vector<ControlState> ValidDateStates(char validType);

// The controls below all others follow the last visible row: their top edges stand at `top`, and the client
// area ends at `clientHeight`. Client pixels.
std::span<const int> BottomRowControls();
int BottomRowAnchor(OrderMode mode);  // the combo box that they stand under
struct BottomRow {
    int top;
    int clientHeight;
};
BottomRow BottomRowUnder(int anchorBottom, int confirmHeight);
