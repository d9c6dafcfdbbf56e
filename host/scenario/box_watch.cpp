#include "scenario/box_watch.h"

#include "scenario/window_text.h"

namespace {

constexpr int kSystemBoxText = 0xFFFF;
constexpr int kColouredBoxText = 1001;

// Null for a window that is no box.
HWND MessageOf(HWND window) {
    if (ClassOf(window) != "#32770") {
        return nullptr;
    }
    const HWND message = GetDlgItem(window, kSystemBoxText);
    return message ? message : GetDlgItem(window, kColouredBoxText);
}

}  // namespace

bool OpenBox::Press(int button) const {
    HWND control = GetDlgItem(window, button);
    if (control) {
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED), reinterpret_cast<LPARAM>(control));
    }
    return control != nullptr;
}

void OpenBox::Dismiss() const {
    for (const int button : {IDCANCEL, IDNO, IDOK}) {
        if (Press(button)) {
            return;
        }
    }
}

BoxWatch* BoxWatch::s_current = nullptr;

BoxWatch::BoxWatch(std::function<void(const OpenBox&)> onBox, unsigned delay)
    : m_onBox(std::move(onBox)),
      m_delay(delay),
      m_hook(SetWindowsHookExW(WH_CBT, &BoxWatch::HookProcedure, nullptr, GetCurrentThreadId())) {
    s_current = this;
}

BoxWatch::~BoxWatch() {
    UnhookWindowsHookEx(m_hook);
    if (m_timer) {
        KillTimer(nullptr, m_timer);
    }
    s_current = nullptr;
}

LRESULT CALLBACK BoxWatch::HookProcedure(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    if (s_current && code == HCBT_ACTIVATE && window != s_current->m_box && MessageOf(window)) {
        s_current->m_box = window;
        s_current->m_timer = SetTimer(nullptr, 0, s_current->m_delay, &BoxWatch::TimerProcedure);
    }
    if (s_current && code == HCBT_DESTROYWND && window == s_current->m_box) {
        s_current->m_box = nullptr;  // the next box may get the same handle
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK BoxWatch::TimerProcedure(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (!s_current || s_current->m_timer != timer) {
        return;
    }
    s_current->m_timer = 0;
    if (HWND box = s_current->m_box) {
        s_current->m_onBox({box, TextOf(MessageOf(box)), TextOf(box)});
    }
}
