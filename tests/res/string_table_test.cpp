// The texts themselves, in the build whose texts are UTF-8.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>

#include "res/language.h"
#include "res/resource_ids.h"
#include "res/string_table.h"
#include "tests/res/chinese_forms.h"

namespace {

constexpr unsigned kFirst = IDS_FORWARD_DISCOUNT;
constexpr unsigned kLast = IDS_ASK_FILL_ABOVE_REMAINING;
constexpr std::uint16_t kLanguages[] = {kSimplifiedChinese, kTraditionalChinese, kEnglish};

std::string TextIn(std::uint16_t language, unsigned id) {
    g_wResLanguage = language;
    return ResString(id);
}

std::vector<std::string> Characters(const std::string& utf8) {
    std::vector<std::string> characters;
    for (char byte : utf8) {
        const bool continues = (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
        if (continues)
            characters.back() += byte;
        else
            characters.emplace_back(1, byte);
    }
    return characters;
}

std::vector<std::string> Placeholders(const std::string& text) {
    static const std::regex pattern("%[.0-9]*[a-z]");
    return {std::sregex_token_iterator(text.begin(), text.end(), pattern), std::sregex_token_iterator()};
}

std::string LineBreaksAndTabs(std::string text) {
    std::erase_if(text, [](char c) { return c != '\n' && c != '\t'; });
    return text;
}

std::map<std::string, std::string> TraditionalForms() {
    std::map<std::string, std::string> forms;
    const auto characters = Characters(kChineseForms);
    for (std::size_t i = 0; i + 1 < characters.size(); i += 2) forms[characters[i]] = characters[i + 1];
    return forms;
}

TEST(StringTable, EveryIdHasATextInEveryLanguageAndNoOtherIdHas) {
    for (std::uint16_t language : kLanguages) {
        for (unsigned id = kFirst; id <= kLast; ++id)
            EXPECT_NE(TextIn(language, id), "") << language << ' ' << id;
        for (unsigned id : {0u, kFirst - 1, kLast + 1, 20000u}) EXPECT_EQ(TextIn(language, id), "") << id;
    }
}

TEST(StringTable, LanguagesShareLineBreaksAndPlaceholders) {
    for (unsigned id = kFirst; id <= kLast; ++id) {
        const std::string english = TextIn(kEnglish, id);
        for (std::uint16_t language : {kSimplifiedChinese, kTraditionalChinese}) {
            const std::string text = TextIn(language, id);
            EXPECT_EQ(LineBreaksAndTabs(text), LineBreaksAndTabs(english)) << language << ' ' << id;
            EXPECT_EQ(text.back() == '\n', english.back() == '\n') << language << ' ' << id;
            EXPECT_EQ(Placeholders(text), Placeholders(english)) << language << ' ' << id;
        }
    }
}

TEST(StringTable, TextsThatJoinIntoOneMessageEndInALineBreak) {
    for (unsigned id = kFirst; id <= kLast; ++id) {
        const bool joins = (id >= IDS_ACCOUNT_EMPTY && id <= IDS_FILL_PRICE2_ZERO &&
                            id != IDS_NO_UNDERLYING_DATE && id != IDS_OPERATION_FAILED) ||
                           id == IDS_FILL_DIALOG_PRICE_NOT_TICKS;
        EXPECT_EQ(TextIn(kEnglish, id).ends_with('\n'), joins) << id;
    }
}

TEST(StringTable, TraditionalIsTheSimplifiedTextCharacterForCharacter) {
    const auto forms = TraditionalForms();
    for (unsigned id = kFirst; id <= kLast; ++id) {
        std::string expected;
        for (const std::string& character : Characters(TextIn(kSimplifiedChinese, id))) {
            const auto form = forms.find(character);
            expected += form == forms.end() ? character : form->second;
        }
        EXPECT_EQ(TextIn(kTraditionalChinese, id), expected) << id;
    }
}

}  // namespace
