#pragma once

#include <cstdint>

#include "res/language.h"

// The settings of this system and user.
LanguageSettings ReadLanguageSettings();

// Chooses the language of all resources, once per load of the module: the host's id, or the system's language
// when the id is 0. An id of the host other than the system's becomes the calling thread's interface
// language.
void ChooseResourceLanguage(std::uint16_t hostLanguage);
