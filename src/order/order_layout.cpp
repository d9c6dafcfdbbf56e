#include "order/order_layout.h"

#include "order/order_population.h"
#include "res/string_table.h"
#include "trade/code_tables.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace {

using Then = ControlChange::Then;

constexpr int kBottomRowControls[] = {IDC_CARRY_FEE_TEXT, IDC_CONFIRM, IDC_CANCEL, IDC_EX_SYSTEM_NO_LABEL,
                                      IDC_EX_SYSTEM_NO};
constexpr int kBottomMargin = 10;

// Collects changes in order.
class Changes {
public:
    void Show(std::initializer_list<int> ids, bool shown) {
        for (const int id : ids) {
            m_list.push_back({{id, WantedIf(shown), Wanted::Keep}, {}, Then::Nothing});
        }
    }
    void Enable(std::initializer_list<int> ids, bool enabled) {
        for (const int id : ids) {
            m_list.push_back({{id, Wanted::Keep, WantedIf(enabled)}, {}, Then::Nothing});
        }
    }
    void ShowAndEnable(std::initializer_list<int> ids, bool both) {
        for (const int id : ids) {
            m_list.push_back({{id, WantedIf(both), WantedIf(both)}, {}, Then::Nothing});
        }
    }
    void Text(int id, std::string text) { m_list.push_back({{id}, std::move(text), Then::Nothing}); }
    void Enter(int id, char code) { m_list.push_back({{id}, {}, Then::EnterCode, code}); }
    void Tell(int id, Then what) { m_list.push_back({{id}, {}, what}); }

    void ShowRow(const PriceRowControls& row, bool shown) {
        Show({row.label, row.whole, row.spin, row.plus, row.numerator, row.slash, row.denominator}, shown);
    }
    void EnableRow(const PriceRowControls& row, bool enabled, bool fraction) {
        Enable({row.label, row.whole, row.spin}, enabled);
        EnableFraction(row, enabled && fraction);
    }
    void EnableFraction(const PriceRowControls& row, bool enabled) {
        Enable({row.plus, row.numerator, row.slash, row.denominator}, enabled);
    }
    // What cannot be entered does not count.
    void ZeroDisabled(const PriceRowControls& row, bool enabled) {
        if (!enabled) {
            Text(row.whole, "0");
            Text(row.numerator, "0");
        }
    }

    std::vector<ControlChange> Take() { return std::move(m_list); }

private:
    std::vector<ControlChange> m_list;
};

bool InFillState(const OrderView& view) {
    return HasFill(view.orderState) || view.mode == OrderMode::Carry;
}

bool IsRowEnabled(PriceRowKind kind, const OrderView& view) {
    const bool limitStop = view.orderType == OrderType::kLimitStop;
    switch (kind) {
        case kOrderPriceRow:
            return view.orderType == OrderType::kLimit || limitStop;
        case kTriggerPriceRow:
            return view.orderType == OrderType::kStopLoss || limitStop;
        case kFillPriceRow:
            return InFillState(view);
        case kFillPrice2Row:
            return view.mode == OrderMode::Carry || (InFillState(view) && view.spread);
        case kNearPositionPriceRow:
            return view.nearPositionChosen;
        case kForwardPositionPriceRow:
            return view.forwardPositionChosen;
    }
    return false;
}

// A numerator belongs to the denominator that it was entered for.
void ShowDenominator(const OrderView& view, Changes& changes) {
    const bool numeratorsCount = view.fractional && !view.newDenominator;
    for (const PriceRowControls& row : kPriceRows) {
        changes.Text(row.denominator, std::to_string(view.denominator));
        if (!numeratorsCount) {
            changes.Text(row.numerator, "0");
        }
    }
}

void RefreshFill(const OrderView& view, Changes& changes) {
    const bool carry = view.mode == OrderMode::Carry;
    const bool filled = InFillState(view);

    const PriceRowControls& price = kPriceRows[kFillPriceRow];
    changes.EnableRow(price, filled, view.fractional);
    if (filled && !carry) {  // a carry has no order price of its own
        changes.Text(price.whole, view.orderPriceWhole);
    }
    changes.ZeroDisabled(price, filled);
    changes.EnableRow(kPriceRows[kFillPrice2Row], IsRowEnabled(kFillPrice2Row, view), view.fractional);

    // A whole fill takes the order's quantity, which the report of a changed order quantity copies.
    const bool ownQty =
        filled && view.mode != OrderMode::Modify && (carry || view.orderState != OrderState::kFilled);
    changes.Enable({IDC_FILL_QTY_LABEL, IDC_FILL_QTY, IDC_FILL_QTY_SPIN}, ownQty);
    if (!ownQty && view.mode != OrderMode::Modify) {
        changes.Text(IDC_FILL_QTY, "0");
    }
    changes.Tell(IDC_ORDER_QTY, Then::TellChanged);

    changes.Enable({IDC_FILL_NO_LABEL, IDC_FILL_NO}, filled);
    changes.ShowAndEnable({IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_FEE_GIVEN, IDC_FEE}, filled);
    if (!filled) {
        changes.Text(IDC_FEE, "");
    }
}

void RefreshOrder(const OrderView& view, Changes& changes) {
    const bool order = view.mode != OrderMode::Carry;
    changes.ShowAndEnable({IDC_SOURCE_LABEL, IDC_SOURCE, IDC_ORDER_TYPE_LABEL, IDC_ORDER_TYPE,
                           IDC_ORDER_STATE_LABEL, IDC_ORDER_STATE, IDC_VALID_TYPE_LABEL, IDC_VALID_TYPE,
                           IDC_ORDER_QTY_LABEL, IDC_ORDER_QTY, IDC_ORDER_QTY_SPIN, IDC_FORCE_CLOSE},
                          order);
    changes.Show({IDC_VALID_DATE_LABEL, IDC_VALID_DATE}, order);
    changes.Enable({IDC_VALID_DATE_LABEL, IDC_VALID_DATE}, view.validType == ValidType::kTillDate);

    for (const PriceRowKind kind : {kOrderPriceRow, kTriggerPriceRow}) {
        const bool enabled = IsRowEnabled(kind, view);
        changes.ShowRow(kPriceRows[kind], order);
        changes.EnableRow(kPriceRows[kind], enabled, view.fractional);
        changes.ZeroDisabled(kPriceRows[kind], enabled);
    }
}

void RefreshPositionPrice(const PriceRowControls& row, bool carry, bool chosen, bool fraction,
                          Changes& changes) {
    changes.ShowRow(row, carry);
    changes.EnableRow(row, chosen, fraction);
    if (!chosen) {
        changes.Text(row.whole, "");
        changes.Text(row.numerator, "0");
        changes.Tell(row.whole, Then::TellFocusLost);
    }
}

void RefreshCarry(const OrderView& view, Changes& changes) {
    const bool carry = view.mode == OrderMode::Carry;
    changes.ShowAndEnable({IDC_FORWARD_CONTRACT_LABEL, IDC_FORWARD_CONTRACT}, carry);
    changes.Show({IDC_FORWARD_DIRECTION_LABEL, IDC_FORWARD_DIRECTION, IDC_NEAR_CHOSEN_POSITION,
                  IDC_FORWARD_CHOSEN_POSITION, IDC_NEAR_POSITION_QTY_LABEL, IDC_NEAR_POSITION_QTY,
                  IDC_FORWARD_POSITION_QTY_LABEL, IDC_FORWARD_POSITION_QTY, IDC_FORWARD_FILL_QTY_LABEL,
                  IDC_FORWARD_FILL_QTY},
                 carry);
    RefreshPositionPrice(kPriceRows[kNearPositionPriceRow], carry, view.nearPositionChosen, view.fractional,
                         changes);
    RefreshPositionPrice(kPriceRows[kForwardPositionPriceRow], carry, view.forwardPositionChosen,
                         view.fractional, changes);
}

// The server keeps the number that the back office once gave; an order without one gets it now.
void SetUpModify(const OrderForm& form, const TradeData& trade, const LocalMoment& now, Changes& changes) {
    changes.Enable({IDC_UPPER_LABEL, IDC_UPPER, IDC_ACCOUNT_LABEL, IDC_ACCOUNT, IDC_CONTRACT_LABEL,
                    IDC_CONTRACT, IDC_CONTRACT_PICK, IDC_DIRECTION_LABEL, IDC_DIRECTION},
                   false);
    const bool numberless = !form.original || form.original->systemNo.Empty();
    changes.Enable({IDC_SYSTEM_NO_LABEL, IDC_SYSTEM_NO}, numberless);
    if (numberless) {
        const std::string operatorNo = OperatorNo(trade.User(form.account, form.sign));
        changes.Text(IDC_SYSTEM_NO, ModifiedSystemNo(operatorNo, now));
    }
}

}  // namespace

OrderView ViewOf(const OrderForm& form, const CommodityRecord* commodity) {
    OrderView view;
    const bool carry = form.mode == OrderMode::Carry;
    view.mode = form.mode;
    view.orderType = carry ? OrderType::kLimit : form.orderType;
    view.orderState = carry ? OrderState::kFilled : form.orderState;
    view.validType = carry ? ValidType::kDay : form.validType;
    view.denominator = form.denominator;
    if (commodity) {
        constexpr std::uint32_t kMost = std::numeric_limits<std::int32_t>::max();
        view.denominator = static_cast<std::int32_t>(std::min(commodity->tickDenominator + 0u, kMost));
        view.fractional = commodity->tickDenominator >= 2;
    }
    view.newDenominator = view.denominator != form.denominator;
    view.spread = IsSpread(form.commodityType);
    view.nearPositionChosen = form.nearPositionChosen;
    view.forwardPositionChosen = form.forwardPositionChosen;
    view.orderPriceWhole = form.orderPrice.whole;
    return view;
}

std::vector<ControlChange> RefreshChanges(const OrderView& view) {
    Changes changes;
    if (view.mode == OrderMode::Carry) {
        changes.Enter(IDC_ORDER_TYPE, OrderType::kLimit);
        changes.Enter(IDC_ORDER_STATE, OrderState::kFilled);
        changes.Enter(IDC_VALID_TYPE, ValidType::kDay);
    }
    RefreshFill(view, changes);
    RefreshOrder(view, changes);
    RefreshCarry(view, changes);
    ShowDenominator(view, changes);
    return changes.Take();
}

std::vector<ControlChange> CommodityChanges(const OrderView& view) {
    Changes changes;
    const PriceRowControls& price2 = kPriceRows[kFillPrice2Row];
    changes.Enable({price2.label, price2.whole, price2.spin}, IsRowEnabled(kFillPrice2Row, view));
    for (int kind = kOrderPriceRow; kind <= kForwardPositionPriceRow; ++kind) {
        changes.EnableFraction(kPriceRows[static_cast<std::size_t>(kind)],
                               IsRowEnabled(static_cast<PriceRowKind>(kind), view) && view.fractional);
    }
    ShowDenominator(view, changes);
    return changes.Take();
}

ModeSetup ModeSetupOf(const OrderForm& form, const TradeData& trade, const LocalMoment& now) {
    ModeSetup setup;
    setup.title = OrderTitle(form.mode, form.original);
    setup.confirmText = ConfirmText(form.mode);
    setup.focusId = TraitsOf(form.mode).focusId;
    setup.disableAll = form.mode == OrderMode::RemoveFilled || form.mode == OrderMode::Move;

    Changes changes;
    if (form.mode == OrderMode::Carry) {
        changes.Enter(IDC_SOURCE, OrderSource::kCarry);
        changes.Enter(IDC_DIRECTION, Direction::kBuy);
    } else if (form.mode == OrderMode::Modify) {
        SetUpModify(form, trade, now, changes);
    } else if (setup.disableAll) {
        changes.Show({IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_FEE_GIVEN, IDC_FEE}, false);
        if (form.mode == OrderMode::Move) {
            changes.ShowAndEnable({IDC_ACCOUNT_LABEL, IDC_ACCOUNT}, true);
        }
    } else if (form.mode == OrderMode::Exercise) {
        changes.Enter(IDC_ORDER_TYPE, OrderType::kExercise);
    }
    setup.changes = changes.Take();
    return setup;
}

std::vector<ControlState> ValidDateStates(char validType) {
    const Wanted enabled = WantedIf(validType == ValidType::kTillDate);
    return {{IDC_VALID_DATE_LABEL, Wanted::Keep, enabled}, {IDC_VALID_DATE, Wanted::Keep, enabled}};
}

std::span<const int> BottomRowControls() {
    return kBottomRowControls;
}

int BottomRowAnchor(OrderMode mode) {
    return mode == OrderMode::Exercise ? IDC_DIRECTION : IDC_CURRENCY;
}

BottomRow BottomRowUnder(int anchorBottom, int confirmHeight) {
    const int top = anchorBottom + kBottomMargin;
    return {top, top + confirmHeight + kBottomMargin};
}
