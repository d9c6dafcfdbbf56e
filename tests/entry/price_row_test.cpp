#include "entry/price_row.h"

#include "framework/number_conversion.h"
#include "tests/trade/sample_book.h"
#include "trade/price_format.h"

#include <gtest/gtest.h>

namespace {

TEST(PriceRow, SplitsHostTexts) {
    struct {
        std::string text;
        const char* whole;
        int numerator, denominator;
    } const rows[] = {
        // clang-format off
        {"97+3/8", "97", 3, 8},    {"97.25", "97.25", 0, 0}, {"", "", 0, 0},          {"-2.5", "-2.5", 0, 0},
        {"-1+3/4", "-1", 3, 4},    {"97+-3/8", "97", -3, 8}, {"97+3/8 x", "97", 3, 8}, {"97+3", "97+3", 0, 0},
        {"97/8", "97", 0, 0},      {"97+/8", "97", 0, 0},    {"97+3/", "97", 3, 0},    {"-/", "", 0, 0},
        {"97.5+3/8", "97", 0, 0},  {"1+99999999999/4", "1", 0, 4},
        // clang-format on
    };
    for (const auto& row : rows) {
        const SplitPrice split = SplitPriceText(row.text);
        EXPECT_EQ(split.row.whole, row.whole) << row.text;
        EXPECT_EQ(split.row.numerator, row.numerator) << row.text;
        EXPECT_EQ(split.denominator, row.denominator) << row.text;
    }
    EXPECT_EQ(SplitPriceText(std::string(300, '1') + "+1/2").row.whole, std::string(260, '1'));
}

TEST(PriceRow, ValueAddsTheNumerator) {
    EXPECT_EQ(PriceValue({"97", 3}, 8), 97.375);
    EXPECT_EQ(PriceValue({"-1", 3}, 4), -0.25);
    EXPECT_EQ(PriceValue({"5", 1}, 0), 5) << "no denominator, no fraction";
}

// Every price of a row survives formatting and splitting, and stepping walks through exactly these prices.
TEST(PriceRow, FractionsRoundTripAndStepOverEveryEdge) {
    for (const int denominator : {2, 4, 8, 32, 64, 128, 320}) {
        CommodityRecord commodity{};
        commodity.tickDenominator = denominator;
        const auto partsOf = [&](const PriceRow& row) {
            EXPECT_TRUE(row.numerator >= 0 && row.numerator < denominator);
            return ReadInteger(row.whole) * denominator + row.numerator;
        };
        for (int parts = -2 * denominator; parts <= 2 * denominator; ++parts) {
            const double price = static_cast<double>(parts) / denominator;
            const SplitPrice split = SplitPriceText(FormatPriceText(price, &commodity));
            ASSERT_EQ(split.denominator, denominator);
            ASSERT_EQ(partsOf(split.row), parts);
            ASSERT_NEAR(PriceValue(split.row, denominator), price, 1e-12);
            for (const int tick : {1, 2, 5}) {
                const StepRule rule{static_cast<double>(tick), tick, denominator};
                const int onTick = parts - split.row.numerator % tick;
                const std::string numerator = std::to_string(split.row.numerator);
                ASSERT_EQ(partsOf(StepFraction(split.row.whole, numerator, true, rule)), onTick + tick);
                ASSERT_EQ(partsOf(StepFraction(split.row.whole, numerator, false, rule)), onTick - tick);
            }
        }
    }
}

TEST(PriceRow, FractionsStepFromOddTextsAndByOddTicks) {
    struct {
        const char *whole, *numerator;
        bool up;
        int tick;  // in quarters
        const char* newWhole;
        int newNumerator;
    } const rows[] = {
        // clang-format off
        {"", "", true, 1, "0", 1}, {"5", "9", true, 1, "7", 2}, {"5", "-9", false, 1, "2", 2},
        {"5", "3", true, 10, "7", 2}, {"5", "3", true, 0, "5", 3}, {"0", "0", false, 1, "-1", 3},
        {"2147483647", "3", true, 1, "2147483647", 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto stepped =
            StepFraction(row.whole, row.numerator, row.up, {static_cast<double>(row.tick), row.tick, 4});
        EXPECT_EQ(stepped.whole, row.newWhole) << row.whole << "+" << row.numerator;
        EXPECT_EQ(stepped.numerator, row.newNumerator) << row.whole << "+" << row.numerator;
    }
}

TEST(PriceRow, DecimalsStepFromTheNearestTick) {
    struct {
        const char* whole;
        bool up;
        double tick;
        const char* text;
    } const rows[] = {
        {"10.26", true, 0.05, "10.3"}, {"10.26", false, 0.05, "10.2"}, {"", true, 0.01, "0.01"},
        {"0", false, 0.25, "-0.25"},   {"0.2", true, 0.1, "0.3"},      {"7.5", true, 1, "9"},
        {"-2.5", false, 1, "-4"},      {"3.3", true, 0, "3.3"},        {"5000000000", true, 1, "5000000001"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormatPriceText(StepDecimal(row.whole, row.up, {row.tick, 0, 1}), nullptr), row.text)
            << row.whole << " by " << row.tick;
    }
}

TEST(PriceRow, QuantitiesStopAtZero) {
    EXPECT_EQ(StepQuantity("", true), 1);
    EXPECT_EQ(StepQuantity("1", false), 0);
    EXPECT_EQ(StepQuantity("0", false), 0);
    EXPECT_EQ(StepQuantity("-5", false), -5);
    EXPECT_EQ(StepQuantity("2147483647", true), 2147483647);
}

TEST(PriceRow, TheRuleOfATwoLegCommodityMayBeItsFirstLegs) {
    SampleBook book;
    book.AddExchange("EXA");
    CommodityRecord& leg = book.AddCommodity('F', "CM", 2.5, 8);
    CommodityRecord& spread = book.AddPair('m', "SP", 0.01, 'F', "CM", "CM");
    const auto rule = [&](bool firstLeg) {
        return StepRuleOf(CommodityOf(spread), firstLeg, TradeData(&book));
    };
    EXPECT_EQ(rule(false).tick, 0.01);
    EXPECT_EQ(rule(true).tick, 2.5);
    EXPECT_EQ(rule(true).integerTick, 2);
    EXPECT_EQ(rule(true).denominator, 8);
    leg.tickNumerator = 1e300;
    EXPECT_EQ(rule(true).integerTick, 0);
    book.commodities = {&spread};
    EXPECT_EQ(rule(true).denominator, 1) << "the leg is not known";
}

}  // namespace
