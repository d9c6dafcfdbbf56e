#include "framework/self_owned_dialog.h"

LRESULT CSelfOwnedDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const RunningCall call(*this);
    if (message == KeyboardKeeper::kLookMessage) {
        m_keyboard.Look(m_hWnd);
        return 0;
    }
    const LRESULT result = CDialog::WindowProc(message, wParam, lParam);
    m_keyboard.AfterMessage(m_hWnd, message, wParam, m_runningCalls == 1);
    return result;
}

void CSelfOwnedDialog::PostNcDestroy() {
    CDialog::PostNcDestroy();
    OnWindowGone();
    m_windowGone = true;
    if (m_runningCalls == 0) {
        DeleteOnce();
    }
}

void CSelfOwnedDialog::EndCall() {
    if (--m_runningCalls == 0 && m_windowGone) {
        DeleteOnce();
    }
}

// The host may call once more while the destructor lets go of what is the host's.
void CSelfOwnedDialog::DeleteOnce() {
    ++m_runningCalls;
    delete this;
}
