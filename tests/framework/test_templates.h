#pragma once

#include "framework/module_instance.h"

// A dialog template of this program.
inline const DLGTEMPLATE* Template(unsigned id) {
    const HRSRC found = FindResourceA(ModuleInstance(), MAKEINTRESOURCEA(id), RT_DIALOG);
    return static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(ModuleInstance(), found)));
}
