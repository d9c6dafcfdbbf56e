#include "res/resource_loader.h"

#include <gtest/gtest.h>

#include "res/language.h"
#include "res/resource_ids.h"

namespace {

struct Text {
    std::uint16_t language;
    unsigned id;
    const char* utf8;
};

#define STRING(id, text) {kEnglish, id, text},
constexpr Text kEnglishTexts[] = {
#include "res/strings_en.rc"
};
#undef STRING
#define STRING(id, text) {kSimplifiedChinese, id, text},
constexpr Text kSimplifiedTexts[] = {
#include "res/strings_zh_cn.rc"
};
#undef STRING
#define STRING(id, text) {kTraditionalChinese, id, text},
constexpr Text kTraditionalTexts[] = {
#include "res/strings_zh_tw.rc"
};

// What the system makes of a text in its own code page.
std::string InCodePage(const char* utf8) {
    wchar_t wide[512];
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide, std::size(wide));
    char text[1024];
    EXPECT_GT(WideCharToMultiByte(CP_ACP, 0, wide, length, text, sizeof text, nullptr, nullptr), 0);
    return text;
}

TEST(ResourceLoader, EveryTextArrivesInTheCodePageOfTheSystem) {
    auto check = [](const Text& text) {
        g_wResLanguage = text.language;
        EXPECT_EQ(ResString(text.id), InCodePage(text.utf8)) << text.language << ' ' << text.id;
    };
    for (const Text& text : kEnglishTexts) check(text);
    for (const Text& text : kSimplifiedTexts) check(text);
    for (const Text& text : kTraditionalTexts) check(text);
}

TEST(ResourceLoader, UnknownTextIsEmptyAndEmptiesTheOutput) {
    g_wResLanguage = kEnglish;
    for (unsigned id : {0u, 9999u, 10121u, 10127u, 10128u, 20000u, 65536u + 10000u}) {
        std::string text = "old";
        EXPECT_EQ(&LoadResString(text, id), &text);
        EXPECT_EQ(text, "") << id;
    }
}

TEST(ResourceLoader, LongTextIsCutAtTheBuffer) {
    g_wResLanguage = kEnglish;
    const std::string text = ResString(30000);
    EXPECT_EQ(text.size(), 4095u);
    EXPECT_TRUE(text.ends_with("01234"));
}

TEST(ResourceLoader, LanguageThatTheModuleLacksFallsBackToOneItHas) {
    for (int language : {1041, 1036, 3076, 0}) {
        g_wResLanguage = static_cast<std::uint16_t>(language);
        EXPECT_NE(ResString(IDS_OK), "") << language;
        EXPECT_NE(LoadResDialog(IDD_FILL), nullptr) << language;
    }
}

TEST(ResourceLoader, DialogComesInTheLanguageAndFromTheModuleAskedFor) {
    const HMODULE own = GetOwnModuleHandle();
    EXPECT_EQ(own, GetModuleHandleA(nullptr));
    for (std::uint16_t language : {kSimplifiedChinese, kTraditionalChinese, kEnglish}) {
        g_wResLanguage = language;
        const HRSRC exact = FindResourceExW(own, MAKEINTRESOURCEW(5), MAKEINTRESOURCEW(IDD_CARRY), language);
        ASSERT_NE(exact, nullptr);
        EXPECT_EQ(LoadResDialog(IDD_CARRY), LoadResource(own, exact));
        EXPECT_EQ(LoadResDialog(IDD_CARRY, own), LoadResource(own, exact));
    }
    EXPECT_EQ(LoadResDialog(999), nullptr);
    EXPECT_EQ(LoadResDialog(IDD_CARRY, GetModuleHandleA("kernel32.dll")), nullptr);
}

}  // namespace
