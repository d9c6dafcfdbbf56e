#include "tests/controls/combo_box_fixture.h"

namespace {

using Lines = std::vector<std::string>;

const std::string kSelected = "1051:1";     // CBN_SELCHANGE
const std::string kTextChanged = "1051:5";  // CBN_EDITCHANGE

TEST_F(ComboBoxTest, ReportsEverySelectionByProgram) {
    combo.SetCurSel(0);
    EXPECT_EQ(Shown(), "SHFE");
    EXPECT_EQ(dialog.TakeLog(), (Lines{kTextChanged, kSelected}));
    for (const char* text : {"nothing like it", "nona"}) {
        combo.SelectString(-1, text);
        EXPECT_EQ(dialog.TakeLog(), Lines{kSelected}) << "whatever came of it: " << text;
    }
    ToEdit(EM_SETSEL, 0, -1);
    dialog.Keys({VK_DELETE});  // an empty text is a selection of nothing
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(std::count(dialog.log.begin(), dialog.log.end(), kSelected), 1);
}

TEST_F(ComboBoxTest, ATextStandsWhateverSelectionIsReportedFromElsewhere) {
    combo.SetCurSel(0);
    combo.SetWindowText("typed");
    ::SendMessageA(dialog.m_hWnd, WM_COMMAND, MAKEWPARAM(1051, CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(combo.m_hWnd));
    EXPECT_EQ(Shown(), "typed");
}

TEST_F(ComboBoxTest, ShowsTheFullTextAndReadsTheCode) {
    combo.SetCurSel(0);
    combo.SetShowFullText(true);
    EXPECT_EQ(EditLength(), 21) << "the whole line stands in the edit";
    EXPECT_EQ(combo.GetWindowText(), "SHFE");
    char buffer[64] = "";
    for (const auto& [size, read] : {std::pair{64, 4}, {3, 2}}) {
        EXPECT_EQ(combo.SendMessage(WM_GETTEXT, size, reinterpret_cast<LPARAM>(buffer)), read);
    }
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
    EXPECT_EQ(Items(), (Lines{"SHFE   Shanghai Futures", "SGX    Singapore", "DCE    Dalian", "NONAME",
                              "       blank first"}));
    for (int i = 0; i < combo.GetCount(); ++i) {
        EXPECT_EQ(combo.GetItemData(i), static_cast<DWORD_PTR>(100 + i));
    }
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(Shown(), "SGX");
    EXPECT_EQ(dialog.log, Lines{});

    combo.SendMessage(CB_SETCURSEL, static_cast<WPARAM>(-1));
    dialog.Keys({'Q', 'X'});
    combo.AlignColumns(false);
    EXPECT_EQ(Shown(), "qx");
    EXPECT_EQ(Marked(), std::make_pair(2, 2));
    combo.SetCurSel(1);
    combo.SetShowFullText(true);
    combo.AlignColumns(false);
    EXPECT_EQ(EditLength(), 16);
}

TEST_F(ComboBoxTest, FillingAtOnceIsAddingAndAligning) {
    const Lines lines{"B1 Name", "LONGER  Other", "", "X"};
    combo.ResetContent();
    Add(lines);
    combo.AlignColumns(true);
    const Lines added = Items();
    const LRESULT width = combo.SendMessage(CB_GETDROPPEDWIDTH);
    combo.SetDroppedWidth(10);
    combo.SetItems(lines, true);
    EXPECT_EQ(Items(), added);
    EXPECT_EQ(combo.SendMessage(CB_GETDROPPEDWIDTH), width);
    for (const bool fitWidth : {false, true}) {
        combo.SetDroppedWidth(1);
        combo.SetItems(lines, fitWidth);
        EXPECT_GT(combo.SendMessage(CB_GETDROPPEDWIDTH), WidestLine(combo.m_hWnd, combo.GetFont(), lines));
    }
}

TEST_F(ComboBoxTest, FindsACodeInTheFirstMatchingItemOnly) {
    for (const auto& [code, item] : {std::pair{"SGX", 1}, {"sgx", -1}, {"SG", -1}}) {
        EXPECT_EQ(combo.FindItemByCode(code), item) << code;
    }
    EXPECT_EQ(combo.GetItemCode(99), "");
    combo.SetSeparator(0);
    EXPECT_EQ(combo.GetItemCode(1), "SGX Singapore");
}

TEST_F(ComboBoxTest, ASelectionGoesAsSoonAsTheTextContradictsIt) {
    for (const bool picked : {false, true}) {
        combo.SetCurSel(picked ? 0 : 1);
        if (picked) {
            dialog.Keys({VK_DOWN});
        }
        ASSERT_EQ(combo.GetSelectedIndex(), 1);
        dialog.log.clear();
        ToEdit(EM_SETSEL, 0, -1);
        dialog.Keys({'S'});
        EXPECT_EQ(Shown(), "SHFE");
        EXPECT_EQ(combo.GetCurSel(), -1) << picked;
        EXPECT_EQ(combo.GetCurrentIndex(), 0);
        dialog.Keys({'X'});
        EXPECT_EQ(combo.GetCurrentIndex(), -1);
        EXPECT_EQ(combo.GetCurrentCode(), "Sx");
        EXPECT_EQ(std::count(dialog.log.begin(), dialog.log.end(), kSelected), 0) << "nothing is reported";
    }
    combo.SetCurSel(1);
    for (const auto& [text, selected] : {std::pair{"SGX", 1}, {"sgx", 1}, {"SHFE", -1}}) {
        combo.SetWindowText(text);
        EXPECT_EQ(combo.GetCurSel(), selected) << "a program's text: " << text;
    }
    EXPECT_EQ(combo.GetCurrentIndex(), 0);
}

TEST_F(ComboBoxTest, ACodeTypedWholeIsThatCode) {
    combo.SetLines({"100010 Longer", "10001 Name", "10001 Other", "ab Small", "AB Large", "X"});
    const struct {
        std::vector<int> keys;
        const char* shown;
        int line;
    } rows[] = {
        {{'1'}, "100010", 0},
        {{'0', '0', '0', '1'}, "10001", 1},
        {{'0'}, "100010", 0},
        {{VK_BACK}, "10001", 1},
    };
    for (const auto& row : rows) {
        dialog.Keys(row.keys);
        EXPECT_EQ(Shown(), row.shown);
        EXPECT_EQ(combo.GetCurrentIndex(), row.line);
    }
    for (const auto& [code, line] :
         {std::pair{"AB", 4}, {"ab", 3}, {"Ab", 3}, {"x", 5}, {"1000", -1}, {"", -1}}) {
        EXPECT_EQ(combo.FindCode(code), line) << code;
    }
}

TEST_F(ComboBoxTest, ReplacingLinesKeepsWhatTheOperatorHas) {
    const Lines lines{"A Name", "B Same", "B Same", "C Last"};
    const struct {
        int selected;
        Lines lines;
        int kept;
    } rows[] = {
        {2, {"B Same", "X", "B Same"}, 2},  // the second of two equal lines
        {1, {"B Same", "X", "B Same"}, 0},
        {2, {"B Same", "X"}, 0},  // of equal lines one is gone
        {3, {"C Renamed"}, 0},
        {3, {"D"}, -1},
    };
    for (const auto& row : rows) {
        combo.SetLines(lines);
        combo.SetCurSel(row.selected);
        const std::string shown = Shown();
        ToEdit(EM_SETSEL, 0, -1);
        dialog.log.clear();
        combo.ReplaceLines(row.lines);
        EXPECT_EQ(Items(), row.lines);
        EXPECT_EQ(combo.GetSelectedIndex(), row.kept);
        EXPECT_EQ(Shown(), shown);
        EXPECT_EQ(Marked(), std::make_pair(0, 1));
        EXPECT_EQ(dialog.log, Lines{});
    }
    dialog.Keys({'Q', 'Q'});
    combo.ReplaceLines(lines);
    EXPECT_EQ(Shown(), "qq");
    EXPECT_EQ(Marked(), std::make_pair(2, 2));
}

TEST_F(ComboBoxTest, OpeningTheListChangesNothingAndEscGivesBackWhatStoodThere) {
    combo.SetLines({"100010 Longer", "10001 Name", "10001 Other"});
    const auto stands = [&] { return Shown() + " " + std::to_string(combo.GetSelectedIndex()); };
    for (const bool listOnly : {false, true}) {
        combo.SetListOnly(listOnly);
        for (const int selected : {2, 1, 0, -1}) {
            combo.SetCurSel(selected);
            if (selected < 0) {
                combo.SetWindowText("1000");
            }
            const std::string before = stands();
            dialog.log.clear();
            dialog.Keys({VK_F4});
            ASSERT_TRUE(combo.GetDroppedState());
            EXPECT_EQ(stands(), before);
            dialog.Keys({VK_ESCAPE});
            EXPECT_FALSE(combo.GetDroppedState());
            EXPECT_EQ(stands(), before);
            EXPECT_EQ(std::count(dialog.log.begin(), dialog.log.end(), kSelected), 0) << before;

            dialog.Keys({VK_F4, selected > 0 ? VK_UP : VK_DOWN});
            EXPECT_NE(stands(), before);
            dialog.TakeLog();
            dialog.Keys({VK_ESCAPE});
            EXPECT_EQ(stands(), before);
            EXPECT_EQ(std::count(dialog.log.begin(), dialog.log.end(), kSelected), 1) << before;
        }
    }
    dialog.Keys({VK_ESCAPE});
    EXPECT_EQ(stands(), "1000 -1");
}

TEST_F(ComboBoxTest, OneClickIsToldADoubleClickIsNot) {
    struct Input {
        UINT message;
        LPARAM point;
    };
    const Input down{WM_LBUTTONDOWN, MAKELPARAM(5, 6)}, up{WM_LBUTTONUP, MAKELPARAM(5, 6)};
    const struct {
        const char* what;
        std::vector<Input> inputs;
        bool told;
    } rows[] = {
        {"one click", {down, up}, true},
        {"a second click", {down, up, {WM_LBUTTONDBLCLK, MAKELPARAM(5, 6)}, up}, false},
        {"the mouse leaves", {down, up, {WM_MOUSELEAVE, 0}}, false},
        {"released elsewhere", {down, {WM_LBUTTONUP, MAKELPARAM(-5, 600)}}, false},
    };
    for (const auto& row : rows) {
        for (const auto& [message, point] : row.inputs) {
            ::PostMessageA(combo.EditWindow(), message, 0, point);
        }
        dialog.Pump();
        EXPECT_EQ(combo.clicks, std::vector<LPARAM>{}) << row.what << ": more may follow";
        for (int ticks = 0; ticks < 2; ++ticks) {
            combo.SendMessage(WM_TIMER, 1);
        }
        EXPECT_EQ(std::exchange(combo.clicks, {}), std::vector<LPARAM>(row.told, up.point)) << row.what;
    }
}

TEST_F(ComboBoxTest, ShowsAsManyRowsAsAsked) {
    Add(Lines(50, "more"));
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
    const HWND comboBox = dialog.Add("COMBOBOX", CBS_DROPDOWN, 5);
    ASSERT_TRUE(CxComboBox().SubclassWindow(comboBox));
    const HWND edit = ::FindWindowExA(comboBox, nullptr, "Edit", nullptr);
    ::SetWindowTextA(edit, "two words");
    EXPECT_EQ(TextOf(edit), "two words") << "nobody cuts it any more";
}

}  // namespace
