#include "controls/numeric_rules.h"

#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

namespace {

constexpr NumericRow kRows[] = {
    {.edit = 10, .spin = 11},
    {.edit = 20, .spin = 21, .numerator = 22, .firstLegTick = false, .minusForTwoLegs = true},
    {.edit = 30, .spin = 31, .numerator = 32},
};
constexpr NumericTable kTable{kRows, 40, TextRuleScope::ChangedEdit};

// The contract that a test's dialog shows.
struct Context final : INumericContext {
    SampleContracts book;
    CommodityKey key{};

    Context() {
        book.AddExchange("EXA", "A");
        Add('F', "DEC", 0.5, 1);
        Add('F', "QTR", 1, 4);
        Add('m', "SPR", 2, 1, "QTR");
    }
    void Add(char type, const char* commodityNo, double tick, std::uint32_t denominator,
             const char* firstLeg = "") {
        CommodityRecord& commodity = book.AddCommodity(type, commodityNo, "", firstLeg);
        commodity.tickNumerator = tick;
        commodity.tickDenominator = denominator;
        commodity.relatedExchangeNo = commodity.exchangeNo;
        commodity.relatedCommodityType = 'F';
    }
    void Choose(char type, const char* commodityNo) {
        key = {};
        key.exchangeNo.Set("EXA");
        key.commodityType = type;
        key.commodityNo.Set(commodityNo);
    }
    CommodityKey Commodity() const override { return key; }
    TradeData Trade() const override { return TradeData(const_cast<FakeTradeApi*>(&book.api)); }
    std::string FormatPrice(double price) const override { return "<" + std::to_string(price) + ">"; }
};

TEST(NumericRules, AcceptWhatTheContractCanHold) {
    const struct {
        int control;
        char type;
        const char *commodity, *text;
        bool accepted;
    } rows[] = {
        {20, 'F', "DEC", "12.5", true},  {20, 'F', "QTR", "12.5", false}, {20, 'F', "QTR", "12", true},
        {20, 'F', "none", "12.5", true}, {20, 'F', "DEC", "-1", false},   {20, 'm', "SPR", "-1.5", true},
        {30, 'm', "SPR", "-1", false},   {40, 'm', "SPR", "-1", false},   {40, 'F', "QTR", "1.5", false},
        {40, 'F', "DEC", "1.5", true},   {22, 'F', "DEC", "1.5", false},  {22, 'm', "SPR", "-1", false},
        {10, 'F', "DEC", "1.5", false},  {10, 'F', "DEC", "", true},      {99, 'F', "DEC", "word", true},
    };
    Context context;
    for (const auto& row : rows) {
        context.Choose(row.type, row.commodity);
        NumericTextRule rule;
        const auto instead = rule.Judge(FindNumeric(kTable, row.control), row.text, context);
        EXPECT_EQ(!instead, row.accepted) << row.control << " " << row.commodity << " " << row.text;
    }
}

TEST(NumericRules, OneLastGoodTextServesAllEdits) {
    Context context;
    context.Choose('F', "DEC");
    NumericTextRule rule;
    EXPECT_EQ(rule.Judge(FindNumeric(kTable, 10), "x", context), "");
    EXPECT_EQ(rule.Judge(FindNumeric(kTable, 20), "7.5", context), std::nullopt);
    EXPECT_EQ(rule.Judge(FindNumeric(kTable, 10), "1x", context), "7.5");
    EXPECT_EQ(rule.Judge(FindNumeric(kTable, 20), std::string(100000, '1'), context), "7.5");
}

TEST(NumericRules, StepARowByItsTick) {
    const struct {
        int control;
        char type;
        const char *commodity, *whole, *numerator;
        bool up;
        const char* result;  // "-" for none
    } rows[] = {
        {10, 'F', "DEC", "0", "", false, "0"},
        {10, 'F', "DEC", "7", "", true, "8"},
        {20, 'F', "DEC", "1.4", "", true, "<2.000000>"},
        {20, 'F', "DEC", "1", "", false, "<0.500000>"},
        {20, 'F', "QTR", "10", "3", true, "11/0"},
        {22, 'F', "QTR", "10", "0", false, "9/3"},
        {20, 'm', "SPR", "4", "", true, "<6.000000>"},  // its own tick
        {30, 'm', "SPR", "10", "3", true, "11/0"},      // its first leg's fractions
        {20, 'F', "none", "5", "", true, "<6.000000>"},
        {40, 'F', "DEC", "5", "", true, "-"},
        {99, 'F', "DEC", "5", "", true, "-"},
    };
    Context context;
    for (const auto& row : rows) {
        context.Choose(row.type, row.commodity);
        const auto step =
            StepNumeric(FindNumeric(kTable, row.control), row.whole, row.numerator, row.up, context);
        std::string result = "-";
        if (step) {
            result = step->edit + (step->numerator ? "/" + *step->numerator : "");
        }
        EXPECT_EQ(result, row.result) << row.control << " " << row.commodity << " " << row.whole;
    }
}

}  // namespace
