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
        char code;
        unsigned textId;
    } const rows[] = {
        {OrderStateToText, '0', 10075},         {OrderStateToText, '1', 10077},
        {OrderStateToText, '3', 10086},         {OrderStateToText, '4', 10079},
        {OrderStateToText, '5', 10084},         {OrderStateToText, '6', 10085},
        {OrderStateToText, '7', 10080},         {OrderStateToText, '8', 10081},
        {OrderStateToText, '9', 10083},         {OrderStateToText, 'A', 10082},
        {OrderStateToText, 'B', 10076},         {OrderStateToText, 'D', 10078},
        {OrderTypeToText, '1', 10094},          {OrderTypeToText, '2', 10093},
        {OrderTypeToText, '3', 10096},          {OrderTypeToText, '4', 10095},
        {OrderTypeToText, '5', 10099},          {OrderTypeToText, '6', 10100},
        {OrderTypeToText, '7', 10097},          {OrderTypeToText, '8', 10098},
        {OrderTypeToText, '9', 10101},          {OrderTypeToText, 'A', 10102},
        {OrderTypeToText, 'B', 10103},          {ValidTypeToText, '0', 10106},
        {ValidTypeToText, '1', 10107},          {ValidTypeToText, '2', 10108},
        {ValidTypeToText, '3', 10105},          {ValidTypeToText, '4', 10104},
        {ValidTypeToLongText, '0', 10111},      {ValidTypeToLongText, '1', 10112},
        {ValidTypeToLongText, '2', 10113},      {ValidTypeToLongText, '3', 10110},
        {ValidTypeToLongText, '4', 10109},      {DirectionToText, 'B', 10070},
        {DirectionToText, 'S', 10071},          {DirectionToText, 'A', 10072},
        {OrderSourceToText, 'C', 10089},        {OrderSourceToText, 'D', 10091},
        {OrderSourceToText, 'E', 10117},        {OrderSourceToText, 'J', 10118},
        {OrderSourceToText, 'M', 10088},        {OrderSourceToText, 'P', 10087},
        {OrderSourceToText, 'R', 10119},        {OrderSourceToText, 'S', 10090},
        {OrderSourceToTextWithAll, 'A', 10092},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.toText(row.code), ResString(row.textId)) << row.textId;
    }
    EXPECT_EQ(DirectionFromText(ResString(10073)), 'B');
    EXPECT_EQ(DirectionFromText(ResString(10074)), 'S');
}

INSTANTIATE_TEST_SUITE_P(EveryLanguage, CodeTables,
                         testing::Values(kSimplifiedChinese, kTraditionalChinese, kEnglish));

TEST(CodeTablesText, CaseIsIgnoredOnlyForTheMarkedWords) {
    g_wResLanguage = kEnglish;
    EXPECT_EQ(OrderSourceFromTextWithAll("all"), 'A');
    EXPECT_EQ(OrderSourceFromText("All"), 0);
    EXPECT_EQ(OrderSourceFromText("carry"), 'C');
    EXPECT_EQ(OrderSourceFromText("e-Trade"), 'E');
    EXPECT_EQ(OrderSourceFromText("rts"), 'R');
    EXPECT_EQ(OrderSourceFromText("proxy"), 0);
    EXPECT_EQ(OrderSourceFromText("manual order"), 0);
    EXPECT_EQ(OrderStateFromText("filled"), 0);
    EXPECT_EQ(OrderSourceFromText("Carry "), 0);
    EXPECT_EQ(OrderSourceFromText("Carr"), 0);
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
    EXPECT_EQ(OppositeDirection('B'), 'S');
    EXPECT_EQ(OppositeDirection('S'), 'B');
    EXPECT_EQ(OppositeDirection('A'), 'A');
    EXPECT_EQ(FlagToYN(true), 'Y');
    EXPECT_EQ(FlagToYN(false), 'N');
    std::string twoLegs;
    for (int value = 0; value < 256; ++value) {
        const char code = static_cast<char>(value);
        EXPECT_EQ(YNToFlag(code), code == 'Y');
        if (IsTwoLegType(code)) {
            twoLegs += code;
        }
    }
    EXPECT_EQ(twoLegs, "cdeglmru");
}

}  // namespace
