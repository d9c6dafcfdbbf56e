#pragma once

#include <windows.h>

#include <string>

// The whole text of a window; empty for none.
std::string TextOf(HWND window);

// Sets the text only when it differs from the one shown (a control repaints and reports even an equal text).
// True when it was set.
bool SetTextIfChanged(HWND window, const std::string& text);

// The class name, compared without regard to case.
bool HasClass(HWND window, const char* className);

// Puts the caret behind the last character.
void MoveCaretToEnd(HWND edit);
