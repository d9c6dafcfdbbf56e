#include "framework/self_owned_dialog.h"

LRESULT CSelfOwnedDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == KeyboardKeeper::kLookMessage) {
        m_keyboard.Look(m_hWnd);
        return 0;
    }
    const LRESULT result = CDialog::WindowProc(message, wParam, lParam);
    m_keyboard.AfterMessage(m_hWnd, message);
    return result;
}

void CSelfOwnedDialog::PostNcDestroy() {
    CDialog::PostNcDestroy();
    OnWindowGone();
    DeleteWhenIdle();
}
