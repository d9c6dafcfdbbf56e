#include "res/language.h"

#include <algorithm>

std::uint16_t g_wResLanguage = 0;
std::uint16_t g_wSystemLanguage = 0;

namespace {

constexpr unsigned kPrimaryChinese = 0x04;
constexpr unsigned kSubPeoplesRepublic = 0x02;
constexpr unsigned kSubSingapore = 0x04;

unsigned PrimaryLanguage(std::uint32_t language) {
    return language & 0x3FF;
}

unsigned SubLanguage(std::uint32_t language) {
    return (language >> 10) & 0x3F;
}

}  // namespace

LanguageCandidates BuildLanguageCandidates(const LanguageSettings& settings, std::uint16_t explicitLanguage) {
    LanguageCandidates candidates;
    auto add = [&](std::uint16_t language) {
        // A language as given is looked for among the converted ones: a neutral id may be converted again.
        if (std::find(candidates.begin(), candidates.end(), language) != candidates.end()) return;
        candidates.push_back(settings.toSpecificLocale(language));
        candidates.push_back(
            settings.toSpecificLocale(static_cast<std::uint16_t>(PrimaryLanguage(language))));
    };
    if (explicitLanguage != 0) add(explicitLanguage);
    add(settings.userInterface);
    add(settings.systemInterface);
    add(settings.user);
    add(settings.system);
    return candidates;
}

std::uint16_t SelectUiLanguage(const LanguageCandidates& candidates, const LanguageSettings& settings) {
    std::uint32_t chosen = 0;
    for (std::uint32_t candidate : candidates) {
        chosen = candidate;
        if (candidate != 0 && settings.hasLanguageName(candidate)) break;
    }
    if (PrimaryLanguage(chosen) != kPrimaryChinese) return kEnglish;
    const unsigned sub = SubLanguage(chosen);
    return sub == kSubPeoplesRepublic || sub == kSubSingapore ? kSimplifiedChinese : kTraditionalChinese;
}

void ChooseResourceLanguage(std::uint16_t hostLanguage, const LanguageSettings& settings) {
    g_wSystemLanguage = SelectUiLanguage(BuildLanguageCandidates(settings), settings);
    g_wResLanguage = hostLanguage;
    if (hostLanguage == 0)
        g_wResLanguage = g_wSystemLanguage;
    else if (hostLanguage != g_wSystemLanguage)
        settings.useForThread(hostLanguage);
}
