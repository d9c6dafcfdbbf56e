#pragma once

#include <windows.h>

#include <string>

// Writes the pixels of a shown window, or of the screen for null, as a 24-bit BMP file.
bool SaveScreenshot(HWND window, const std::string& path);
