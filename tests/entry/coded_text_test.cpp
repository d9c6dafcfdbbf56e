#include "entry/coded_text.h"

#include <gtest/gtest.h>

namespace {

// As in code page 936: the second byte may be any of 0x40 and above.
bool IsLead(unsigned char byte) {
    return byte >= 0x81 && byte != 0xFF;
}

TEST(CodedText, SplitsAtTheFirstWholeSeparator) {
    const struct {
        std::string line;
        char separator;
        const char *code, *name;
    } rows[] = {
        // clang-format off
        {"SHFE Shanghai", ' ', "SHFE", "Shanghai"}, {"SHFE", ' ', "SHFE", ""}, {"", ' ', "", ""},
        {" name", ' ', "", "name"}, {"SHFE  \tShanghai Futures", ' ', "SHFE", "Shanghai Futures"},
        {"SHFE ", ' ', "SHFE", ""}, {"A|B C", '|', "A", "B C"}, {"A B\x01Name", 0, "A B\x01Name", ""},
        // 0xD0 0x7C is one character.
        {"\xD0\x7C|name", '|', "\xD0\x7C", "name"}, {"\xD0\x7C", '|', "\xD0\x7C", ""},
        {"a\xD0", '|', "a\xD0", ""}, {"\xB5\xC7 \xC3\xFB", ' ', "\xB5\xC7", "\xC3\xFB"},
        // clang-format on
    };
    for (const auto& row : rows) {
        const CodedTextFormat format{row.separator, &IsLead};
        EXPECT_EQ(CodeOf(row.line, format), row.code) << row.line;
        EXPECT_EQ(NameOf(row.line, format), row.name) << row.line;
    }
    EXPECT_EQ(CodeLength(std::wstring_view(L"\u957F x"), CodedTextFormat{}), 1u);
}

TEST(CodedText, AlignsNamesIntoOneColumn) {
    const AlignedLines aligned =
        AlignLines({"SHFE Shanghai", "SGX  Singapore", "NONAME", "\xB5\xC7 \xC3\xFB", ""}, {});
    EXPECT_EQ(aligned.lines, (std::vector<std::string>{"SHFE   Shanghai", "SGX    Singapore", "NONAME",
                                                       "\xB5\xC7     \xC3\xFB", ""}));
    EXPECT_EQ(aligned.longestCode, 6u);
    EXPECT_EQ(aligned.longestName, 9u);
    EXPECT_EQ(AlignLines(aligned.lines, {}).lines, aligned.lines) << "aligning again changes nothing";
    EXPECT_EQ(AlignLines({"A|x", "BB|y"}, {'|', nullptr}).lines, (std::vector<std::string>{"A||x", "BB|y"}));
    EXPECT_TRUE(AlignLines({}, {}).lines.empty());
}

TEST(CodedText, MarksTheCompletedRest) {
    EXPECT_EQ(SelectionAfterCompletion({2, 2}, 2), (EditSelection{2, -1}));
    EXPECT_EQ(SelectionAfterCompletion({1, 1}, 2), (EditSelection{1, 1})) << "typing inside keeps the caret";
}

TEST(CodedText, WidensTheListForItsScrollBar) {
    EXPECT_EQ(DropDownWidth(100, 30, 30, {1, 16}), 104);
    EXPECT_EQ(DropDownWidth(100, 31, 30, {1, 16}), 120);
}

}  // namespace
