// The texts themselves, in the build whose texts are UTF-8.
#include "res/string_table.h"

#include "tests/res/texts.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

constexpr unsigned kFirst = IDS_FORWARD_DISCOUNT;
constexpr unsigned kLast = IDS_ASK_FILL_ABOVE_REMAINING;
constexpr std::uint16_t kLanguages[] = {kSimplifiedChinese, kTraditionalChinese, kEnglish};

std::string TextIn(std::uint16_t language, unsigned id) {
    g_wResLanguage = language;
    return ResString(id);
}

// What every language has to keep, in its order.
std::vector<std::string> PlaceholdersAndBreaks(const std::string& text) {
    static const std::regex pattern("%[.0-9]*[a-z]|[\n\t]");
    return {std::sregex_token_iterator(text.begin(), text.end(), pattern), std::sregex_token_iterator()};
}

TEST(StringTable, EveryIdHasATextInEveryLanguageAndNoOtherIdHas) {
    for (std::uint16_t language : kLanguages) {
        for (unsigned id = kFirst; id <= kLast; ++id) {
            EXPECT_NE(TextIn(language, id), "") << language << ' ' << id;
        }
        for (unsigned id : {0u, kFirst - 1, kLast + 1, 20000u}) {
            EXPECT_EQ(TextIn(language, id), "") << language << ' ' << id;
        }
    }
}

TEST(StringTable, LanguagesShareLineBreaksAndPlaceholders) {
    for (unsigned id = kFirst; id <= kLast; ++id) {
        const bool joinsIntoOneMessage = (id >= IDS_ACCOUNT_EMPTY && id <= IDS_FILL_PRICE2_ZERO &&
                                          id != IDS_NO_UNDERLYING_DATE && id != IDS_OPERATION_FAILED) ||
                                         id == IDS_FILL_DIALOG_PRICE_NOT_TICKS;
        const auto kept = PlaceholdersAndBreaks(TextIn(kEnglish, id));
        for (std::uint16_t language : kLanguages) {
            const std::string text = TextIn(language, id);
            EXPECT_EQ(PlaceholdersAndBreaks(text), kept) << language << ' ' << id;
            EXPECT_EQ(text.ends_with('\n'), joinsIntoOneMessage) << language << ' ' << id;
        }
    }
}

TEST(StringTable, TraditionalIsTheSimplifiedTextCharacterForCharacter) {
    for (unsigned id = kFirst; id <= kLast; ++id) {
        EXPECT_EQ(WrittenText(kTraditionalChinese, id),
                  InTraditionalForms(WrittenText(kSimplifiedChinese, id)))
            << id;
    }
}

}  // namespace
