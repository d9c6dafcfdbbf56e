#include "entry/number_text.h"

#include "framework/number_conversion.h"
#include "trade/price_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <xmmintrin.h>
#include <cmath>
#include <regex>
#include <string>
#include <vector>

namespace {

// Every short text of digits, points, signs and others, against the expressions that define what is a number.
TEST(NumberText, IsWhatMayStandInTheEditWhileTyping) {
    const std::regex patterns[2][2] = {
        {std::regex(R"(^(\d+)?(\.)?(\d+)?$)"), std::regex(R"(^(-)?(\d+)?(\.)?(\d+)?$)")},
        {std::regex(R"(^(\d+)?$)"), std::regex(R"(^(-)?(\d+)?$)")},
    };
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        for (const bool integer : {false, true}) {
            for (const bool sign : {false, true}) {
                ASSERT_EQ(IsNumberText(texts[i], integer, sign),
                          std::regex_match(texts[i], patterns[integer][sign]))
                    << '"' << texts[i] << "\" " << integer << sign;
            }
        }
        for (const char next : std::string_view("059.-+ e\n\xA3")) {
            if (texts[i].size() < 4) {
                texts.push_back(texts[i] + next);
            }
        }
    }
    EXPECT_TRUE(IsNumberText(std::string(kMaxNumberText, '1'), true, false));
    EXPECT_FALSE(IsNumberText(std::string(kMaxNumberText + 1, '1'), true, false));
}

TEST(NumberText, ReadsPricesFromTheStartAndIntegersAsAWhole) {
    struct {
        const char* text;
        double decimal;
        std::int32_t integer;
    } const rows[] = {
        // clang-format off
        {"", 0, 0}, {".", 0, 0}, {"97.25", 97.25, 0}, {" 7x", 7, 0}, {" 7 ", 7, 7}, {"-", 0, 0}, {"-2", -2, -2},
        {"+3", 3, 3}, {"+-3", 0, 0}, {"abc", 0, 0}, {"12.5.5", 12.5, 0}, {"1e400", 0, 0}, {"nan", 0, 0},
        {"2147483647", 2147483647, 2147483647}, {"2147483648", 2147483648, 0}, {"16777217", 16777217, 16777217},
        {".5", 0.5, 0}, {"5.", 5, 0}, {"1e", 1, 0}, {"1e+-2", 1, 0}, {"-25E-1", -2.5, 0}, {"1e-400", 0, 0},
        {"0.000123e7", 1230, 0}, {"1e9999999999", 0, 0}, {"1.7976931348623158e308", 1.7976931348623157e308, 0},
        {"9007199254740993", 9007199254740992, 0}, {"5e-324", 5e-324, 0}, {"4.35", 4.35, 0}, {"0x10", 0, 0},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToDouble(row.text), row.decimal) << row.text;
        EXPECT_EQ(ReadInteger(row.text), row.integer) << row.text;
    }
    EXPECT_EQ(ReadInteger(std::string_view("1234").substr(0, 2)), 12) << "reads no further than the view";
    const std::string halfway = "9007199254740993." + std::string(1000, '0');
    EXPECT_EQ(ToDouble(halfway), 9007199254740992.0);
    EXPECT_EQ(ToDouble(halfway + "1"), 9007199254740994.0) << "the last of a thousand digits decides";
    EXPECT_EQ(ToDouble("0." + std::string(900, '0') + "5e901"), 5.0);
}

// The host's thread may compute in any precision and rounding, and may trap what is not exact.
TEST(NumberText, ReadsAndWritesTheSameUnderEverySettingOfTheHost) {
    const unsigned sseDefault = _mm_getcsr();
    unsigned short x87Default = 0;
    __asm__ volatile("fnstcw %0" : "=m"(x87Default));
    // Precisions of 24, 53 and 64 bits, the four roundings, exceptions masked or not.
    for (const unsigned precision : {0u, 2u, 3u}) {
        for (unsigned rounding = 0; rounding < 4; ++rounding) {
            for (const unsigned mask : {0x3Fu, 0u}) {
                const unsigned short x87 =
                    static_cast<unsigned short>(precision << 8 | rounding << 10 | mask);
                const unsigned sse = rounding << 13 | 0x1F80;
                __asm__ volatile("fldcw %0" : : "m"(x87));
                _mm_setcsr(sse);
                const double read[] = {ToDouble("16777217"), ToDouble("16777217.35"), ToDouble("0.1"),
                                       ToDouble("9007199254740993")};
                const std::string written[] = {FormatPriceText(16777217.35, nullptr),
                                               FormatPriceText(123456.7, nullptr)};
                unsigned short x87After = 0;
                __asm__ volatile("fnstcw %0\n\tfldcw %1" : "=m"(x87After) : "m"(x87Default));
                const unsigned sseAfter = _mm_getcsr();
                _mm_setcsr(sseDefault);
                const auto setting = testing::Message() << precision << " " << rounding << " " << mask;
                EXPECT_THAT(read, testing::ElementsAre(16777217.0, 16777217.35, 0.1, 9007199254740992.0))
                    << setting;
                EXPECT_THAT(written, testing::ElementsAre("16777217.35", "123456.7")) << setting;
                EXPECT_EQ(x87After & ~0x40, x87 & ~0x40) << "the host's setting stands";
                EXPECT_EQ(sseAfter, sse) << "with its flags";
            }
        }
    }
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
