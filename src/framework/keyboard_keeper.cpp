#include "framework/keyboard_keeper.h"

namespace {

// The child of the dialog that is, or holds, the focused window; null when the focus is elsewhere.
HWND FocusedControl(HWND dialog) {
    for (HWND window = GetFocus(); window; window = GetParent(window)) {
        if (GetParent(window) == dialog && (GetWindowLongA(window, GWL_STYLE) & WS_CHILD) != 0) {
            return window;
        }
    }
    return nullptr;
}

bool TakesKeyboard(HWND control) {
    return IsWindowEnabled(control) && (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

// The messages in which a dialog reacts.
bool MayShutControls(UINT message) {
    return message == WM_COMMAND || message == WM_NOTIFY || message == WM_ACTIVATE || message >= WM_USER;
}

}  // namespace

bool KeyboardKeeper::InOrder(HWND dialog) {
    if (!dialog || GetActiveWindow() != dialog) {
        return true;
    }
    const HWND control = FocusedControl(dialog);
    if (!control || !TakesKeyboard(control)) {
        return false;
    }
    m_last = control;
    return true;
}

void KeyboardKeeper::AfterMessage(HWND dialog, UINT message) {
    if (MayShutControls(message) && !InOrder(dialog)) {
        PostMessageA(dialog, kLookMessage, 0, 0);
    }
}

void KeyboardKeeper::Look(HWND dialog) {
    if (InOrder(dialog)) {
        return;
    }
    const HWND shut = FocusedControl(dialog);
    const HWND from = shut ? shut : GetParent(m_last) == dialog ? m_last : nullptr;
    if (const HWND next = GetNextDlgTabItem(dialog, from, FALSE); next && TakesKeyboard(next)) {
        SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    }
}
