#include "controls/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

TEST(NumberText, IsWhatMayStandInTheEditWhileTyping) {
    // What each takes: d decimals, i integers, D and I the same with a sign.
    const std::pair<const char*, std::string> rows[] = {
        // clang-format off
        {"", "diDI"}, {"0", "diDI"}, {"12", "diDI"}, {".", "dD"}, {"5.", "dD"}, {".5", "dD"}, {"12.50", "dD"},
        {"1.2.3", ""}, {"-", "DI"}, {"-1", "DI"}, {"-1.5", "D"}, {"--1", ""}, {"1-", ""}, {"+1", ""},
        {" 1", ""}, {"1\n", ""}, {"1e5", ""}, {"1,5", ""}, {"\xA3\xB1", ""},
        // clang-format on
    };
    for (const auto& [text, expected] : rows) {
        std::string taken;
        for (const bool sign : {false, true}) {
            taken += IsNumberText(text, false, sign) ? (sign ? "D" : "d") : "";
            taken += IsNumberText(text, true, sign) ? (sign ? "I" : "i") : "";
        }
        EXPECT_EQ(taken, expected) << text;
    }
    EXPECT_TRUE(IsNumberText(std::string(kMaxNumberText, '1'), true, false));
    EXPECT_FALSE(IsNumberText(std::string(1'000'000, '1'), true, false)) << "would overflow the stack";
}

TEST(NumberText, ReadsTheNumberAtTheStart) {
    struct {
        const char* text;
        double decimal;
        std::int32_t integer;
    } const rows[] = {
        // clang-format off
        {"", 0, 0}, {".", 0, 0}, {"97.25", 97.25, 97}, {" 7x", 7, 7}, {"-", 0, 0}, {"-2.5", -2.5, -2},
        {"+3", 3, 3}, {"+-3", 0, 0}, {"abc", 0, 0}, {"12.5.5", 12.5, 12}, {"1e400", 0, 1}, {"nan", 0, 0},
        {"99999999999", 99999999999.0, 2147483647}, {"-99999999999", -99999999999.0, -2147483648},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToDouble(row.text), row.decimal) << row.text;
        EXPECT_EQ(ToInt(row.text), row.integer) << row.text;
    }
    EXPECT_EQ(ToInt(std::string_view("1234").substr(0, 2)), 12) << "reads no further than the view";
}

TEST(NumberText, RoundsHalvesAwayFromZero) {
    for (const auto& [value, rounded] : {std::pair{0.5, 1}, {-0.5, -1}, {-2.49, -2}, {1e300, 2147483647}}) {
        EXPECT_EQ(RoundHalfAwayFromZero(value), rounded);
    }
    EXPECT_DOUBLE_EQ(RoundToTick(10.26, 0.05), 10.25);
    EXPECT_EQ(RoundToTick(-2.5, 1.0), -3.0);
    EXPECT_EQ(RoundToTick(3.0, 0.0), 3.0);
    EXPECT_FALSE(std::signbit(RoundToTick(-0.2, 1.0))) << "would be shown as -0";
    EXPECT_EQ(TruncToTick(-7, 2), -6);
    EXPECT_EQ(TruncToTick(7, 0), 7);
    EXPECT_EQ(TruncToTick(-2147483647 - 1, -1), -2147483647 - 1);
}

TEST(NumberText, WholeTicksAreSeenThroughBinaryNoise) {
    struct {
        double price, tick;
        bool whole;
    } const rows[] = {
        // clang-format off
        {0.30000000001, 0.1, true}, {0.29999999999, 0.1, true}, {0.35, 0.1, false},
        {-0.3, 0.1, true},          {-0.35, 0.1, false},        {97.375, 1.0 / 8, true},
        {97.4, 1.0 / 8, false},     {0, 0.25, true},            {100000.01, 0.01, true},
        {0.1000015, 0.1, false},    {5, 0, true},               {5, std::nan(""), true},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(IsWholeTicks(row.price, row.tick, kTickTolerance), row.whole)
            << row.price << " " << row.tick;
    }
}

}  // namespace
