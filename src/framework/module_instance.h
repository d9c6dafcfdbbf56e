#pragma once

#include <windows.h>

// The module that this code was linked into (the DLL itself, or a test program); its reference count is not
// touched.
HINSTANCE ModuleInstance();

// Registers a window class of this module under a name made of its properties and returns that name; a class
// that exists already is used again. Null when the system refuses. Every class registered here is given back
// when the module is unloaded, since a class left behind would make the next load fail.
const char* RegisterModuleClass(UINT classStyle, HCURSOR cursor = nullptr, HBRUSH background = nullptr,
                                HICON icon = nullptr);
