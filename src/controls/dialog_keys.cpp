#include "controls/dialog_keys.h"

KeyOutcome TranslateDialogKey(HWND dialog, MSG& message, int confirmId, int cancelId, NumericEntry& numbers) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN) {
        const HWND focus = GetFocus();
        if (focus && (focus == GetDlgItem(dialog, confirmId) || focus == GetDlgItem(dialog, cancelId))) {
            SendMessageA(focus, WM_LBUTTONDOWN, MK_LBUTTON, 0);
            SendMessageA(focus, WM_LBUTTONUP, 0, 0);
            // The click may take the dialog away or the keyboard elsewhere.
            if (GetFocus() != focus) {
                return KeyOutcome::Consumed;
            }
        }
        message.wParam = VK_TAB;
        return KeyOutcome::DialogKeyboard;
    }
    if (message.message == WM_KEYDOWN && message.wParam == VK_TAB) {
        return KeyOutcome::DialogKeyboard;
    }
    return numbers.OnMessage(message) ? KeyOutcome::Consumed : KeyOutcome::Pass;
}
