#include "res/language.h"

#include <gtest/gtest.h>

namespace {

// Knows every locale but the one listed as unknown; a neutral one becomes specific, as on the system.
LanguageSettings Settings(std::uint16_t userInterface, std::uint16_t systemInterface, std::uint16_t user,
                          std::uint16_t system, std::uint32_t unknown = 0xFFFF) {
    const auto toSpecific = [](std::uint16_t language) -> std::uint32_t {
        return language >= 0x400 ? language : language == 0x04 ? 0x0804 : 0x0400 | language;
    };
    const auto isKnown = [unknown](std::uint32_t locale) { return locale != unknown; };
    return {userInterface, systemInterface, user, system, toSpecific, isKnown, nullptr};
}

TEST(Language, CandidatesFollowTheSettingsEachWithItsPrimaryLanguage) {
    const auto settings = Settings(0x0C04, 0x0409, 0x0409, 0x0411);
    EXPECT_EQ(BuildLanguageCandidates(settings),
              (LanguageCandidates{0x0C04, 0x0804, 0x0409, 0x0409, 0x0411, 0x0411}));
    EXPECT_EQ(BuildLanguageCandidates(settings, 0x0404),
              (LanguageCandidates{0x0404, 0x0804, 0x0C04, 0x0804, 0x0409, 0x0409, 0x0411, 0x0411}));
    // A neutral setting is compared before it is made specific, so it stands twice.
    EXPECT_EQ(BuildLanguageCandidates(Settings(0x09, 0x09, 0x0409, 0x0409)),
              (LanguageCandidates{0x0409, 0x0409, 0x0409, 0x0409}));
}

TEST(Language, FirstKnownCandidateDecides) {
    const struct {
        LanguageCandidates candidates;
        std::uint32_t unknown;
        std::uint16_t expected;
        const char* what;
    } rows[] = {
        {{0x0804}, 0, kSimplifiedChinese, "mainland China"},
        {{0x1004}, 0, kSimplifiedChinese, "Singapore"},
        {{0x0404}, 0, kTraditionalChinese, "Taiwan"},
        {{0x0C04}, 0, kTraditionalChinese, "Hong Kong"},
        {{0x0004}, 0, kTraditionalChinese, "Chinese of no country"},
        {{0x7C04}, 0, kTraditionalChinese, "the highest sublanguage"},
        {{0x20804}, 0, kSimplifiedChinese, "a sort order above the language"},
        {{0x0411}, 0, kEnglish, "Japanese"},
        {{0, 0x0804}, 0xFFFF, kSimplifiedChinese, "an empty entry is passed over"},
        {{0x0411, 0x0404}, 0x0411, kTraditionalChinese, "an unknown one is passed over"},
        {{0x0409, 0x0804}, 0x0804, kEnglish, "a known one ends the search"},
        {{0x0804}, 0x0804, kSimplifiedChinese, "none is known: the last one counts"},
        {{}, 0, kEnglish, "nothing to choose from"},
    };
    for (const auto& row : rows) {
        const auto settings = Settings(0, 0, 0, 0, row.unknown);
        EXPECT_EQ(SelectUiLanguage(row.candidates, settings), row.expected) << row.what;
    }
}

TEST(Language, HostsChoiceStandsAndReachesTheThreadUnlessItIsTheSystems) {
    std::vector<int> ofThread;
    auto settings = Settings(0x0C04, 0x0C04, 0x0C04, 0x0C04);
    settings.useForThread = [&](std::uint16_t language) { ofThread.push_back(language); };
    for (int host : {0, 2052, 1028, 1031}) {
        ChooseResourceLanguage(static_cast<std::uint16_t>(host), settings);
        EXPECT_EQ(g_wSystemLanguage, kTraditionalChinese);
        EXPECT_EQ(g_wResLanguage, host == 0 ? kTraditionalChinese : host);
    }
    EXPECT_EQ(ofThread, (std::vector{2052, 1031}));
}

}  // namespace
