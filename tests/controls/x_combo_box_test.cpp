#include "controls/x_combo_box.h"

#include "tests/controls/control_dialog.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kCombo = 1051;
const std::string kSelected = "1051:1";     // CBN_SELCHANGE
const std::string kTextChanged = "1051:5";  // CBN_EDITCHANGE

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

class ComboBoxTest : public testing::Test {
protected:
    ControlDialog dialog;
    WatchedComboBox combo;

    void SetUp() override {
        ASSERT_TRUE(dialog.m_hWnd);
        ASSERT_TRUE(dialog.Add("COMBOBOX", CBS_DROPDOWN | CBS_AUTOHSCROLL | WS_VSCROLL, kCombo));
        ASSERT_TRUE(combo.SubclassDlgItem(kCombo, dialog.m_hWnd));
        ASSERT_TRUE(combo.EditWindow());
        for (const char* line : {"SHFE Shanghai Futures", "SGX Singapore", "DCE  Dalian", "NONAME"}) {
            combo.AddString(line);
        }
        ::SetFocus(combo.EditWindow());
        dialog.Pump();
        dialog.log.clear();
    }
    void TearDown() override { dialog.DestroyWindow(); }

    std::string Shown() const { return TextOf(combo.EditWindow()); }
    std::pair<int, int> Marked() const {
        const auto marked = static_cast<DWORD>(::SendMessageA(combo.EditWindow(), EM_GETSEL, 0, 0));
        return {LOWORD(marked), HIWORD(marked)};
    }
    // The whole text of the edit, whatever the box says.
    LRESULT EditLength() const { return ::SendMessageW(combo.EditWindow(), WM_GETTEXTLENGTH, 0, 0); }
    std::vector<std::string> Items() const {
        std::vector<std::string> items;
        for (int i = 0; i < combo.GetCount(); ++i) {
            items.push_back(combo.GetLBText(i));
        }
        return items;
    }
};

TEST_F(ComboBoxTest, CompletesWhatIsTypedAndLeavesDeletionsAlone) {
    const struct {
        std::vector<int> keys;
        const char* shown;
        std::pair<int, int> marked;
    } rows[] = {
        {{'S', 'H'}, "SHFE", {2, 4}},
        {{VK_BACK}, "SH", {2, 2}},  // takes the marked rest, and nothing comes back
        {{VK_BACK}, "S", {1, 1}},
        {{'G'}, "SGX", {2, 3}},
        {{'Q'}, "SGq", {3, 3}},  // nothing begins with it
        {{VK_BACK, VK_BACK, 'H', VK_END, VK_HOME, VK_DELETE}, "HFE", {0, 0}},
        {{'S'}, "SHFE", {1, 1}},  // typed inside a text
    };
    for (const auto& row : rows) {
        dialog.Keys(row.keys);
        EXPECT_EQ(Shown(), row.shown);
        EXPECT_EQ(Marked(), row.marked) << row.shown;
    }
}

TEST_F(ComboBoxTest, EmptyTextClearsTheSelectionAndReportsIt) {
    combo.SetCurSel(1);
    dialog.log.clear();
    ::SendMessageA(combo.EditWindow(), EM_SETSEL, 0, -1);
    dialog.Keys({VK_DELETE});
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.GetCurrentCode(), "");
    EXPECT_EQ(std::count(dialog.log.begin(), dialog.log.end(), kSelected), 1);
}

TEST_F(ComboBoxTest, PastedTextIsCompleted) {
    ASSERT_TRUE(::OpenClipboard(dialog.m_hWnd));
    ::EmptyClipboard();
    HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, 3);
    memcpy(::GlobalLock(memory), "no", 3);
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_TEXT, memory);
    ::CloseClipboard();
    ::SendMessageA(combo.EditWindow(), WM_PASTE, 0, 0);
    EXPECT_EQ(Shown(), "NONAME");
    combo.SetListOnly(true);
    ::SendMessageA(combo.EditWindow(), WM_PASTE, 0, 0);
    ::SendMessageA(combo.EditWindow(), WM_CUT, 0, 0);
    EXPECT_EQ(Shown(), "NONAME");
}

TEST_F(ComboBoxTest, ReportsEverySelectionByProgram) {
    combo.SetCurSel(0);
    EXPECT_EQ(Shown(), "SHFE");
    EXPECT_EQ(dialog.TakeLog(), (std::vector<std::string>{kTextChanged, kSelected}));
    for (const char* text : {"nothing like it", "nona"}) {
        combo.SelectString(-1, text);
        EXPECT_EQ(dialog.TakeLog(), std::vector<std::string>{kSelected}) << "whatever came of it: " << text;
    }
}

TEST_F(ComboBoxTest, ShowsTheFullTextAndReadsTheCode) {
    combo.SetCurSel(0);
    combo.SetShowFullText(true);
    EXPECT_EQ(EditLength(), 21) << "the whole line stands in the edit";
    EXPECT_EQ(combo.GetWindowText(), "SHFE");
    char buffer[64] = "";
    EXPECT_EQ(::SendMessageA(combo.m_hWnd, WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer)), 4);
    EXPECT_EQ(::SendMessageA(combo.m_hWnd, WM_GETTEXT, 3, reinterpret_cast<LPARAM>(buffer)), 2);
    EXPECT_STREQ(buffer, "SH");
    combo.SetShowFullText(false);
    EXPECT_EQ(EditLength(), 4);
    combo.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(-1));
    combo.SetWindowText("typed text");
    EXPECT_EQ(combo.GetText(), "typed") << "a program's text is cut like an item";
    EXPECT_EQ(combo.GetCurrentCode(), "typed");
}

TEST_F(ComboBoxTest, AligningKeepsDataSelectionAndText) {
    combo.AddString(" blank first");
    for (int i = 0; i < combo.GetCount(); ++i) {
        combo.SetItemData(i, static_cast<DWORD_PTR>(100 + i));
    }
    combo.SetCurSel(1);
    dialog.log.clear();
    combo.AlignColumns(true);
    EXPECT_EQ(Items(), (std::vector<std::string>{"SHFE   Shanghai Futures", "SGX    Singapore",
                                                 "DCE    Dalian", "NONAME", "       blank first"}));
    for (int i = 0; i < combo.GetCount(); ++i) {
        EXPECT_EQ(combo.GetItemData(i), static_cast<DWORD_PTR>(100 + i));
    }
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(Shown(), "SGX");
    EXPECT_EQ(dialog.log, std::vector<std::string>{});

    combo.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(-1));
    dialog.Keys({'Q', 'X'});
    dialog.log.clear();
    combo.AlignColumns(false);
    EXPECT_EQ(Shown(), "qx");
    EXPECT_EQ(Marked(), std::make_pair(2, 2));
    combo.SetCurSel(1);
    combo.SetShowFullText(true);
    combo.AlignColumns(false);
    EXPECT_EQ(EditLength(), 16);
}

TEST_F(ComboBoxTest, FillingAtOnceIsAddingAndAligning) {
    std::vector<std::string> lines{"B1 Name", "LONGER  Other", "", "X"};
    combo.ResetContent();
    for (const std::string& line : lines) {
        combo.AddString(line);
    }
    combo.AlignColumns(true);
    const auto added = Items();
    const LRESULT width = combo.SendMessage(CB_GETDROPPEDWIDTH);
    combo.SendMessage(CB_SETDROPPEDWIDTH, 10);
    combo.SetItems(lines, true);
    EXPECT_EQ(Items(), added);
    EXPECT_EQ(combo.SendMessage(CB_GETDROPPEDWIDTH), width);
}

TEST_F(ComboBoxTest, FindsACodeInTheFirstMatchingItemOnly) {
    EXPECT_EQ(combo.FindItemByCode("SGX"), 1);
    EXPECT_EQ(combo.FindItemByCode("sgx"), -1);
    EXPECT_EQ(combo.FindItemByCode("SG"), -1);
    EXPECT_EQ(combo.GetItemCode(99), "");
    combo.SetSeparator(0);
    EXPECT_EQ(combo.GetItemCode(1), "SGX Singapore");
}

TEST_F(ComboBoxTest, ListOnlyTakesNoTextAndOpensOnAClick) {
    combo.SetCurSel(0);
    combo.SetListOnly(true);
    dialog.Keys({'D', VK_BACK});
    EXPECT_EQ(Shown(), "SHFE");
    ::SendMessageA(combo.EditWindow(), EM_SETSEL, 0, 4);
    EXPECT_EQ(Marked(), std::make_pair(4, 4)) << "nothing is marked";
    EXPECT_FALSE(combo.GetDroppedState());
    dialog.Click(combo.EditWindow(), 5, 5);
    EXPECT_TRUE(combo.GetDroppedState());
    combo.ShowDropDown(false);
    EXPECT_EQ(::SendMessageA(combo.m_hWnd, WM_SETCURSOR, reinterpret_cast<WPARAM>(combo.m_hWnd),
                             MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
              TRUE);
    EXPECT_EQ(::GetCursor(), ::LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW)));
}

TEST_F(ComboBoxTest, OptionsSwallowTheirKeys) {
    combo.SetCurSel(0);
    combo.SetNoDelete(true);
    dialog.Keys({VK_END, VK_BACK, VK_HOME, VK_DELETE});
    EXPECT_EQ(Shown(), "SHFE");
    combo.SetNoDelete(false);
    dialog.Keys({VK_DELETE});
    EXPECT_EQ(Shown(), "HFE");
    for (const bool noUndo : {true, false}) {
        combo.SetNoUndo(noUndo);
        ::SendMessageA(combo.EditWindow(), EM_UNDO, 0, 0);
        EXPECT_EQ(Shown(), noUndo ? "HFE" : "SHFE");
    }
    ::SetFocus(dialog.Add("BUTTON", 0, 7));
    ::SendMessageA(combo.EditWindow(), EM_SETSEL, 1, 3);
    EXPECT_EQ(Marked(), std::make_pair(3, 3)) << "nothing is marked without the focus";
}

TEST_F(ComboBoxTest, OneClickIsToldADoubleClickIsNot) {
    const HWND edit = combo.EditWindow();
    const auto tick = [&] { ::SendMessageA(combo.m_hWnd, WM_TIMER, 1, 0); };
    dialog.Click(edit, 5, 6);
    EXPECT_TRUE(combo.clicks.empty()) << "a second click may follow";
    tick();
    EXPECT_EQ(combo.clicks, std::vector<LPARAM>{MAKELPARAM(5, 6)});
    tick();
    dialog.Click(edit, 5, 6);
    ::PostMessageA(edit, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 6));
    ::PostMessageA(edit, WM_LBUTTONUP, 0, MAKELPARAM(5, 6));
    dialog.Pump();
    tick();
    dialog.Click(edit, 5, 6);
    ::PostMessageA(edit, WM_MOUSELEAVE, 0, 0);
    dialog.Pump();
    tick();
    ::PostMessageA(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
    ::PostMessageA(edit, WM_LBUTTONUP, 0, MAKELPARAM(-5, 600));
    dialog.Pump();
    tick();
    EXPECT_EQ(combo.clicks.size(), 1u);
}

TEST_F(ComboBoxTest, ShowsAsManyRowsAsAsked) {
    for (int i = 0; i < 50; ++i) {
        combo.AddString("more");
    }
    for (const int rows : {10, 30}) {
        combo.SetMinVisibleItems(rows);
        EXPECT_EQ(combo.GetMinVisibleItems(), rows);
        combo.ShowDropDown(true);
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        ASSERT_TRUE(::GetComboBoxInfo(combo.m_hWnd, &info));
        RECT list{};
        ::GetClientRect(info.hwndList, &list);
        EXPECT_EQ(list.bottom / combo.SendMessage(CB_GETITEMHEIGHT, 0), rows);
        combo.ShowDropDown(false);
    }
}

TEST(ComboBox, LivesWithoutAnEditAndIsCreatedByCode) {
    ControlDialog dialog;
    CxComboBox list;
    dialog.Add("COMBOBOX", CBS_DROPDOWNLIST, 5);
    ASSERT_TRUE(list.SubclassDlgItem(5, dialog.m_hWnd));
    list.AddString("A Name");
    list.SetCurSel(0);
    list.AlignColumns(true);
    EXPECT_EQ(list.GetCurrentCode(), "A");
    EXPECT_EQ(list.GetCurSel(), 0);

    CxComboBox created;
    ASSERT_TRUE(created.Create(WS_CHILD | CBS_DROPDOWN | CBS_SORT, {0, 0, 90, 90}, dialog.m_hWnd, 6));
    created.AddString("B");
    created.AddString("A Name");
    EXPECT_EQ(created.GetLBText(0), "B") << "not sorted";
    created.SetCurSel(1);
    EXPECT_EQ(created.GetWindowText(), "A");
}

TEST(ComboBox, MayGoBeforeItsWindow) {
    ControlDialog dialog;
    dialog.Add("COMBOBOX", CBS_DROPDOWN, 5);
    HWND edit = nullptr;
    {
        CxComboBox combo;
        ASSERT_TRUE(combo.SubclassDlgItem(5, dialog.m_hWnd));
        edit = combo.EditWindow();
    }
    ::SetWindowTextA(edit, "two words");
    EXPECT_EQ(TextOf(edit), "two words") << "nobody cuts it any more";
}

}  // namespace
