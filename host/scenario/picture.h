#pragma once

#include <string>

#include <windows.h>

// Writes what the screen shows of the window, and of the popups, open lists and boxes that belong to it, as a
// BMP file. Null: the whole screen. False when it cannot be read or written.
bool SavePicture(HWND window, const std::string& path);
