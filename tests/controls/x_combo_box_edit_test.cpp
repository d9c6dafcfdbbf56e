#include "tests/controls/combo_box_fixture.h"

namespace {

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

TEST_F(ComboBoxTest, TheTextBeginsInViewAndIsReplacedByWhoComesBack) {
    const HWND elsewhere = dialog.Add("EDIT", 0, 7);
    combo.SetLines({"A much longer line than the field of this box can ever show", "B"});
    const auto inView = [&] { return ToEdit(EM_GETFIRSTVISIBLELINE) == 0; };
    for (const bool listOnly : {true, false}) {
        combo.SetShowFullText(true);
        combo.SetListOnly(listOnly);
        ::SetFocus(combo.EditWindow());
        combo.SetCurSel(1);
        combo.SetCurSel(0);
        EXPECT_TRUE(inView()) << "chosen";
        dialog.Keys({VK_END});
        ::SetFocus(elsewhere);
        EXPECT_TRUE(inView()) << "left";
        EXPECT_EQ(Marked(), std::make_pair(0, 0));
        combo.ReplaceLines(Items());
        combo.SetWindowText("Another line that is much longer than the field of this box is");
        EXPECT_TRUE(inView()) << "by program";
        combo.SetFocus();
        EXPECT_TRUE(inView());
        EXPECT_EQ(Marked(), std::make_pair(0, listOnly ? 0 : 62));
    }
    combo.SetShowFullText(false);
    ToEdit(EM_SETSEL, 3, 3);
    ToEdit(WM_CHAR, 1);
    EXPECT_EQ(Marked(), std::make_pair(0, 62)) << "Ctrl+A";
    dialog.Keys({'B'});
    EXPECT_EQ(Shown(), "B");
    ::SetFocus(elsewhere);
    dialog.Click(combo.EditWindow(), 3, 3);
    EXPECT_EQ(Marked().first, Marked().second) << "a click says where to type";
}

TEST_F(ComboBoxTest, ListOnlyTakesNoTextAndOpensOnAClick) {
    const HWND source = dialog.Add("EDIT", 0, 7);
    ::SetWindowTextA(source, "no");
    ::SendMessageA(source, EM_SETSEL, 0, -1);
    ::SendMessageA(source, WM_COPY, 0, 0);
    combo.SetCurSel(0);
    ToEdit(EM_SETSEL, 1, 2);
    dialog.Keys({'Q'});  // something to undo
    combo.SetCurSel(0);
    ToEdit(EM_SETSEL, 1, 2);
    combo.SetListOnly(true);
    dialog.Keys({'D', VK_BACK, VK_DELETE});
    for (const UINT message : {UINT{WM_CUT}, UINT{WM_CLEAR}, UINT{WM_PASTE}, UINT{WM_UNDO}, UINT{EM_UNDO}}) {
        ToEdit(message);
        EXPECT_EQ(Shown(), "SHFE") << message;
    }
    for (const UINT message : {UINT{WM_CHAR}, UINT{WM_IME_CHAR}, UINT{WM_UNICHAR}}) {
        ToEdit(message, 'x', 1);
        EXPECT_EQ(Shown(), "SHFE") << message;
    }
    ToEdit(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"x"));
    EXPECT_EQ(Shown(), "SHFE");
    ToEdit(EM_SETSEL, 0, 4);
    EXPECT_EQ(Marked(), std::make_pair(4, 4)) << "nothing is marked";
    EXPECT_FALSE(combo.GetDroppedState());
    dialog.Click(combo.EditWindow(), 5, 5);
    EXPECT_TRUE(combo.GetDroppedState());
    combo.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(combo.m_hWnd),
                      MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
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
        ToEdit(EM_UNDO);
        EXPECT_EQ(Shown(), noUndo ? "HFE" : "SHFE");
    }
    ::SetFocus(dialog.Add("BUTTON", 0, 7));
    ToEdit(EM_SETSEL, 1, 3);
    EXPECT_EQ(Marked(), std::make_pair(3, 3)) << "nothing is marked without the focus";
}

}  // namespace
