#include "framework/self_owned_dialog.h"

LRESULT CSelfOwnedDialog::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const RunningCall call(*this);
    return CDialog::WindowProc(message, wParam, lParam);
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
