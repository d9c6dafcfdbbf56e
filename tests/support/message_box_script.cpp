#include "support/message_box_script.h"

#include <gtest/gtest.h>

namespace {

constexpr int kSystemBoxText = 0xFFFF;
constexpr int kColouredBoxText = 1001;

std::string TextOfWindow(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// The control that shows a box's message; null for a window that is no message box.
HWND MessageControl(HWND window) {
    char className[16];
    GetClassNameA(window, className, sizeof(className));
    if (std::string(className) != "#32770") {
        return nullptr;
    }
    const HWND system = GetDlgItem(window, kSystemBoxText);
    return system ? system : GetDlgItem(window, kColouredBoxText);
}

void Dismiss(HWND box) {
    const HWND button = FindWindowExA(box, nullptr, "Button", nullptr);
    PostMessageA(box, WM_COMMAND,
                 static_cast<WPARAM>(GetDlgItem(box, IDCANCEL) ? IDCANCEL : GetDlgCtrlID(button)), 0);
}

}  // namespace

MessageBoxScript* MessageBoxScript::s_current = nullptr;

MessageBoxScript::MessageBoxScript(std::deque<ExpectedBox> expected)
    : m_expected(std::move(expected)), m_outer(s_current) {
    s_current = this;
    m_hook = SetWindowsHookExA(WH_CBT, &MessageBoxScript::HookProc, nullptr, GetCurrentThreadId());
}

MessageBoxScript::~MessageBoxScript() {
    UnhookWindowsHookEx(m_hook);
    if (m_timer) {
        KillTimer(nullptr, m_timer);
    }
    s_current = m_outer;
    for (const ExpectedBox& missing : m_expected) {
        ADD_FAILURE() << "a message box did not come: \"" << missing.text << "\"";
    }
}

LRESULT CALLBACK MessageBoxScript::HookProc(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_ACTIVATE && s_current) {
        const auto window = reinterpret_cast<HWND>(wParam);
        const HWND control = MessageControl(window);
        if (control && window != s_current->m_lastBox) {
            s_current->m_lastBox = window;
            s_current->Answer(window, control);
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void MessageBoxScript::Answer(HWND box, HWND textControl) {
    ++m_shown;
    const std::string text = TextOfWindow(textControl);
    const std::string caption = TextOfWindow(box);
    if (m_expected.empty()) {
        ADD_FAILURE() << "an unexpected message box came: \"" << text << "\", captioned \"" << caption
                      << "\"";
        Dismiss(box);
        return;
    }
    ExpectedBox expected = std::move(m_expected.front());
    m_expected.pop_front();
    EXPECT_EQ(text, expected.text);
    EXPECT_EQ(caption, expected.caption);
    if (expected.act) {
        m_pendingAct = std::move(expected.act);
        m_timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &MessageBoxScript::TimerProc);
    } else if (GetDlgItem(box, expected.button)) {
        PostMessageA(box, WM_COMMAND, static_cast<WPARAM>(expected.button),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, expected.button)));
    } else {
        ADD_FAILURE() << "the message box \"" << text << "\" has no button " << expected.button;
        Dismiss(box);
    }
}

void CALLBACK MessageBoxScript::TimerProc(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    if (s_current && s_current->m_timer == timer) {
        s_current->m_timer = 0;
        const auto act = std::exchange(s_current->m_pendingAct, nullptr);
        act(s_current->m_lastBox);
    }
}
