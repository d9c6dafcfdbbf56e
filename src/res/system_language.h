#pragma once

#include <cstdint>

#include "res/language.h"

// The settings of this system and user.
LanguageSettings ReadLanguageSettings();

// Chooses the language of all resources by these settings; for the host's id, see language.h.
void ChooseResourceLanguage(std::uint16_t hostLanguage);
