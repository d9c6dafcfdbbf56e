#pragma once

#include "framework/window_helpers.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

// An open dialog, looked at and used by the ids of its controls.
class DialogWindow {
protected:
    HWND window = nullptr;
    HostLoop loop;

    HWND Item(int id) const { return GetDlgItem(window, id); }
    std::string Text(int id) const { return TextOf(Item(id)); }
    // With "|" between them.
    std::string Texts(std::initializer_list<int> ids) const {
        std::string texts;
        for (const int id : ids) {
            texts += (texts.empty() ? "" : "|") + Text(id);
        }
        return texts;
    }
    LRESULT Count(int id) const { return SendMessageA(Item(id), CB_GETCOUNT, 0, 0); }
    bool Shown(int id) const { return (GetWindowLongA(Item(id), GWL_STYLE) & WS_VISIBLE) != 0; }
    bool Enabled(int id) const { return IsWindowEnabled(Item(id)) != FALSE; }
    // The control that has the focus, a combo box for its edit part.
    int FocusId() const {
        const HWND focus = GetFocus();
        return GetDlgCtrlID(focus && GetParent(focus) != window ? GetParent(focus) : focus);
    }

    void Show() {
        ShowWindow(window, SW_SHOW);
        loop.PumpUntilIdle();
    }
    void SetText(int id, const std::string& text) { SetWindowTextA(Item(id), text.c_str()); }
    // Picks a list item as the operator does.
    void Choose(int id, const std::string& prefix) {
        SendMessageA(Item(id), CB_SELECTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(prefix.c_str()));
    }
    void Command(int id) { SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(id), 0); }
    void Press(int id) { SendMessageA(Item(id), BM_CLICK, 0, 0); }
    void Focus(int id) { ::SetFocus(Item(id)); }
    std::string Typed(int id, const std::string& text) {
        Focus(id);
        SetText(id, "");
        loop.Type(Item(id), text);
        return Text(id);
    }
};
