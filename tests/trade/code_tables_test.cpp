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

struct Conversion {
    const char* name;
    std::string_view codes;
    std::string (*toText)(char);
    char (*fromText)(std::string_view);
};
const Conversion kConversions[] = {
    {"order state", "013456789ABD", OrderStateToText, OrderStateFromText},
    {"order type", "123456789AB", OrderTypeToText, OrderTypeFromText},
    {"valid type", "01234", ValidTypeToText, ValidTypeFromText},
    {"direction", "BSA", DirectionToText, DirectionFromText},
    {"order source", "CDEJMPRS", OrderSourceToText, OrderSourceFromText},
    {"order source with all", "CDEJMPRSA", OrderSourceToTextWithAll, OrderSourceFromTextWithAll},
};

TEST_P(CodeTables, EveryCodeComesBackAndEveryOtherPrintsItself) {
    for (const Conversion& conversion : kConversions) {
        for (int value = 0; value < 256; ++value) {
            const char code = static_cast<char>(value);
            const std::string text = conversion.toText(code);
            if (code && conversion.codes.find(code) != std::string_view::npos) {
                EXPECT_GT(text.size(), 1u) << conversion.name << " " << code;
                EXPECT_EQ(conversion.fromText(text), code) << conversion.name << " " << text;
            } else {
                EXPECT_EQ(text, code ? std::string(1, code) : "") << conversion.name;
                EXPECT_EQ(conversion.fromText(text), 0) << conversion.name << " " << value;
            }
        }
        EXPECT_EQ(conversion.fromText(""), 0) << conversion.name;
        EXPECT_EQ(conversion.fromText("no such word"), 0) << conversion.name;
    }
}

TEST_P(CodeTables, WordsAreThoseOfTheTextIds) {
    struct {
        std::string (*toText)(char);
        const char* codes;
        std::vector<unsigned> textIds;
    } const rows[] = {
        {OrderStateToText,
         "013456789ABD",
         {10075, 10077, 10086, 10079, 10084, 10085, 10080, 10081, 10083, 10082, 10076, 10078}},
        {OrderTypeToText,
         "123456789AB",
         {10094, 10093, 10096, 10095, 10099, 10100, 10097, 10098, 10101, 10102, 10103}},
        {ValidTypeToText, "01234", {10106, 10107, 10108, 10105, 10104}},
        {ValidTypeToLongText, "01234", {10111, 10112, 10113, 10110, 10109}},
        {DirectionToText, "BSA", {10070, 10071, 10072}},
        {OrderSourceToText, "CDEJMPRS", {10089, 10091, 10117, 10118, 10088, 10087, 10119, 10090}},
        {OrderSourceToTextWithAll, "A", {10092}},
    };
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.textIds.size(); ++i) {
            EXPECT_EQ(row.toText(row.codes[i]), ResString(row.textIds[i])) << row.textIds[i];
        }
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
