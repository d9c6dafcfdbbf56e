#pragma once

#include <windows.h>

// Keeps the keyboard of a dialog on a control that takes it. A reaction may disable or hide the very control
// that has the focus, or one that a click is about to give it to; the system then leaves the keyboard dead or
// with nothing.
class KeyboardKeeper {
public:
    // Posted to the dialog when there seems to be need of a look: the reaction, or the focus, is still on its
    // way then.
    static constexpr UINT kLookMessage = WM_APP + 1;

    // After the dialog has handled a message. Nothing for a dialog that is gone (null).
    void AfterMessage(HWND dialog, UINT message);
    // For kLookMessage: moves the keyboard on, as Tab does, from the control that had it last.
    void Look(HWND dialog);

private:
    bool InOrder(HWND dialog);

    HWND m_last = nullptr;  // the control that had the keyboard last
};
