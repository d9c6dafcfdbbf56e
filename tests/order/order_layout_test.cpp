#include "order/order_layout.h"

#include "order/order_fixture.h"

#include <algorithm>
#include <set>

namespace {

using Then = ControlChange::Then;
using Ids = std::vector<int>;

// What is left when all changes are applied: "SE" shown and enabled, "hd" hidden and disabled, "-" untouched.
std::string StateOf(const std::vector<ControlChange>& changes, int id) {
    std::string state = "--";
    for (const ControlChange& change : changes) {
        if (change.state.id == id && change.state.shown != Wanted::Keep) {
            state[0] = change.state.shown == Wanted::Yes ? 'S' : 'h';
        }
        if (change.state.id == id && change.state.enabled != Wanted::Keep) {
            state[1] = change.state.enabled == Wanted::Yes ? 'E' : 'd';
        }
    }
    return state;
}

// The text that is set last; "-" when none is, "''" for an empty one.
std::string TextOf(const std::vector<ControlChange>& changes, int id) {
    std::string text = "-";
    for (const ControlChange& change : changes) {
        if (change.state.id == id && change.text) {
            text = change.text->empty() ? "''" : *change.text;
        }
    }
    return text;
}

Ids MainOf(PriceRowKind kind) {
    return {kPriceRows[kind].label, kPriceRows[kind].whole, kPriceRows[kind].spin};
}
Ids FractionOf(PriceRowKind kind) {
    const PriceRowControls& row = kPriceRows[kind];
    return {row.plus, row.numerator, row.slash, row.denominator};
}

using M = OrderMode;
const OrderView kScenarios[] = {
    // type state valid fraction spread near   forward denominator
    {M::Input, '2', '4', '0', false, false, false, false, 1, "97"},
    {M::Input, '1', '6', '0', false, false, false, false, 1, "97"},
    {M::Input, '4', '5', '2', true, true, false, false, 8, "97"},
    {M::Input, '3', 'A', '1', true, false, false, false, 8, "97"},
    {M::Modify, '2', '5', '0', true, false, false, false, 8, "97"},
    {M::RemoveFilled, '2', '6', '0', false, true, false, false, 1, "97"},
    {M::Carry, '2', '6', '0', true, false, true, false, 8, ""},
    {M::Carry, '2', '6', '0', false, false, false, true, 1, ""},
};
// What one control becomes in each of them.
std::string InScenarios(std::string (*what)(const std::vector<ControlChange>&, int), int id) {
    std::string all;
    for (const OrderView& scenario : kScenarios) {
        all += (all.empty() ? "" : " ") + what(RefreshChanges(scenario), id);
    }
    return all;
}

TEST(OrderLayout, StateOfEveryControl) {
    const std::pair<Ids, const char*> rows[] = {
        // clang-format off
        // working, market filled, stop part, loss canceled, modify, remove, carry in 1/8, carry in 1
        {MainOf(kFillPriceRow), "-d -E -E -E -E -E -E -E"},
        {FractionOf(kFillPriceRow), "-d -d -E -E -E -d -E -d"},
        {MainOf(kFillPrice2Row), "-d -d -E -d -d -E -E -E"},
        {FractionOf(kFillPrice2Row), "-d -d -E -d -d -d -E -d"},
        {{IDC_FILL_QTY_LABEL, IDC_FILL_QTY, IDC_FILL_QTY_SPIN}, "-d -d -E -E -d -d -E -E"},
        {{IDC_FILL_NO_LABEL, IDC_FILL_NO}, "-d -E -E -E -E -E -E -E"},
        {{IDC_CURRENCY_LABEL, IDC_CURRENCY, IDC_FEE_GIVEN, IDC_FEE}, "hd SE SE SE SE SE SE SE"},
        {{IDC_SOURCE_LABEL, IDC_SOURCE, IDC_ORDER_TYPE_LABEL, IDC_ORDER_TYPE, IDC_ORDER_STATE_LABEL,
          IDC_ORDER_STATE, IDC_VALID_TYPE_LABEL, IDC_VALID_TYPE, IDC_ORDER_QTY_LABEL, IDC_ORDER_QTY,
          IDC_ORDER_QTY_SPIN, IDC_FORCE_CLOSE}, "SE SE SE SE SE SE hd hd"},
        {{IDC_VALID_DATE_LABEL, IDC_VALID_DATE}, "Sd Sd SE Sd Sd Sd hd hd"},
        {MainOf(kOrderPriceRow), "SE Sd SE Sd SE SE hE hE"},
        {FractionOf(kOrderPriceRow), "Sd Sd SE Sd SE Sd hE hd"},
        {MainOf(kTriggerPriceRow), "Sd Sd SE SE Sd Sd hd hd"},
        {FractionOf(kTriggerPriceRow), "Sd Sd SE SE Sd Sd hd hd"},
        {{IDC_FORWARD_CONTRACT_LABEL, IDC_FORWARD_CONTRACT}, "hd hd hd hd hd hd SE SE"},
        {{IDC_FORWARD_DIRECTION_LABEL, IDC_FORWARD_DIRECTION, IDC_NEAR_CHOSEN_POSITION,
          IDC_FORWARD_CHOSEN_POSITION, IDC_NEAR_POSITION_QTY_LABEL, IDC_NEAR_POSITION_QTY,
          IDC_FORWARD_POSITION_QTY_LABEL, IDC_FORWARD_POSITION_QTY, IDC_FORWARD_FILL_QTY_LABEL,
          IDC_FORWARD_FILL_QTY}, "h- h- h- h- h- h- S- S-"},
        {MainOf(kNearPositionPriceRow), "hd hd hd hd hd hd SE Sd"},
        {FractionOf(kNearPositionPriceRow), "hd hd hd hd hd hd SE Sd"},
        {MainOf(kForwardPositionPriceRow), "hd hd hd hd hd hd Sd SE"},
        {FractionOf(kForwardPositionPriceRow), "hd hd hd hd hd hd Sd Sd"},
        // clang-format on
    };
    std::set<int> known, touched;
    for (const auto& [ids, states] : rows) {
        for (const int id : ids) {
            EXPECT_EQ(InScenarios(StateOf, id), states) << id;
            known.insert(id);
        }
    }
    for (const ControlChange& change : RefreshChanges(kScenarios[0])) {
        touched.insert(change.state.id);
    }
    EXPECT_EQ(touched, known) << "a refresh touches no control beyond the table";
}

TEST(OrderLayout, TextsOfEveryControl) {
    const std::pair<int, const char*> rows[] = {
        {IDC_FILL_PRICE_WHOLE, "0 97 97 97 97 97 - -"},  // the order price goes over
        {IDC_FILL_PRICE_NUMERATOR, "0 0 - - - 0 - 0"},
        {IDC_FILL_PRICE2_WHOLE, "- - - - - - - -"},
        {IDC_FILL_QTY, "0 0 - - - 0 - -"},
        {IDC_FEE, "'' - - - - - - -"},
        {IDC_ORDER_PRICE_WHOLE, "- 0 - 0 - - - -"},
        {IDC_ORDER_PRICE_NUMERATOR, "0 0 - 0 - 0 - 0"},
        {IDC_TRIGGER_PRICE_WHOLE, "0 0 - - 0 0 0 0"},
        {IDC_NEAR_POSITION_PRICE_WHOLE, "'' '' '' '' '' '' - ''"},
        {IDC_NEAR_POSITION_PRICE_NUMERATOR, "0 0 0 0 0 0 - 0"},
        {IDC_FORWARD_POSITION_PRICE_WHOLE, "'' '' '' '' '' '' '' -"},
        {IDC_NEAR_POSITION_PRICE_DENOMINATOR, "1 1 8 8 8 1 8 1"},
    };
    for (const auto& [id, texts] : rows) {
        EXPECT_EQ(InScenarios(TextOf, id), texts) << id;
    }
}

// The whole fill takes the order's quantity over the zero, the fill price the order price before its zero.
TEST(OrderLayout, ChangesStandInTheOrderOfTheirEffects) {
    std::string order;
    for (const ControlChange& change : RefreshChanges(kScenarios[1])) {
        const auto said = [&](int id, const char* what) { order += change.state.id == id ? what : ""; };
        if (change.text) {
            said(IDC_FILL_PRICE_WHOLE, "fill price, ");
            said(IDC_FILL_QTY, "fill quantity, ");
            said(IDC_ORDER_PRICE_WHOLE, "order price, ");
            said(IDC_NEAR_POSITION_PRICE_WHOLE, "near price, ");
        } else if (change.then != Then::Nothing) {
            said(IDC_ORDER_QTY, "order quantity told, ");
            said(IDC_NEAR_POSITION_PRICE_WHOLE, "near price left");
        }
    }
    EXPECT_EQ(order,
              "fill price, fill quantity, order quantity told, order price, near price, near price left");

    const auto carry = RefreshChanges(kScenarios[6]);
    const std::pair<int, char> entered[] = {
        {IDC_ORDER_TYPE, '2'}, {IDC_ORDER_STATE, '6'}, {IDC_VALID_TYPE, '0'}};
    for (std::size_t i = 0; i < std::size(entered); ++i) {
        EXPECT_EQ(std::pair(carry[i].state.id, carry[i].code), entered[i]);
    }
}

using OrderModes = OrderTest;

TEST_F(OrderModes, InputFollowsFormAndCommodity) {
    OrderForm form = Entry(OrderMode::Input, "EXA FR 1509");
    form.orderState = 'A';
    OrderView input = ViewOf(form, trade.Commodity(CommodityKeyOf(form)));
    EXPECT_TRUE(input.fractional);
    EXPECT_FALSE(input.spread);
    EXPECT_EQ(input.denominator, 8);
    EXPECT_TRUE(input.newDenominator) << "the numerators were entered for another one";
    form.denominator = 8;
    EXPECT_FALSE(ViewOf(form, trade.Commodity(CommodityKeyOf(form))).newDenominator);
    EXPECT_EQ(input.orderState, 'A');
    EXPECT_EQ(input.orderPriceWhole, "97.5");

    form.commodityType = 'c';
    form.mode = OrderMode::Carry;
    input = ViewOf(form, nullptr);
    EXPECT_FALSE(input.fractional);
    EXPECT_TRUE(input.spread);
    EXPECT_EQ(input.denominator, 8) << "an unknown commodity leaves the denominator";
    EXPECT_EQ(input.orderState, '6') << "whatever the list shows: the refresh selects it first";
}

TEST_F(OrderModes, SetUpTitleButtonAndControls) {
    struct {
        int mode;
        const char* title;
        const char* confirm;
        bool disableAll;
        int focus;
        const char* states;  // account, upper, contract, direction, system number, currency, fee
    } const rows[] = {
        {0, "Input Order", "Input", false, IDC_ACCOUNT, "-- -- -- -- -- -- --"},
        {1, "", "Borrow", false, IDC_ACCOUNT, "-- -- -- -- -- -- --"},
        {2, "Modify Order - [OrderNo:77]", "Modify", false, 0, "-d -d -d -d -d -- --"},
        {3, "Remove Filled - [OrderNo:77]", "Remove", true, 0, "-- -- -- -- -- h- h-"},
        {4, "Move Order - [OrderNo:77  Original account:100]", "Move", true, 0, "SE -- -- -- -- h- h-"},
        {5, "", "", false, IDC_UPPER, "-- -- -- -- -- -- --"},
        {9, "Input Order", "Input", false, IDC_ACCOUNT, "-- -- -- -- -- -- --"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mode);
        const ModeSetup setup = ModeSetupOf(Correction(static_cast<OrderMode>(row.mode)), trade, clock.now);
        EXPECT_EQ(setup.title, row.title);
        EXPECT_EQ(setup.confirmText, row.confirm);
        EXPECT_EQ(setup.disableAll, row.disableAll);
        EXPECT_EQ(setup.focusId, row.focus);
        std::string states;
        for (const auto& [label, control] : {std::pair{IDC_ACCOUNT_LABEL, IDC_ACCOUNT},
                                             {IDC_UPPER_LABEL, IDC_UPPER},
                                             {IDC_CONTRACT_LABEL, IDC_CONTRACT},
                                             {IDC_DIRECTION_LABEL, IDC_DIRECTION},
                                             {IDC_SYSTEM_NO_LABEL, IDC_SYSTEM_NO},
                                             {IDC_CURRENCY_LABEL, IDC_CURRENCY},
                                             {IDC_FEE_GIVEN, IDC_FEE}}) {
            states += (states.empty() ? "" : " ") + StateOf(setup.changes, control);
            EXPECT_EQ(StateOf(setup.changes, label), StateOf(setup.changes, control)) << label;
        }
        EXPECT_EQ(states, row.states);
        EXPECT_EQ(StateOf(setup.changes, IDC_CONTRACT_PICK), StateOf(setup.changes, IDC_CONTRACT));
    }
}

TEST_F(OrderModes, SetUpTexts) {
    const OrderForm modify = Correction(OrderMode::Modify);
    original.systemNo.Set("");
    const auto changes = ModeSetupOf(modify, trade, clock.now).changes;
    EXPECT_EQ(TextOf(changes, IDC_SYSTEM_NO) + StateOf(changes, IDC_SYSTEM_NO), "S_OP9_20260304050607089-E");
    const auto codes = [&](OrderMode mode) {
        std::vector<std::pair<int, char>> entered;
        for (const ControlChange& change : ModeSetupOf(Entry(mode), trade, clock.now).changes) {
            entered.emplace_back(change.state.id, change.code);
        }
        return entered;
    };
    using Codes = std::vector<std::pair<int, char>>;
    EXPECT_EQ(codes(OrderMode::Carry), (Codes{{IDC_SOURCE, 'C'}, {IDC_DIRECTION, 'B'}}));
    EXPECT_EQ(codes(OrderMode::Exercise), (Codes{{IDC_ORDER_TYPE, '5'}}));
    EXPECT_EQ(ConfirmTextForDirection(OrderMode::Carry, 'S'), "Lending");
    EXPECT_EQ(ConfirmTextForDirection(OrderMode::Modify, 'S'), "OK");
    EXPECT_EQ(OrderTitle(OrderMode::Move, nullptr), "Move Order - [OrderNo:0  Original account:]");
}

}  // namespace
