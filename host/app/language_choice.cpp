#include "app/language_choice.h"

WORD LanguageOf(WORD choice) {
    if (choice) {
        return choice;
    }
    const LANGID system = GetUserDefaultUILanguage();
    if (PRIMARYLANGID(system) != LANG_CHINESE) {
        return 1033;
    }
    const bool simplified =
        SUBLANGID(system) == SUBLANG_CHINESE_SIMPLIFIED || SUBLANGID(system) == SUBLANG_CHINESE_SINGAPORE;
    return simplified ? 2052 : 1028;
}

bool CanShow(WORD choice) {
    const WORD language = LanguageOf(choice);
    constexpr UINT kSimplifiedPage = 936;  // has the traditional characters too
    constexpr UINT kTraditionalPage = 950;
    const UINT page = GetACP();
    return language == 1028   ? page == kTraditionalPage || page == kSimplifiedPage
           : language == 2052 ? page == kSimplifiedPage
                              : true;
}
