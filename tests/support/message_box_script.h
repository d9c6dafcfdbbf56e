#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <string>

// One message box that a test expects, and what it does with it.
struct ExpectedBox {
    std::string text;
    std::string caption;
    int button = IDOK;
    // Runs inside the box's message loop instead of pressing the button, when set.
    std::function<void(HWND box)> act = nullptr;
};

// Answers the message boxes of this thread in the given order while it lives. A box that is not expected, has
// other texts, or does not come at all is a test failure; an unexpected one is dismissed so that the test can
// go on. Boxes are the system's and the coloured question.
class MessageBoxScript {
public:
    explicit MessageBoxScript(std::deque<ExpectedBox> expected = {});
    ~MessageBoxScript();
    MessageBoxScript(const MessageBoxScript&) = delete;
    MessageBoxScript& operator=(const MessageBoxScript&) = delete;

    int Shown() const { return m_shown; }

private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK TimerProc(HWND window, UINT message, UINT_PTR timer, DWORD time);
    void Answer(HWND box, HWND textControl);

    std::deque<ExpectedBox> m_expected;
    std::function<void(HWND)> m_pendingAct;
    HWND m_lastBox = nullptr;
    UINT_PTR m_timer = 0;
    HHOOK m_hook = nullptr;
    MessageBoxScript* m_outer = nullptr;
    int m_shown = 0;
    static MessageBoxScript* s_current;
};
