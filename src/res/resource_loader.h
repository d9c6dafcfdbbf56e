#pragma once

#include <windows.h>

#include <cstdint>

#include "res/string_table.h"

// The handle of the module that this code is linked into, never the host's. Its reference count does not
// change.
HMODULE GetOwnModuleHandle();

// The loaded resource `id` of `type` (RT_DIALOG, ...; for RT_STRING the block that holds string `id`) in
// `language`, else in whichever language the system picks among those present. Null when there is none.
HGLOBAL FindResourceInLanguage(HMODULE module, LPCSTR type, unsigned id, std::uint16_t language);

// The loaded dialog template `id` in the language of the module; of the own module when `module` is null.
// Null when there is none.
HGLOBAL LoadResDialog(unsigned id, HMODULE module = nullptr);
