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
        delete this;
    }
}

void CSelfOwnedDialog::EndCall() {
    if (--m_runningCalls == 0 && m_windowGone) {
        delete this;
    }
}
