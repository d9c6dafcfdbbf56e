#include "order/message_pause.h"

#include <windows.h>

namespace {

// False when the thread is to end.
bool HandlePendingMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

}  // namespace

void MessagePause::Wait(int milliseconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(milliseconds);
    while (HandlePendingMessages()) {
        const ULONGLONG now = GetTickCount64();
        if (now >= end) {
            return;
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
    }
    // The server still needs its time when the thread is about to end.
    const ULONGLONG now = GetTickCount64();
    if (now < end) {
        Sleep(static_cast<DWORD>(end - now));
    }
}
