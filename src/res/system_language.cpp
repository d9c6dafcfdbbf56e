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
    settings.useForThread = [](std::uint16_t language) { SetThreadUILanguage(language); };
    return settings;
}

void ChooseResourceLanguage(std::uint16_t hostLanguage) {
    ChooseResourceLanguage(hostLanguage, ReadLanguageSettings());
}
