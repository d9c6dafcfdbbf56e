#include "trade/code_tables.h"

#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"

#include <gtest/gtest.h>

namespace {

class CodeTables : public testing::TestWithParam<std::uint16_t> {
protected:
    CodeTables() { g_wResLanguage = GetParam(); }
};

// Every code of an enumeration and the text that names it.
const struct {
    const char* name;
    std::string (*toText)(char);
    char (*fromText)(std::string_view);
    std::string_view codes;
    std::vector<unsigned> textIds;
} kConversions[] = {
    // clang-format off
    {"order state", OrderStateToText, OrderStateFromText, "013456789ABD",
     {10075, 10077, 10086, 10079, 10084, 10085, 10080, 10081, 10083, 10082, 10076, 10078}},
    {"order type", OrderTypeToText, OrderTypeFromText, "123456789AB",
     {10094, 10093, 10096, 10095, 10099, 10100, 10097, 10098, 10101, 10102, 10103}},
    {"valid type", ValidTypeToText, ValidTypeFromText, "01234", {10106, 10107, 10108, 10105, 10104}},
    {"direction", DirectionToText, DirectionFromText, "BSA", {10070, 10071, 10072}},
    {"order source", OrderSourceToText, OrderSourceFromText, "CDEJMPRS",
     {10089, 10091, 10117, 10118, 10088, 10087, 10119, 10090}},
    {"order source with all", OrderSourceToTextWithAll, OrderSourceFromTextWithAll, "CDEJMPRSA",
     {10089, 10091, 10117, 10118, 10088, 10087, 10119, 10090, 10092}},
    // clang-format on
};

TEST_P(CodeTables, EveryCodeHasItsWordAndEveryOtherPrintsItself) {
    for (const auto& conversion : kConversions) {
        for (int value = 0; value < 256; ++value) {
            const char code = static_cast<char>(value);
            const std::string text = conversion.toText(code);
            const std::size_t known = code ? conversion.codes.find(code) : std::string_view::npos;
            if (known != std::string_view::npos) {
                EXPECT_EQ(text, ResString(conversion.textIds[known])) << conversion.name << " " << code;
                EXPECT_EQ(conversion.fromText(text), code) << conversion.name << " " << text;
            } else {
                EXPECT_EQ(text, code ? std::string(1, code) : "") << conversion.name;
                EXPECT_EQ(conversion.fromText(text), 0) << conversion.name << " " << value;
            }
        }
        EXPECT_EQ(conversion.fromText(""), 0) << conversion.name;
        EXPECT_EQ(conversion.fromText("no such word"), 0) << conversion.name;
    }
    const unsigned longTextIds[] = {10111, 10112, 10113, 10110, 10109};
    for (const char code : std::string_view("01234")) {
        EXPECT_EQ(ValidTypeToLongText(code), ResString(longTextIds[code - '0']));
    }
    EXPECT_EQ(DirectionFromText(ResString(10073)), 'B');
    EXPECT_EQ(DirectionFromText(ResString(10074)), 'S');
}

INSTANTIATE_TEST_SUITE_P(EveryLanguage, CodeTables,
                         testing::Values(kSimplifiedChinese, kTraditionalChinese, kEnglish));

TEST(CodeTablesText, CaseIsIgnoredOnlyForTheMarkedWords) {
    g_wResLanguage = kEnglish;
    EXPECT_EQ(OrderSourceFromTextWithAll("all"), 'A');
    EXPECT_EQ(OrderSourceFromText("carry"), 'C');
    EXPECT_EQ(OrderSourceFromText("rts"), 'R');
    for (const char* text : {"All", "proxy", "manual order", "Carry ", "Carr"}) {
        EXPECT_EQ(OrderSourceFromText(text), 0) << text;
    }
    EXPECT_EQ(OrderStateFromText("filled"), 0);
}

TEST(CodeTablesText, ALanguageChangedLaterIsFollowed) {
    g_wResLanguage = kEnglish;
    EXPECT_EQ(ValidTypeFromText("GTD"), '2');
    EXPECT_EQ(DirectionToText('B'), "Buy");
    g_wResLanguage = kSimplifiedChinese;
    const std::string shortText = ResString(IDS_VALID_GFD);
    EXPECT_EQ(ValidTypeFromText(shortText), '0');
    EXPECT_EQ(ValidTypeFromText(shortText + " GFD"), 0) << "long texts are not read";
    EXPECT_EQ(ValidTypeToLongText('0'), shortText + " GFD");
    std::string carry = ResString(IDS_SOURCE_CARRY);
    carry[0] = 'c';
    EXPECT_EQ(OrderSourceFromText(carry), 'C');
}

TEST(CodeTablesText, SharedConversions) {
    EXPECT_EQ(OppositeDirection('A'), 'A');
    std::string twoLegs;
    for (int value = 0; value < 256; ++value) {
        const char code = static_cast<char>(value);
        if (IsTwoLegType(code)) {
            twoLegs += code;
        }
    }
    EXPECT_EQ(twoLegs, "cdeglmru");
}

}  // namespace
