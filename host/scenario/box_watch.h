#pragma once

#include <functional>
#include <string>

#include <windows.h>

// A question or message that stands open and runs a message loop of its own.
struct OpenBox {
    HWND window;
    std::string text;
    std::string caption;

    // Presses the button (IDYES ...); false when the box has none of this kind.
    bool Press(int button) const;
    // Presses the button that agrees to the least.
    void Dismiss() const;
};

// Waits for boxes of this thread: the system's, and the coloured question of the module.
class BoxWatch {
public:
    // Called from inside the box's message loop, `delay` milliseconds after the box was shown.
    BoxWatch(std::function<void(const OpenBox&)> onBox, unsigned delay);
    ~BoxWatch();
    BoxWatch(const BoxWatch&) = delete;
    BoxWatch& operator=(const BoxWatch&) = delete;

private:
    static LRESULT CALLBACK HookProcedure(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK TimerProcedure(HWND window, UINT message, UINT_PTR timer, DWORD time);

    std::function<void(const OpenBox&)> m_onBox;
    unsigned m_delay;
    HHOOK m_hook;
    HWND m_box = nullptr;
    UINT_PTR m_timer = 0;
    static BoxWatch* s_current;
};
