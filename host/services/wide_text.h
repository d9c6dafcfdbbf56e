#pragma once

#include <string>
#include <string_view>

// The desk's own windows are wide: what the book holds is shown in every language on every code page.
std::wstring Wide(std::string_view utf8);

// Pixels at 96 dpi in the pixels of this screen.
int Scaled(int pixels);
int Unscaled(int pixels);
// Tells the system that the desk scales itself. Before the first window.
void ScaleByOurselves();
