#pragma once

#include <windows.h>

#include <string>

// Beside the system's MB_ styles: the button captions are the built-in ones whatever the language, and no
// sound.
inline constexpr UINT kXmbBuiltInCaptions = 0x20000000;
inline constexpr UINT kXmbNoSound = 0x40000000;

// CLR_INVALID (-1): the system's window text and window background.
struct XMessageBoxParameters {
    COLORREF textColour = CLR_INVALID;
    COLORREF backgroundColour = CLR_INVALID;
};

// Shows a message box whose message area has its own colours and which Ctrl+C copies as text. `style` names
// the buttons (MB_OK, MB_OKCANCEL). For a null owner the last active pop-up of the active window is taken.
// The result is the button's id; IDCANCEL also when the box could not be shown, was closed with its owner, or
// the thread is to quit (the quit stays pending): there is no consent without an answer.
int XMessageBox(HWND owner, const std::string& message, const std::string& caption, UINT style,
                const XMessageBoxParameters& parameters);
