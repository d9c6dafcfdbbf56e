#include "fill/fill_window.h"

namespace {

struct NamedControl {
    int id;
    const char* name;
};
// Every control that an operator can use, in the order of the rows.
// clang-format off
constexpr NamedControl kUsable[] = {
    {IDC_FILL_NO, "fillNo"}, {IDC_SYSTEM_NO, "systemNo"}, {IDC_UPPER, "upper"}, {IDC_ACCOUNT, "account"},
    {IDC_FILL_SOURCE, "source"}, {IDC_FILL_QTY, "qty"}, {IDC_FILL_QTY_SPIN, "qtySpin"},
    {IDC_EXCHANGE, "exchange"}, {IDC_COMMODITY, "commodity"}, {IDC_FILL_CONTRACT, "contract"},
    {IDC_DIRECTION, "direction"}, {IDC_FILL_PRICE_WHOLE, "price"}, {IDC_FILL_PRICE_SPIN, "priceSpin"},
    {IDC_FILL_PRICE_NUMERATOR, "numerator"}, {IDC_OPEN_CONTRACT, "openContract"},
    {IDC_OPEN_DIRECTION, "openDirection"}, {IDC_FILL_PRICE2_WHOLE, "price2"},
    {IDC_FILL_PRICE2_SPIN, "price2Spin"}, {IDC_FILL_PRICE2_NUMERATOR, "numerator2"},
    {IDC_CURRENCY, "currency"}, {IDC_FILL_FEE_GIVEN, "feeGiven"}, {IDC_FEE, "fee"},
    {IDC_CONFIRM, "confirm"}, {IDC_CANCEL, "cancel"},
};
// clang-format on

class FillOpening : public FillWindow {
protected:
    std::string UsableNow() const {
        std::string names;
        for (const NamedControl& control : kUsable) {
            if (Shown(control.id) && Enabled(control.id)) {
                names += (names.empty() ? "" : " ") + std::string(control.name);
            }
        }
        return names;
    }
    std::string Values() const {
        return Texts({IDC_SYSTEM_NO, IDC_UPPER, IDC_ACCOUNT, IDC_FILL_SOURCE, IDC_FILL_QTY, IDC_EXCHANGE,
                      IDC_COMMODITY, IDC_FILL_CONTRACT, IDC_DIRECTION, IDC_FILL_PRICE_WHOLE,
                      IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_DENOMINATOR, IDC_OPEN_DIRECTION,
                      IDC_FILL_PRICE2_WHOLE, IDC_CURRENCY, IDC_FEE});
    }
};

TEST_F(FillOpening, ModesAndRecords) {
    FillRecord fill = book.FillOf("EXA CM 1509");
    FillRecord fraction = book.FillOf("EXA TR 1509");
    OrderRecord spread = FillBook::OrderOf("EXA CM 1509/1512");
    const std::string rest = " currency feeGiven fee confirm cancel";
    const std::string price = "contract price priceSpin", forOrder = "source qty qtySpin ";
    const std::string free = "upper account source qty qtySpin commodity contract direction price priceSpin";
    const std::string freeExchange =
        "upper account source qty qtySpin exchange commodity contract direction price priceSpin";
    const std::string modify = "exchange price priceSpin confirm cancel", buttons = "confirm cancel";
    const std::string ofOrder = "Input Filled - [OrderNo:4711]", ofFill = "Modify Filled - [FillNo:F77]";
    const std::string unnumbered = "Remove Filled - [OrderNo:%d]";
    const std::string fillValues = "SYS7|UP1|10001|E-TRADE|4|EXA|CM|1509|Sell|97|0|1|Buy||USD|0";
    constexpr int kOrder = kRecordKindOrder, kFill = kRecordKindFill;
    const char* const confirm[] = {"Input", "Input", "Modify", "Remove"};
    struct {
        const char* what;
        int mode;
        void* record;
        int kind;
        std::string title, usable;
        int focus;
        std::string values;  // "": not looked at
    } const rows[] = {
        // clang-format off
        {"input for an order", 0, &order, kOrder, ofOrder, forOrder + price + rest, IDC_FILL_SOURCE,
         "SYS7|UP2|10001|Manual Order|3|EXA|CM|1509|Buy|97|0|1|Sell||USD|0"},
        {"input for a spread", 0, &spread, kOrder, ofOrder, forOrder + price + " price2 price2Spin" + rest,
         IDC_FILL_SOURCE, "SYS7|UP2|10001|Manual Order|3|EXA|CM|1509/1512|Buy|97|0|1|Sell|97|USD|0"},
        {"input on a fill", 0, &fill, kFill, "Input Fill", free + rest, IDC_UPPER, fillValues},
        {"input on nothing", 0, nullptr, -1, "Input Fill", free + rest, IDC_UPPER, ""},
        {"record of no kind", 1, &fill, 7, "Input Fill", freeExchange + rest, IDC_UPPER, ""},
        {"modify in fractions", 2, &fraction, kFill, "Modify Filled",
         "exchange price priceSpin numerator confirm cancel", IDC_EXCHANGE,
         "SYS7|UP1|10001|E-TRADE|4|EXA|TR|1509|Sell|97|0|8|Buy||USD|0"},
        {"modify nothing", 2, nullptr, -1, "Modify Filled", modify, IDC_EXCHANGE, ""},
        {"remove", 3, &fill, kFill, ofFill, buttons, IDC_CONFIRM, fillValues},
        {"remove nothing", 3, nullptr, -1, unnumbered, buttons, IDC_CONFIRM, ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Open(row.mode, row.record, row.kind);
        EXPECT_EQ(TextOf(window), row.title);
        EXPECT_EQ(Text(IDC_CONFIRM), confirm[row.mode]);
        EXPECT_EQ(UsableNow(), row.usable);
        EXPECT_EQ(FocusId(), row.focus);
        if (!row.values.empty()) {
            EXPECT_EQ(Values(), row.values);
        }
        Close();
    }
}

TEST_F(FillOpening, WithoutARecordTheForwardMarketIsOffered) {
    Open(0);
    EXPECT_EQ(Text(IDC_EXCHANGE) + " " + Text(IDC_COMMODITY), "EXF CA");
    EXPECT_EQ(Text(IDC_SYSTEM_NO).substr(1), Text(IDC_FILL_NO).substr(1));
    EXPECT_THAT(Text(IDC_SYSTEM_NO), testing::MatchesRegex("S_\\d+"));
    EXPECT_EQ(Text(IDC_SYSTEM_NO).size(), 15u);
    EXPECT_EQ(Count(IDC_FILL_SOURCE), 7);
    EXPECT_EQ(SendMessageA(Item(IDC_UPPER), CB_GETCURSEL, 0, 0), CB_ERR);
}

TEST_F(FillOpening, NothingIsListedForAnAccountThatMayNotTrade) {
    book.group.tradable = 'N';
    OpenOn(0, order);
    EXPECT_EQ(Count(IDC_COMMODITY), 0);
    EXPECT_EQ(Count(IDC_UPPER), 2);
    EXPECT_EQ(Text(IDC_COMMODITY), "CM");
    EXPECT_TRUE(Enabled(IDC_FILL_SOURCE));
}

}  // namespace
