// What depends on the language and the code page of the system that runs it.
#include "res/resource_loader.h"
#include "res/system_language.h"
#include "tests/res/texts.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

std::string InCodePageOfSystem(const wchar_t* wide) {
    char text[1024] = "";
    EXPECT_GT(WideCharToMultiByte(CP_ACP, 0, wide, -1, text, sizeof text, nullptr, nullptr), 0);
    return text;
}

TEST(ResourceLoader, EveryTextArrivesInTheCodePageOfTheSystem) {
    for (const Text& text : kTexts) {
        g_wResLanguage = text.language;
        EXPECT_EQ(ResString(text.id), InCodePageOfSystem(text.text)) << text.language << ' ' << text.id;
    }
}

TEST(ResourceLoader, UnknownTextIsEmptyAndEmptiesTheOutput) {
    g_wResLanguage = kEnglish;
    for (unsigned id : {0u, 9999u, 10121u, 10127u, 10128u, 20000u, 65536u + 10000u}) {
        std::string text = "old";
        EXPECT_EQ(LoadResString(text, id), "") << id;
    }
}

TEST(ResourceLoader, LongTextIsCutAtTheBuffer) {
    g_wResLanguage = kEnglish;
    const std::string text = ResString(30000);
    EXPECT_EQ(text.size(), 4095u);
    EXPECT_TRUE(text.ends_with("01234"));
}

TEST(ResourceLoader, LanguageThatTheModuleLacksFallsBackToOneItHas) {
    constexpr std::uint16_t lacking[] = {1041, 1036, 3076, 0};
    for (const std::uint16_t language : lacking) {
        g_wResLanguage = language;
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
    }
    EXPECT_EQ(LoadResDialog(999), nullptr);
    EXPECT_EQ(LoadResDialog(IDD_CARRY, GetModuleHandleA("kernel32.dll")), nullptr);
}

TEST(SystemLanguage, IsTakenOnlyWhenTheHostLeavesTheChoice) {
    const char* expected = std::getenv("EMENDO_EXPECTED_LANGUAGE");
    ASSERT_NE(expected, nullptr);
    constexpr std::uint16_t ofHost[] = {0, 1028, 1033, 1036, 2052};
    for (const std::uint16_t host : ofHost) {
        ChooseResourceLanguage(host);
        EXPECT_EQ(g_wSystemLanguage, std::atoi(expected));
        EXPECT_EQ(g_wResLanguage, host == 0 ? std::atoi(expected) : host);
    }
}

}  // namespace
