#include "tests/entry/numeric_context.h"

#include <gtest/gtest.h>

namespace {

constexpr NumericRow kRows[] = {
    {.edit = 10, .spin = 11},
    {.edit = 20, .spin = 21, .numerator = 22, .firstLegTick = false, .minusForTwoLegs = true},
    {.edit = 30, .spin = 31, .numerator = 32},
};
constexpr NumericTable kTable{kRows, 40, TextRuleScope::ChangedEdit};

TEST(NumericRules, AcceptWhatTheContractCanHold) {
    const struct {
        int control;
        const char *commodity, *text;
        bool accepted;
    } rows[] = {
        {20, "DEC", "12.5", true}, {20, "QTR", "12.5", false}, {20, "QTR", "12", true},
        {20, "", "12.5", true},    {20, "DEC", "-1", false},   {20, "SPR", "-1.5", true},
        {30, "SPR", "-1", false},  {40, "SPR", "-1", false},   {40, "QTR", "1.5", false},
        {40, "DEC", "1.5", true},  {22, "DEC", "1.5", false},  {22, "SPR", "-1", false},
        {10, "DEC", "1.5", false}, {10, "DEC", "", true},      {99, "DEC", "word", true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MayBeTyped(FindNumeric(kTable, row.control), row.text, NumericContext(row.commodity)),
                  row.accepted)
            << row.control << " " << row.commodity << " " << row.text;
    }
}

TEST(NumericRules, StepARowByItsTick) {
    const struct {
        int control;
        const char *commodity, *whole, *numerator;
        bool up;
        const char* result;  // "-" for none
    } rows[] = {
        // clang-format off
        {10, "DEC", "0", "", false, "0"}, {10, "DEC", "7", "", true, "8"},
        {20, "DEC", "1.4", "", true, "2"}, {20, "DEC", "1", "", false, "0.5"},
        {20, "QTR", "10", "3", true, "11/0"}, {22, "QTR", "10", "0", false, "9/3"},
        {20, "SPR", "4", "", true, "6"},  // its own tick
        {30, "SPR", "10", "3", true, "11/0"},  // its first leg's fractions
        {20, "DEC", "0", "", false, "-"}, {20, "QTR", "0", "0", false, "-"},  // below zero
        {20, "SPR", "0", "", false, "-2"}, {30, "SPR", "0", "0", false, "-"},
        {20, "DEC", "1e70", "", true, "-"}, {10, "DEC", "7x", "", true, "1"},
        {20, "", "5", "", true, "6"}, {40, "DEC", "5", "", true, "-"}, {99, "DEC", "5", "", true, "-"},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto step = StepNumeric(FindNumeric(kTable, row.control), row.whole, row.numerator, row.up,
                                      NumericContext(row.commodity));
        const std::string result = !step             ? "-"
                                   : step->numerator ? step->edit + "/" + *step->numerator
                                                     : step->edit;
        EXPECT_EQ(result, row.result) << row.control << " " << row.commodity << " " << row.whole;
    }
}

}  // namespace
