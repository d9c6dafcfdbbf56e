#pragma once

#include "controls/dialog_template.h"
#include "framework/activation_context.h"
#include "framework/dialog.h"
#include "framework/window_helpers.h"
#include "support/window_kit.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

// A shown dialog without controls of its own.
class EmptyDialog : public CDialog {
public:
    EmptyDialog() {
        CXDialogTemplate empty("", WS_POPUP | WS_CAPTION);
        empty.SetSize({200, 150});
        CreateIndirect(reinterpret_cast<const DLGTEMPLATE*>(empty.Build().data()), nullptr);
        ShowWindow(SW_SHOW);
    }
    ~EmptyDialog() override { DestroyWindow(); }

    // A child control of a system class, of the version that the module's dialogs get.
    HWND Add(const char* className, DWORD style, int id, const RECT& at = {10, 10, 150, 200}) {
        const ScopedActivationContext commonControls6;
        return ::CreateWindowExA(0, className, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, at.left,
                                 at.top, at.right - at.left, at.bottom - at.top, m_hWnd,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }
};

// For controls under test: keeps the notifications that reach it, and a message loop like a host's offers it
// and its controls every message.
class ControlDialog : public EmptyDialog {
public:
    std::vector<std::string> log;  // "id:code" of each WM_COMMAND that its control leaves to it
    std::function<bool(MSG&)> translate;
    std::function<bool(const NMHDR&, LRESULT&)> notify;
    std::function<void(WPARAM, LPARAM)> onCommand;

    ~ControlDialog() override { DestroyWindow(); }  // while its callbacks are there

    void Pump() { m_loop.PumpUntilIdle(); }
    // Presses keys in the focused control; upper-case letters stand for their key.
    void Keys(const std::vector<int>& keys) {
        for (const int key : keys) {
            m_loop.Key(static_cast<unsigned>(key));
        }
    }
    void Click(HWND control, int x, int y) { m_loop.ClickAt(control, {x, y}); }
    std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

    BOOL PreTranslateMessage(MSG* message) override { return translate ? translate(*message) : FALSE; }

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (CDialog::OnCommand(wParam, lParam)) {
            return TRUE;
        }
        log.push_back(std::to_string(LOWORD(wParam)) + ":" + std::to_string(HIWORD(wParam)));
        if (onCommand) {
            onCommand(wParam, lParam);
        }
        return FALSE;
    }
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override {
        if (notify && notify(*reinterpret_cast<const NMHDR*>(lParam), *result)) {
            return TRUE;
        }
        return CDialog::OnNotify(wParam, lParam, result);
    }

private:
    HostLoop m_loop{[this](const MSG& message) { return m_hWnd && OfferToWindows(*this, message); }};
};
