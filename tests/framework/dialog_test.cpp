#include "framework/dialog.h"

#include "framework/controls.h"
#include "framework/data_exchange.h"
#include "framework/font.h"
#include "framework/module_instance.h"
#include "support/swallowed_exceptions.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace {

// A dialog template of this program.
const DLGTEMPLATE* Template(unsigned id) {
    const HRSRC found = FindResourceA(ModuleInstance(), MAKEINTRESOURCEA(id), RT_DIALOG);
    return static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(ModuleInstance(), found)));
}

// Takes keys before the dialog sees them.
class TakingEdit : public CWnd {
public:
    BOOL PreTranslateMessage(MSG* message) override { return message->message == WM_KEYDOWN; }
};

// A combo box as the host would make it.
HWND PlainBox(HWND parent) {
    return CreateWindowExA(0, WC_COMBOBOXA, "", WS_CHILD | CBS_DROPDOWN, 0, 0, 50, 50, parent, nullptr,
                           nullptr, nullptr);
}

// CB_SETMINVISIBLE is known to version 6 only.
bool IsVersion6(HWND box) {
    return ::SendMessageA(box, CB_SETMINVISIBLE, 5, 0) != FALSE;
}

// Shows template 500.
class TestDialog : public CDialog {
public:
    std::string text = "text";
    int number = 7;
    double amount = 12.5;
    std::string choice;
    int check = 1;
    SYSTEMTIME date{2026, 2, 0, 28, 13, 14, 15, 0};
    CComboBox box;
    int textChanges = 0;
    int cancels = 0;
    int ended = 0;
    std::function<void()> atInit = [] {};

    bool Open(HWND parent, const std::string& init = {}) {
        return CreateIndirect(Template(500), parent, init.data(), init.size(), 1252);
    }

protected:
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        atInit();
        return TRUE;
    }
    void DoDataExchange(CDataExchange* exchange) override {
        std::string absentText;
        CComboBox absentBox;
        DDX_Control(exchange, 104, box);
        DDX_Text(exchange, 101, text);
        DDX_Text(exchange, 102, number);
        DDX_Text(exchange, 103, amount);
        DDX_CBString(exchange, 104, choice);
        DDX_Check(exchange, 105, check);
        DDX_DateTimeCtrl(exchange, 106, date);
        DDX_Text(exchange, 999, absentText);
        DDX_Control(exchange, 999, absentBox);
    }
    void OnTextChanged() { ++textChanges; }
    void OnCancel() override { ++cancels; }
    void PostNcDestroy() override { ++ended; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
ON_EN_CHANGE(101, &TestDialog::OnTextChanged)
END_MESSAGE_MAP()

struct Dialogs : testing::Test {
    HostWindow host;
    TestDialog dialog;
    TakingEdit edit;
    HostLoop loop{[this](const MSG& message) { return dialog.m_hWnd && OfferToWindows(dialog, message); }};

    void Show() {
        ASSERT_TRUE(dialog.Open(host.Get()));
        dialog.ShowWindow(SW_SHOW);
    }
};

// An entry of the dialog-initialisation resource: adds an item to a combo box.
std::string InitItem(WORD id, const std::string& text) {
    const WORD head[] = {id, 0x0403, static_cast<WORD>(text.size() + 1), 0};
    return std::string(reinterpret_cast<const char*>(head), sizeof head) + text + '\0';
}

TEST_F(Dialogs, InitialItemsAreThereBeforeTheDialogSetsItselfUp) {
    LRESULT items = 0;
    dialog.atInit = [&] { items = ::SendMessageA(dialog.GetDlgItem(104), CB_GETCOUNT, 0, 0); };
    std::string data = InitItem(104, "first") + InitItem(104, "second") + InitItem(999, "no control");
    data.append(2, '\0');
    // Whole, and cut in the second text, in its head, behind the first head, in it and before it.
    const std::pair<std::size_t, int> rows[] = {{data.size(), 2}, {25, 1}, {20, 1}, {8, 0}, {5, 0}, {0, 0}};
    for (const auto& [size, expected] : rows) {
        ASSERT_TRUE(dialog.Open(host.Get(), data.substr(0, size)));
        EXPECT_EQ(items, expected) << "of the first " << size << " bytes";
        dialog.DestroyWindow();
    }
    data[4] = data[5] = '\xFF';  // a length beyond the end
    ASSERT_TRUE(dialog.Open(host.Get(), data));
    EXPECT_EQ(items, 0);
}

TEST_F(Dialogs, FailedCreationLeavesNoWindow) {
    EXPECT_FALSE(dialog.CreateIndirect(nullptr, host.Get()));
    EXPECT_FALSE(dialog.CreateIndirect(Template(501), host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    dialog.atInit = [&] { dialog.DestroyWindow(); };
    EXPECT_FALSE(dialog.Open(host.Get()));
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_FALSE(dialog.Open(reinterpret_cast<HWND>(0x1234)));
}

TEST_F(Dialogs, ExceptionDuringSetUpLeavesNoWindow) {
    ExpectedExceptions expected;
    dialog.atInit = [] { throw std::runtime_error("thrown on purpose"); };
    EXPECT_FALSE(dialog.Open(host.Get()));
    EXPECT_EQ(expected.Take(), 1);
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(FindWindowA(WC_DIALOG, nullptr), nullptr) << "a dialog without its values stayed";
}

TEST_F(Dialogs, TabGoesThroughTheHostsLoop) {
    Show();
    SetFocus(dialog.GetDlgItem(101));
    for (const int next : {102, 103}) {
        loop.Key(VK_TAB);
        EXPECT_EQ(GetDlgCtrlID(GetFocus()), next);
    }
    SetFocus(dialog.GetDlgItem(101));
    ASSERT_TRUE(edit.SubclassDlgItem(101, dialog.m_hWnd));
    loop.Key(VK_TAB);
    EXPECT_EQ(GetFocus(), edit.m_hWnd) << "the target's object comes before the dialog";
}

TEST_F(Dialogs, EscapeDoesNothingOfItsOwn) {
    Show();
    SetFocus(dialog.GetDlgItem(102));
    loop.Key(VK_ESCAPE);
    EXPECT_EQ(dialog.cancels, 1);
    EXPECT_TRUE(dialog.IsWindowVisible());
}

TEST_F(Dialogs, OnlyWindowsUnderTheDialogAreOffered) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    EXPECT_FALSE(OfferToWindows(dialog, {host.Get(), WM_KEYDOWN, VK_TAB, 0, 0, {}}));
    EXPECT_FALSE(IsNearOwnWindow(host.Get()));
    EXPECT_FALSE(IsNearOwnWindow(nullptr));
    EXPECT_TRUE(IsNearOwnWindow(dialog.m_hWnd));
    EXPECT_TRUE(IsNearOwnWindow(dialog.GetDlgItem(107))) << "its parent is the dialog";
    const HWND boxEdit = FindWindowExA(PlainBox(dialog.m_hWnd), nullptr, "Edit", nullptr);
    EXPECT_FALSE(IsNearOwnWindow(boxEdit)) << "two steps below the dialog, no object between";
}

TEST_F(Dialogs, DestroyedWithTheParent) {
    ASSERT_TRUE(dialog.Open(host.Get()));
    ASSERT_TRUE(edit.SubclassDlgItem(101, dialog.m_hWnd));
    host.Destroy();
    EXPECT_EQ(dialog.m_hWnd, nullptr);
    EXPECT_EQ(dialog.ended, 1);
    EXPECT_EQ(edit.m_hWnd, nullptr);
}

TEST_F(Dialogs, ControlsAreOfVersion6AndTheHostsAreNot) {
    dialog.atInit = [&] {
        EXPECT_FALSE(IsVersion6(PlainBox(dialog.m_hWnd))) << "made while it sets itself up";
    };
    ASSERT_TRUE(dialog.Open(host.Get()));
    EXPECT_TRUE(IsVersion6(dialog.GetDlgItem(104)));
    EXPECT_FALSE(IsVersion6(PlainBox(host.Get())));
}

struct DataExchange : Dialogs {
    DataExchange() { Show(); }
};

TEST_F(DataExchange, OpeningShowsTheValuesAndBindsTheControls) {
    for (const auto& [id, text] : {std::pair{101, "text"}, {102, "7"}, {103, "12.5"}}) {
        EXPECT_EQ(dialog.GetDlgItemText(id), text);
    }
    EXPECT_TRUE(IsDlgButtonChecked(dialog.m_hWnd, 105));
    EXPECT_EQ(CWnd::FromHandlePermanent(dialog.GetDlgItem(104)), &dialog.box);
    dialog.date = {};
    EXPECT_TRUE(dialog.UpdateData(true));
    EXPECT_EQ(std::tie(dialog.date.wYear, dialog.date.wMonth, dialog.date.wDay), std::tuple(2026, 2, 28));
}

TEST_F(DataExchange, NumbersAreReadStrictly) {
    const struct {
        const char* text;
        int number;
        double amount;
    } rows[] = {
        // clang-format off
        {"5", 5, 5.0}, {"-5", -5, -5.0}, {" 5 ", 5, 5.0}, {"+5", 5, 5.0}, {"", 0, 0.0}, {"  ", 0, 0.0},
        {"5x", 0, 0.0}, {"1,5", 0, 0.0}, {"1.25", 0, 1.25}, {".5", 0, 0.5}, {"+-5", 0, 0.0}, {"nan", 0, 0.0},
        {"2147483647", 2147483647, 2147483647.0}, {"2147483648", 0, 2147483648.0},
        // clang-format on
    };
    for (const auto& row : rows) {
        SetWindowTextA(dialog.GetDlgItem(102), row.text);
        SetWindowTextA(dialog.GetDlgItem(103), row.text);
        dialog.UpdateData(true);
        EXPECT_EQ(dialog.number, row.number) << '"' << row.text << '"';
        EXPECT_EQ(dialog.amount, row.amount) << '"' << row.text << '"';
    }
    const std::pair<double, const char*> shown[] = {
        {0.0, "0"},       {100.0, "100"},       {0.1 + 0.2, "0.3"},
        {-1.25, "-1.25"}, {0.00012, "0.00012"}, {-0.000012, "-1.2e-05"},
        {1e15, "1e+15"},  {1e300, "1e+300"},    {INFINITY, "inf"}};
    for (const auto& [amount, text] : shown) {
        dialog.amount = amount;
        dialog.UpdateData(false);
        EXPECT_EQ(dialog.GetDlgItemText(103), text);
    }
}

TEST_F(DataExchange, ComboTextSelectsByPrefixElseStandsAsText) {
    for (const char* item : {"SHFE Shanghai", "SGX Singapore", "SG Other"}) {
        dialog.box.AddString(item);
    }
    const struct {
        const char *value, *text;
        int selected;
    } rows[] = {{"SG", "SGX Singapore", 1}, {"", "", -1}, {"XYZ", "XYZ", -1}, {"shfe", "SHFE Shanghai", 0}};
    for (const auto& row : rows) {
        dialog.choice = row.value;
        dialog.UpdateData(false);
        EXPECT_EQ(dialog.box.GetWindowText(), row.text) << row.value;
        EXPECT_EQ(dialog.box.GetCurSel(), row.selected) << row.value;
        dialog.UpdateData(true);
        EXPECT_EQ(dialog.choice, row.text) << row.value;
    }
}

TEST_F(DataExchange, ReportsNoEditsOfItsOwn) {
    dialog.textChanges = 0;
    dialog.text = "other";
    dialog.UpdateData(false);
    EXPECT_EQ(dialog.textChanges, 0);
    SetWindowTextA(dialog.GetDlgItem(101), "typed");
    EXPECT_EQ(dialog.textChanges, 1);
    dialog.SetDlgItemText(101, "typed");
    EXPECT_EQ(dialog.textChanges, 1) << "an equal text is not set again";
}

TEST_F(DataExchange, FailsWithoutTheWindow) {
    dialog.DestroyWindow();
    EXPECT_FALSE(dialog.UpdateData(true));
}

// The column behind the last one that `text` blackens when it is drawn into a place of this width.
int InkOf(const std::string& text, int width) {
    constexpr int kWidth = 200, kHeight = 30;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP sheet = CreateBitmap(kWidth, kHeight, 1, 1, nullptr);
    const HGDIOBJ former = SelectObject(dc, sheet);
    SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    PatBlt(dc, 0, 0, kWidth, kHeight, WHITENESS);
    DrawWhole(dc, text, {0, 0, width, kHeight}, DT_NOCLIP);
    int end = kWidth;
    const auto isWhite = [&](int x) {
        for (int y = 0; y < kHeight; ++y) {
            if (GetPixel(dc, x, y) == RGB(0, 0, 0)) {
                return false;
            }
        }
        return true;
    };
    while (end > 0 && isWhite(end - 1)) {
        --end;
    }
    SelectObject(dc, former);
    DeleteObject(sheet);
    DeleteDC(dc);
    return end;
}

TEST(DrawWhole, CutsNoText) {
    const int whole = InkOf("C2400/P2400", 200);
    ASSERT_GT(whole, 40);
    EXPECT_EQ(InkOf("C2400/P2400", whole + 1), whole);
    for (const int percent : {95, 80, 60}) {
        const int narrow = InkOf("C2400/P2400", whole * percent / 100);
        EXPECT_LE(narrow, whole * percent / 100);
        EXPECT_GE(narrow, whole * percent / 200);
    }
}

}  // namespace
