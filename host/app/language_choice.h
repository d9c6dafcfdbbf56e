#pragma once

#include <windows.h>

// Of the three languages of the module the one that it takes for this choice; 0 leaves it to the system.
WORD LanguageOf(WORD choice);
// The module's texts are in the ANSI code page: only some systems have the characters of a language. Where
// they are missing "Buy" and "Sell" look alike, so such a language is not offered.
bool CanShow(WORD choice);
