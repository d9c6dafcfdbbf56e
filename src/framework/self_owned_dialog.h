#pragma once

#include "framework/dialog.h"
#include "framework/keyboard_keeper.h"

// A modeless dialog that is deleted when its window is gone, though never under a call that runs in it: the
// host may take the window away in the middle of any of its own operations. After such a call m_hWnd is null,
// and everything that is asked of the window does nothing. While it is active the keyboard stays on a control
// that takes it.
class CSelfOwnedDialog : public CDialog {
protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;
    // The window is gone: nobody may find the dialog any more.
    virtual void OnWindowGone() {}

private:
    KeyboardKeeper m_keyboard;
};
