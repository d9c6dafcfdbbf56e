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

// Many changes of one visible window without painting in between; everything is painted once at the end. A
// window that is not shown is left alone, because switching redrawing on again would show it.
class RedrawOff {
public:
    explicit RedrawOff(HWND window);
    ~RedrawOff();
    RedrawOff(const RedrawOff&) = delete;
    RedrawOff& operator=(const RedrawOff&) = delete;

private:
    HWND m_window;
};
