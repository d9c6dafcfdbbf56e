#include "support/window_kit.h"

#include <array>

HostWindow::HostWindow(RECT place)
    : m_window(CreateWindowExA(0, "Static", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, place.left, place.top,
                               place.right - place.left, place.bottom - place.top, nullptr, nullptr, nullptr,
                               nullptr)) {}

void HostWindow::Destroy() {
    if (m_window) {
        DestroyWindow(m_window);
        m_window = nullptr;
    }
}

HostLoop::HostLoop(IEmendixOper* dialog) {
    const HWND window = dialog ? dialog->GetSafeHwnd() : nullptr;
    m_offer = [=](const MSG& message) { return IsWindow(window) && dialog->PreTranslateMessage(&message); };
}

void HostLoop::Handle(MSG& message) {
    if (message.message == WM_QUIT) {
        m_quitSeen = true;
        return;
    }
    if (!m_offer || !m_offer(message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void HostLoop::PumpUntilIdle() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        Handle(message);
    }
}

bool HostLoop::PumpUntil(const std::function<bool()>& condition, unsigned milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (;;) {
        PumpUntilIdle();
        if (condition()) {
            return true;
        }
        const ULONGLONG now = GetTickCount64();
        if (now >= end) {
            return false;
        }
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(end - now), QS_ALLINPUT,
                                    MWMO_INPUTAVAILABLE);
    }
}

void HostLoop::Key(unsigned virtualKey) {
    const UINT scan = MapVirtualKeyA(virtualKey, 0 /* to a scan code */);
    const LPARAM down = static_cast<LPARAM>(1 | (scan << 16));
    PostMessageA(GetFocus(), WM_KEYDOWN, virtualKey, down);
    PumpUntilIdle();
    PostMessageA(GetFocus(), WM_KEYUP, virtualKey, down | static_cast<LPARAM>(0xC0000000));
    PumpUntilIdle();
}

void HostLoop::Type(HWND window, const std::string& text) {
    for (const char character : text) {
        PostMessageA(window, WM_CHAR, static_cast<unsigned char>(character), 1);
        PumpUntilIdle();
    }
}

void HostLoop::Click(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    ClickAt(window, {client.right / 2, client.bottom / 2});
}

void HostLoop::ClickAt(HWND window, POINT point) {
    const LPARAM where = MAKELPARAM(point.x, point.y);
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, where);
    PostMessageA(window, WM_LBUTTONUP, 0, where);
    PumpUntilIdle();
}

void HostLoop::RealClick(HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    std::array<INPUT, 2> inputs{};
    inputs[0].type = inputs[1].type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    PumpUntilIdle();
}
