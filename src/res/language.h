#pragma once

#include <cstdint>
#include <functional>
#include <vector>

// The languages that the resources exist in.
constexpr std::uint16_t kSimplifiedChinese = 2052;
constexpr std::uint16_t kTraditionalChinese = 1028;
constexpr std::uint16_t kEnglish = 1033;

// Language of every text and dialog, chosen once when the host loads the module. The host's choice stands as
// it was given, even when the module carries no such language.
extern std::uint16_t g_wResLanguage;
// Language that the system's settings ask for: one of the three above, 0 before it was looked up.
extern std::uint16_t g_wSystemLanguage;

// Locale ids in the order in which they are tried.
using LanguageCandidates = std::vector<std::uint32_t>;

// The system's language settings, most specific first, its two answers about them, and the one change made.
struct LanguageSettings {
    std::uint16_t userInterface = 0;
    std::uint16_t systemInterface = 0;
    std::uint16_t user = 0;
    std::uint16_t system = 0;
    // A specific locale for a language id that may be neutral (ConvertDefaultLocale).
    std::function<std::uint32_t(std::uint16_t)> toSpecificLocale;
    // Whether the system knows an abbreviated name of the locale's language.
    std::function<bool(std::uint32_t)> hasLanguageName;
    // Makes a language the interface language of the calling thread.
    std::function<void(std::uint16_t)> useForThread;
};

// Every setting not yet in the list adds two locales: its own and that of its primary language. A nonzero
// `explicitLanguage` comes before the settings.
LanguageCandidates BuildLanguageCandidates(const LanguageSettings& settings,
                                           std::uint16_t explicitLanguage = 0);

// The language to use for the first candidate that the system knows (for the last one when it knows none):
// simplified for Chinese of mainland China and Singapore, traditional for other Chinese, English otherwise.
std::uint16_t SelectUiLanguage(const LanguageCandidates& candidates, const LanguageSettings& settings);

// Chooses the language of all resources, once per load of the module: the host's id, or the system's language
// when the id is 0. An id of the host other than the system's becomes the calling thread's interface
// language.
void ChooseResourceLanguage(std::uint16_t hostLanguage, const LanguageSettings& settings);
