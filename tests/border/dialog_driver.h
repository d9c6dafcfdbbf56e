#pragma once

#include "trade/plugin_interface.h"

#include <windows.h>

#include <cstdio>

// How the border host acts on a dialog and says what is wrong.

inline int g_wrong = 0;

inline void Check(bool holds, const char* what) {
    if (!holds) {
        ++g_wrong;
        std::printf("wrong: %s\n", what);
    }
}

// Every message box is answered with No, as soon as it stands.
inline int g_boxes = 0;
inline LRESULT CALLBACK AnswerBox(int code, WPARAM window, LPARAM details) {
    const HWND box = reinterpret_cast<HWND>(window);
    if (code == HCBT_ACTIVATE && GetDlgItem(box, IDNO)) {
        ++g_boxes;
        PostMessageA(box, WM_COMMAND, IDNO, 0);
    }
    return CallNextHookEx(nullptr, code, window, details);
}

// An open dialog, used through its window and the terminal's side of the message loop.
class Dialog {
public:
    explicit Dialog(IEmendixOper* oper) : m_oper(oper), m_window(oper ? oper->GetSafeHwnd() : nullptr) {
        Check(IsWindow(m_window) && IsWindowVisible(m_window), "a dialog is open");
        Pump();
    }
    bool IsOpen() const { return IsWindow(m_window) != FALSE; }
    HWND Item(int id) const { return GetDlgItem(m_window, id); }
    void Pump() const {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (!IsOpen() || !m_oper->PreTranslateMessage(&message)) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        }
    }
    void Choose(int id, const char* text) const {
        SendMessageA(Item(id), CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
        Pump();
    }
    void Type(int id, const char* text) const {
        SetFocus(Item(id));
        SetWindowTextA(Item(id), "");
        for (; *text; ++text) {
            PostMessageA(Item(id), WM_CHAR, static_cast<unsigned char>(*text), 1);
            Pump();
        }
    }
    void Press(int id) const {
        SetFocus(Item(id));
        PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 1);
        Pump();
    }

private:
    IEmendixOper* m_oper;
    HWND m_window;
};
