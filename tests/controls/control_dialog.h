#pragma once

#include "framework/dialog.h"
#include "framework/window_helpers.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// An empty dialog for controls under test: it keeps the notifications that reach it, and a message loop like
// a host's offers it and its controls every message.
class ControlDialog : public CDialog {
public:
    std::vector<std::string> log;  // "id:code" of each WM_COMMAND that is not reflected
    std::function<bool(MSG&)> translate;
    std::function<bool(const NMHDR&, LRESULT&)> notify;
    std::function<void(WPARAM, LPARAM)> onCommand;

    ControlDialog() {
        struct {
            DLGTEMPLATE head;
            WORD menu, windowClass, title;
        } empty{};
        empty.head.style = WS_POPUP | WS_CAPTION;
        empty.head.cx = 200;
        empty.head.cy = 150;
        CreateIndirect(&empty.head, nullptr);
        ShowWindow(SW_SHOW);
    }
    ~ControlDialog() override { DestroyWindow(); }

    // A child control of a system class.
    HWND Add(const char* className, DWORD style, int id, const RECT& at = {10, 10, 150, 200}) {
        return ::CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, at.left,
                                 at.top, at.right - at.left, at.bottom - at.top, m_hWnd,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }

    // Runs the loop until nothing is waiting.
    void Pump() {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (!m_hWnd || !OfferToWindows(*this, message)) {
                ::TranslateMessage(&message);
                ::DispatchMessageA(&message);
            }
        }
    }
    // Presses keys in the focused control; upper-case letters stand for their key.
    void Keys(const std::vector<int>& keys) {
        for (const int key : keys) {
            ::PostMessageA(::GetFocus(), WM_KEYDOWN, static_cast<WPARAM>(key), 1);
            Pump();
        }
    }
    void Type(const std::wstring& text) {
        for (const wchar_t character : text) {
            ::PostMessageA(::GetFocus(), WM_KEYDOWN, 0, 1);
            ::PostMessageW(::GetFocus(), WM_CHAR, character, 1);
            Pump();
        }
    }
    void Click(HWND control, int x, int y, UINT down = WM_LBUTTONDOWN) {
        ::PostMessageA(control, down, MK_LBUTTON, MAKELPARAM(x, y));
        ::PostMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
        Pump();
    }
    std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

    BOOL PreTranslateMessage(MSG* message) override { return translate ? translate(*message) : FALSE; }

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        log.push_back(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
        if (onCommand) {
            onCommand(wParam, lParam);
        }
        return CDialog::OnCommand(wParam, lParam);
    }
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        if (notify && notify(*reinterpret_cast<const NMHDR*>(lParam), *result)) {
            return TRUE;
        }
        return CDialog::OnNotify(wParam, lParam, result);
    }
};
