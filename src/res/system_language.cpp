#include "res/system_language.h"

#include <windows.h>

LanguageSettings ReadLanguageSettings() {
    LanguageSettings settings;
    settings.userInterface = GetUserDefaultUILanguage();
    settings.systemInterface = GetSystemDefaultUILanguage();
    settings.user = GetUserDefaultLangID();
    settings.system = GetSystemDefaultLangID();
    settings.toSpecificLocale = [](std::uint16_t language) -> std::uint32_t {
        return ConvertDefaultLocale(MAKELCID(language, SORT_DEFAULT));
    };
    settings.hasLanguageName = [](std::uint32_t locale) {
        char name[4];
        return GetLocaleInfoA(locale, LOCALE_SABBREVLANGNAME, name, sizeof name) != 0;
    };
    return settings;
}

void ChooseResourceLanguage(std::uint16_t hostLanguage) {
    const LanguageSettings settings = ReadLanguageSettings();
    g_wSystemLanguage = SelectUiLanguage(BuildLanguageCandidates(settings), settings);
    g_wResLanguage = hostLanguage;
    if (hostLanguage == 0)
        g_wResLanguage = g_wSystemLanguage;
    else if (hostLanguage != g_wSystemLanguage)
        SetThreadUILanguage(hostLanguage);
}
