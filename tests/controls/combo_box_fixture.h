#pragma once

#include "controls/x_combo_box.h"
#include "tests/controls/control_dialog.h"

#include <gtest/gtest.h>

// Keeps the registered click messages.
class WatchedComboBox : public CxComboBox {
public:
    std::vector<LPARAM> clicks;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == g_uLButtonClick) {
            clicks.push_back(lParam);
        }
        return CxComboBox::WindowProc(message, wParam, lParam);
    }
};

// A combo box in an empty dialog, its edit part focused.
class ComboBoxFixture : public testing::Test {
protected:
    ControlDialog dialog;
    WatchedComboBox combo;

    ComboBoxFixture() {
        dialog.Add("COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL, 1051);
        EXPECT_TRUE(combo.SubclassDlgItem(1051, dialog.m_hWnd));
        ::SetFocus(combo.EditWindow());
    }
    void Add(const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            combo.AddString(line);
        }
    }
    std::vector<std::string> Items() const {
        std::vector<std::string> items;
        for (int i = 0; i < combo.GetCount(); ++i) {
            items.push_back(combo.GetLBText(i));
        }
        return items;
    }
    // To the edit part itself, whatever the box says.
    LRESULT ToEdit(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(combo.EditWindow(), message, wParam, lParam);
    }
    std::string Shown() const { return TextOf(combo.EditWindow()); }
    std::pair<int, int> Marked() const {
        const auto marked = static_cast<DWORD>(ToEdit(EM_GETSEL));
        return {LOWORD(marked), HIWORD(marked)};
    }
};

// With lines, and nothing reported yet.
class ComboBoxTest : public ComboBoxFixture {
protected:
    ComboBoxTest() {
        Add({"SHFE Shanghai Futures", "SGX Singapore", "DCE  Dalian", "NONAME"});
        dialog.Pump();
        dialog.log.clear();
    }
    LRESULT EditLength() const { return ToEdit(WM_GETTEXTLENGTH); }
};
