#pragma once

#include "framework/dialog.h"
#include "framework/keyboard_keeper.h"

// A modeless dialog that is deleted when its window is gone, though never under a call that runs in it: the
// host may take the window away in the middle of any of its own operations. After such a call m_hWnd is null,
// and everything that is asked of the window does nothing. While it is active the keyboard stays on a control
// that takes it.
class CSelfOwnedDialog : public CDialog {
protected:
    // Keeps the object while a call from outside runs in it. Window messages are kept this way already.
    class RunningCall {
    public:
        explicit RunningCall(CSelfOwnedDialog& dialog) : m_dialog(dialog) { ++m_dialog.m_runningCalls; }
        ~RunningCall() { m_dialog.EndCall(); }
        RunningCall(const RunningCall&) = delete;
        RunningCall& operator=(const RunningCall&) = delete;

    private:
        CSelfOwnedDialog& m_dialog;
    };

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void PostNcDestroy() override;
    // The window is gone: nobody may find the dialog any more.
    virtual void OnWindowGone() {}

private:
    void EndCall();
    void DeleteOnce();

    KeyboardKeeper m_keyboard;
    int m_runningCalls = 0;
    bool m_windowGone = false;
};
