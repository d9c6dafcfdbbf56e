#include "order/order_layout.h"

#include "order/order_fixture.h"
#include "res/string_table.h"

#include <algorithm>
#include <map>

namespace {

using Then = ControlChange::Then;

// What is left when all changes are applied: "SE" shown and enabled, "hd" hidden and disabled, "-" untouched.
std::string StateOf(const std::vector<ControlChange>& changes, int id) {
    std::string state = "--";
    for (const ControlChange& change : changes) {
        if (change.state.id != id) {
            continue;
        }
        if (change.state.shown != Wanted::Keep) {
            state[0] = change.state.shown == Wanted::Yes ? 'S' : 'h';
        }
        if (change.state.enabled != Wanted::Keep) {
            state[1] = change.state.enabled == Wanted::Yes ? 'E' : 'd';
        }
    }
    return state;
}

// The text that is set last; "-" when none is.
std::string TextOf(const std::vector<ControlChange>& changes, int id) {
    std::string text = "-";
    for (const ControlChange& change : changes) {
        if (change.state.id == id && change.text) {
            text = *change.text;
        }
    }
    return text;
}

std::vector<int> MainOf(PriceRowKind kind) {
    return {kPriceRows[kind].label, kPriceRows[kind].whole, kPriceRows[kind].spin};
}
std::vector<int> FractionOf(PriceRowKind kind) {
    const PriceRowControls& row = kPriceRows[kind];
    return {row.plus, row.numerator, row.slash, row.denominator};
}

constexpr int kScenarios = 8;
LayoutInput Scenario(int index) {
    using M = OrderMode;
    const LayoutInput inputs[kScenarios] = {
        //        type state valid fraction spread near   forward denominator
        {M::Input, '2', '4', '0', false, false, false, false, 1, "97"},
        {M::Input, '1', '6', '0', false, false, false, false, 1, "97"},
        {M::Input, '4', '5', '2', true, true, false, false, 8, "97"},
        {M::Input, '3', 'A', '1', true, false, false, false, 8, "97"},
        {M::Modify, '2', '5', '0', true, false, false, false, 8, "97"},
        {M::RemoveFilled, '2', '6', '0', false, true, false, false, 1, "97"},
        {M::Carry, '2', '6', '0', true, false, true, false, 8, ""},
        {M::Carry, '2', '6', '0', false, false, false, true, 1, ""},
    };
    return inputs[index];
}

TEST(OrderLayout, StateOfEveryControl) {
    struct {
        const char* group;
        std::vector<int> ids;
        const char* states[kScenarios];
    } const rows[] = {
        // clang-format off
        // working, market 6, stop 5, loss A, modify 5, remove 6, carry in 1/8, carry in 1
        {"fill price", MainOf(kFillPriceRow),               {"-d", "-E", "-E", "-E", "-E", "-E", "-E", "-E"}},
        {"  fraction", FractionOf(kFillPriceRow),           {"-d", "-d", "-E", "-E", "-E", "-d", "-E", "-d"}},
        {"fill price 2", MainOf(kFillPrice2Row),            {"-d", "-d", "-E", "-d", "-d", "-E", "-E", "-E"}},
        {"  fraction", FractionOf(kFillPrice2Row),          {"-d", "-d", "-E", "-d", "-d", "-d", "-E", "-d"}},
        {"fill quantity", {1128, 1129, 1130},               {"-d", "-d", "-E", "-E", "-d", "-d", "-E", "-E"}},
        {"fill number", {1152, 1153},                       {"-d", "-E", "-E", "-E", "-E", "-E", "-E", "-E"}},
        {"currency, fee", {1166, 1164, 1186, 1167},         {"hd", "SE", "SE", "SE", "SE", "SE", "SE", "SE"}},
        {"order words and quantity", {1118, 1126, 1050, 1053, 1041, 1040, 1113, 1114, 1124, 1125, 1127, 1123},
                                                            {"SE", "SE", "SE", "SE", "SE", "SE", "hd", "hd"}},
        {"valid date", {1011, 1012},                        {"Sd", "Sd", "SE", "Sd", "Sd", "Sd", "hd", "hd"}},
        {"order price", MainOf(kOrderPriceRow),             {"SE", "Sd", "SE", "Sd", "SE", "SE", "hE", "hE"}},
        {"  fraction", FractionOf(kOrderPriceRow),          {"Sd", "Sd", "SE", "Sd", "SE", "Sd", "hE", "hd"}},
        {"trigger", MainOf(kTriggerPriceRow),               {"Sd", "Sd", "SE", "SE", "Sd", "Sd", "hd", "hd"}},
        {"  fraction", FractionOf(kTriggerPriceRow),        {"Sd", "Sd", "SE", "SE", "Sd", "Sd", "hd", "hd"}},
        {"forward contract", {1191, 1192},                  {"hd", "hd", "hd", "hd", "hd", "hd", "SE", "SE"}},
        {"carry only", {1187, 1188, 1243, 1244, 1210, 1213, 1211, 1214, 1215, 1216},
                                                            {"h-", "h-", "h-", "h-", "h-", "h-", "S-", "S-"}},
        {"near position", MainOf(kNearPositionPriceRow),
                                                            {"hd", "hd", "hd", "hd", "hd", "hd", "SE", "Sd"}},
        {"  fraction", FractionOf(kNearPositionPriceRow),
                                                            {"hd", "hd", "hd", "hd", "hd", "hd", "SE", "Sd"}},
        {"forward position", MainOf(kForwardPositionPriceRow),
                                                            {"hd", "hd", "hd", "hd", "hd", "hd", "Sd", "SE"}},
        {"  fraction", FractionOf(kForwardPositionPriceRow),
                                                            {"hd", "hd", "hd", "hd", "hd", "hd", "Sd", "Sd"}},
        {"untouched", {1037, 1039, 1052, 10001, 10000, 1054, 1061, 1067, 1015, 1239, 1240},
                                                            {"--", "--", "--", "--", "--", "--", "--", "--"}},
        // clang-format on
    };
    std::size_t known = 0;
    for (int i = 0; i < kScenarios; ++i) {
        const auto changes = RefreshChanges(Scenario(i));
        for (const auto& row : rows) {
            for (const int id : row.ids) {
                EXPECT_EQ(StateOf(changes, id), row.states[i]) << row.group << ' ' << id << " scenario " << i;
                known += i == 0;
            }
        }
    }
    std::map<int, bool> touched;
    for (const ControlChange& change : RefreshChanges(Scenario(0))) {
        touched[change.state.id] = true;
    }
    EXPECT_EQ(touched.size(), known - 11) << "a refresh touches no control beyond the table";
}

TEST(OrderLayout, TextsOfEveryControl) {
    struct {
        int id;
        const char* texts[kScenarios];
    } const rows[] = {
        // clang-format off
        //     working market+6 stop+5 loss+A modify5 remove6 carry8 carry1
        {1145, {"0",   "97",    "97",  "97",  "97",   "97",   "-",   "-"}},  // the order price goes over
        {1148, {"0",   "0",     "-",   "-",   "-",    "0",    "-",   "0"}},
        {1160, {"-",   "-",     "-",   "-",   "-",    "-",    "-",   "-"}},
        {1129, {"0",   "0",     "-",   "-",   "-",    "0",    "-",   "-"}},
        {1167, {"",    "-",     "-",   "-",   "-",    "-",    "-",   "-"}},
        {1132, {"-",   "0",     "-",   "0",   "-",    "-",    "-",   "-"}},
        {1136, {"0",   "0",     "-",   "0",   "-",    "0",    "-",   "0"}},
        {1139, {"0",   "0",     "-",   "-",   "0",    "0",    "0",   "0"}},
        {1141, {"0",   "0",     "-",   "-",   "0",    "0",    "0",   "0"}},
        {1154, {"",    "",      "",    "",    "",     "",     "-",   ""}},
        {1165, {"0",   "0",     "0",   "0",   "0",    "0",    "-",   "0"}},
        {1172, {"",    "",      "",    "",    "",     "",     "",    "-"}},
        {1189, {"0",   "0",     "0",   "0",   "0",    "0",    "0",   "0"}},
        {1185, {"1",   "1",     "8",   "8",   "8",    "1",    "8",   "1"}},
        {1170, {"1",   "1",     "8",   "8",   "8",    "1",    "8",   "1"}},
        // clang-format on
    };
    g_wResLanguage = kEnglish;
    for (int i = 0; i < kScenarios; ++i) {
        const auto changes = RefreshChanges(Scenario(i));
        for (const auto& row : rows) {
            EXPECT_EQ(TextOf(changes, row.id), row.texts[i]) << row.id << " scenario " << i;
        }
    }
}

// The whole fill takes the order's quantity over the zero, the fill price the order price before its zero.
TEST(OrderLayout, ChangesStandInTheOrderOfTheirEffects) {
    const auto changes = RefreshChanges(Scenario(1));
    const auto at = [&](int id, auto matches) {
        const auto found = std::find_if(changes.begin(), changes.end(), [&](const ControlChange& change) {
            return change.state.id == id && matches(change);
        });
        EXPECT_NE(found, changes.end()) << id;
        return found - changes.begin();
    };
    const auto text = [](const ControlChange& change) { return change.text.has_value(); };
    const auto told = [](const ControlChange& change) { return change.then != Then::Nothing; };
    EXPECT_LT(at(IDC_FILL_QTY, text), at(IDC_ORDER_QTY, told));
    EXPECT_LT(at(IDC_FILL_PRICE_WHOLE, text), at(IDC_ORDER_PRICE_WHOLE, text));
    EXPECT_LT(at(IDC_NEAR_POSITION_PRICE_NUMERATOR, text), at(IDC_NEAR_POSITION_PRICE_WHOLE, told));

    const auto carry = RefreshChanges(Scenario(6));
    std::string entered;
    std::for_each(carry.begin(), carry.begin() + 3, [&](const ControlChange& change) {
        entered += change.then == Then::EnterCode ? std::to_string(change.state.id) + change.code : "";
    });
    EXPECT_EQ(entered, "105321040611140");
}

class OrderModes : public OrderTest {};

TEST_F(OrderModes, InputFollowsFormAndCommodity) {
    OrderForm form = Entry(OrderMode::Input, "EXA FR 1509");
    form.orderState = 'A';
    LayoutInput input = LayoutInputOf(form, trade.Commodity(CommodityKeyOf(form)));
    EXPECT_TRUE(input.fraction);
    EXPECT_FALSE(input.spread);
    EXPECT_EQ(input.denominator, 8);
    EXPECT_TRUE(input.newDenominator) << "the numerators were entered for another one";
    form.denominator = 8;
    EXPECT_FALSE(LayoutInputOf(form, trade.Commodity(CommodityKeyOf(form))).newDenominator);
    EXPECT_EQ(input.orderState, 'A');
    EXPECT_EQ(input.orderPriceWhole, "97.5");

    form.commodityType = 'c';
    form.mode = OrderMode::Carry;
    input = LayoutInputOf(form, nullptr);
    EXPECT_FALSE(input.fraction);
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
        {0, "Input Order", "Input", false, 1037, "-- -- -- -- -- -- --"},
        {1, "", "Borrow", false, 1037, "-- -- -- -- -- -- --"},
        {2, "Modify Order - [OrderNo:77]", "Modify", false, 0, "-d -d -d -d -d -- --"},
        {3, "Remove Filled - [OrderNo:77]", "Remove", true, 0, "-- -- -- -- -- h- h-"},
        {4, "Move Order - [OrderNo:77  Original account:100]", "Move", true, 0, "SE -- -- -- -- h- h-"},
        {5, "", "", false, 1039, "-- -- -- -- -- -- --"},
        {9, "Input Order", "Input", false, 1037, "-- -- -- -- -- -- --"},
    };
    for (const auto& row : rows) {
        const OrderForm form = Correction(static_cast<OrderMode>(row.mode));
        const ModeSetup setup = SetUpMode(form, trade, clock.now);
        EXPECT_EQ(setup.title, row.title);
        EXPECT_EQ(setup.confirmText, row.confirm);
        EXPECT_EQ(setup.disableAll, row.disableAll) << row.mode;
        EXPECT_EQ(setup.focusId, row.focus) << row.mode;
        std::string states;
        for (const int id : {1037, 1039, 10001, 1052, 1054, 1164, 1167}) {
            states += (states.empty() ? "" : " ") + StateOf(setup.changes, id);
        }
        EXPECT_EQ(states, row.states) << row.mode;
        constexpr int kLabelled[][2] = {{1027, 1037}, {1044, 1039}, {1055, 10001}, {10000, 10001},
                                        {1035, 1052}, {1047, 1054}, {1166, 1164},  {1186, 1167}};
        for (const auto& [label, control] : kLabelled) {
            EXPECT_EQ(StateOf(setup.changes, label), StateOf(setup.changes, control)) << label;
        }
    }
}

TEST_F(OrderModes, SetUpTexts) {
    const OrderForm modify = Correction(OrderMode::Modify);
    original.systemNo.Set("");
    const auto changes = SetUpMode(modify, trade, clock.now).changes;
    EXPECT_EQ(TextOf(changes, IDC_SYSTEM_NO), "S_OP9_20260304050607089");
    EXPECT_EQ(StateOf(changes, IDC_SYSTEM_NO), "-E");

    const auto codesOf = [&](OrderMode mode) {
        std::string codes;
        for (const ControlChange& change : SetUpMode(Entry(mode), trade, clock.now).changes) {
            codes += std::to_string(change.state.id) + change.code;
        }
        return codes;
    };
    EXPECT_EQ(codesOf(OrderMode::Carry), "1126C1052B");
    EXPECT_EQ(codesOf(OrderMode::Exercise), "10535");

    EXPECT_EQ(ConfirmTextForDirection(OrderMode::Carry, 'S'), "Lending");
    EXPECT_EQ(ConfirmTextForDirection(OrderMode::Carry, 'B'), "Borrow");
    EXPECT_EQ(ConfirmTextForDirection(OrderMode::Modify, 'S'), "OK");
    EXPECT_EQ(OrderTitle(OrderMode::Move, nullptr), "Move Order - [OrderNo:0  Original account:]");
}

TEST(OrderLayout, BottomRow) {
    EXPECT_EQ(BottomRowAnchor(OrderMode::Exercise), IDC_DIRECTION);
    EXPECT_EQ(BottomRowAnchor(OrderMode::Carry), IDC_CURRENCY);
    const BottomRow row = BottomRowUnder(320, 23);
    EXPECT_EQ(row.top, 330);
    EXPECT_EQ(row.clientHeight, 363);
}

}  // namespace
