#include "controls/numeric_entry.h"

#include "controls/dialog_keys.h"
#include "controls/window_placement.h"
#include "entry/placement.h"
#include "tests/controls/control_dialog.h"
#include "tests/entry/numeric_context.h"

#include <gtest/gtest.h>

namespace {

enum Id { kQty = 100, kQtySpin, kWhole, kWholeSpin, kNumerator, kSecond, kFee, kConfirm, kCancel };

constexpr NumericRow kRows[] = {
    {.edit = kQty, .spin = kQtySpin},
    {.edit = kWhole, .spin = kWholeSpin, .numerator = kNumerator},
    {.edit = kSecond, .wheelSteps = false},
};

// A dialog with every kind of numeric edit, wired as the module's dialogs are.
struct Entry {
    NumericTable table{kRows, kFee, TextRuleScope::ChangedEdit};
    NumericContext context;
    NumericEntry numbers{table, context};
    ControlDialog dialog;
    int offersToDialog = 0;
    bool loaded = false;  // the dialog is told nothing

    explicit Entry(std::string_view commodity) : context(commodity) {
        const char* const classes[] = {"EDIT", UPDOWN_CLASSA, "EDIT",   UPDOWN_CLASSA, "EDIT",
                                       "EDIT", "EDIT",        "BUTTON", "BUTTON"};
        for (int id = kQty; id <= kCancel; ++id) {
            const int top = (id - kQty) * 15;
            dialog.Add(classes[id - kQty], 0, id, {5, top, 60, top + 14});
        }
        numbers.Attach(dialog.m_hWnd);
        dialog.translate = [this](MSG& message) {
            const KeyOutcome outcome = TranslateDialogKey(dialog.m_hWnd, message, kConfirm, kCancel, numbers);
            const bool offer = outcome == KeyOutcome::DialogKeyboard;
            offersToDialog += offer;
            return offer ? dialog.CDialog::PreTranslateMessage(&message) : outcome == KeyOutcome::Consumed;
        };
        dialog.onCommand = [this](WPARAM wParam, LPARAM) {
            if (loaded) {
                return;
            }
            if (HIWORD(wParam) == EN_UPDATE) {
                numbers.OnTextUpdate(LOWORD(wParam));
            } else if (HIWORD(wParam) == EN_SETFOCUS) {
                numbers.OnFocus(LOWORD(wParam));
            }
        };
        dialog.notify = [this](const NMHDR& header, LRESULT& result) {
            const bool spin = header.code == static_cast<UINT>(UDN_DELTAPOS);
            result = spin ? numbers.OnSpin(&header) : result;
            return spin;
        };
    }

    HWND Item(int id) const { return ::GetDlgItem(dialog.m_hWnd, id); }
    std::string Text(int id) const { return TextOf(Item(id)); }
    // Quantity, whole part and numerator.
    std::string Shown() const { return Text(kQty) + " " + Text(kWhole) + "+" + Text(kNumerator); }
    void Set(int id, const char* text) {
        ::SetWindowTextA(Item(id), text);
        ::SetFocus(Item(id));
        ::SendMessageA(Item(id), EM_SETSEL, 0, 0);
    }
    // How often a control notified the dialog.
    auto Told(int id, UINT code) const {
        return std::count(dialog.log.begin(), dialog.log.end(),
                          std::to_string(id) + ":" + std::to_string(code));
    }
    int Caret() const { return HIWORD(::SendMessageA(::GetFocus(), EM_GETSEL, 0, 0)); }
};

TEST(NumericEntry, ArrowsAndWheelStepTheFocusedEditAndNothingElseIsConsumed) {
    const WPARAM turnedUp = MAKEWPARAM(0, 120), turnedDown = MAKEWPARAM(0, -120);
    const struct {
        int focused;
        UINT message;
        WPARAM wParam;
        const char* shown;  // null when nothing is stepped
    } rows[] = {
        // clang-format off
        {kWhole, WM_KEYDOWN, VK_UP, " 10+0"}, {kNumerator, WM_KEYDOWN, VK_DOWN, " 9+3"},
        {kQty, WM_KEYDOWN, VK_UP, "1 9+3"}, {kQty, WM_MOUSEWHEEL, turnedUp, "2 9+3"},
        {kNumerator, WM_MOUSEWHEEL, turnedDown, "2 9+2"}, {kQty, WM_KEYDOWN, VK_LEFT, nullptr},
        {kQty, WM_KEYUP, VK_UP, nullptr}, {kFee, WM_KEYDOWN, VK_UP, nullptr},
        {kSecond, WM_MOUSEWHEEL, turnedUp, nullptr}, {kConfirm, WM_KEYDOWN, VK_UP, nullptr},
        // clang-format on
    };
    Entry entry("QTR");
    entry.Set(kNumerator, "3");
    entry.Set(kWhole, "9");
    std::string shown = entry.Shown();
    for (const auto& row : rows) {
        ::SetFocus(entry.Item(row.focused));
        MSG message{::GetFocus(), row.message, row.wParam, 0, 0, {}};
        EXPECT_EQ(entry.dialog.translate(message), row.shown != nullptr) << row.focused << " " << row.message;
        shown = row.shown ? row.shown : shown;
        EXPECT_EQ(entry.Shown(), shown) << row.focused << " " << row.message;
    }
    entry.Set(kQty, "9");
    entry.dialog.Keys({VK_UP});
    EXPECT_EQ(entry.Shown(), "10 9+2");
    EXPECT_EQ(entry.Caret(), 2) << "the caret stands at the end";
}

TEST(NumericEntry, SpinButtonFocusesAndStepsItsEdit) {
    Entry entry("QTR");
    entry.Set(kWhole, "1");
    entry.Set(kQty, "7");
    entry.dialog.Click(entry.Item(kWholeSpin), 5, 2);
    EXPECT_EQ(entry.Shown(), "7 1+1");
    EXPECT_EQ(::GetFocus(), entry.Item(kWhole));
    ::SetFocus(entry.Item(kNumerator));
    entry.dialog.Click(entry.Item(kWholeSpin), 5, 12);
    EXPECT_EQ(entry.Shown(), "7 1+0");
    EXPECT_EQ(::GetFocus(), entry.Item(kNumerator)) << "the numerator keeps the focus";
    entry.dialog.Click(entry.Item(kQtySpin), 5, 12);
    EXPECT_EQ(entry.Shown(), "6 1+0");
    EXPECT_EQ(::SendMessageA(entry.Item(kQtySpin), UDM_GETPOS32, 0, 0), 0) << "the spin itself stays";
}

TEST(NumericEntry, PutsTheLastGoodTextBack) {
    Entry entry("QTR");
    EXPECT_EQ(::SendMessageA(entry.Item(kNumerator), EM_GETLIMITTEXT, 0, 0), 64);
    entry.Set(kWhole, "");
    entry.dialog.Keys({'1', '2', 'A', '3', VK_OEM_PERIOD});
    EXPECT_EQ(entry.Text(kWhole), "123") << "neither a letter nor, in fractions, a point";
    EXPECT_EQ(entry.Caret(), 3);

    // What stands in an edit when it gets the keyboard comes back, whatever is typed or set elsewhere.
    Entry decimal("DEC");
    decimal.loaded = true;
    decimal.Set(kWhole, "97.5");
    decimal.Set(kQty, "4");
    decimal.loaded = false;
    ::SetWindowTextA(decimal.Item(kWhole), "98");
    decimal.dialog.log.clear();
    decimal.dialog.Keys({'X'});
    EXPECT_EQ(decimal.Text(kQty), "4");
    EXPECT_EQ(decimal.Told(kQty, EN_UPDATE), 2) << "for the bad text and the one put back";
    ::SetWindowTextA(decimal.Item(kWhole), "x");
    EXPECT_EQ(decimal.Text(kWhole), "98");
    {
        const auto ownTexts = decimal.numbers.OwnTexts();
        ::SetWindowTextA(decimal.Item(kQty), "-7");
    }
    decimal.dialog.Keys({'X'});
    EXPECT_EQ(decimal.Text(kQty), "-7") << "the dialog's own text";

    decimal.table.scope = TextRuleScope::FocusedEdit;
    ::SetWindowTextA(decimal.Item(kWhole), "by program");
    EXPECT_EQ(decimal.Text(kWhole), "by program") << "only the focused edit is judged";
    EXPECT_EQ(decimal.Text(kQty), "-7");
}

TEST(NumericEntry, AsksTheHostWhenTheEditHasFinished) {
    Entry entry("DEC");
    entry.Set(kWhole, "1");
    entry.dialog.log.clear();
    entry.dialog.Keys({'2'});
    EXPECT_EQ(entry.dialog.TakeLog(), (std::vector<std::string>{"102:768", "102:1024"}))
        << "changed, updated";
    entry.context.whileAsked = [&] { entry.dialog.DestroyWindow(); };
    ::SendMessageA(entry.Item(kWhole), WM_CHAR, '3', 1);
    EXPECT_EQ(entry.dialog.m_hWnd, nullptr);
}

TEST(DialogKeys, EnterIsTabAndClicksTheButtons) {
    Entry entry("DEC");
    ::SetFocus(entry.Item(kFee));
    entry.dialog.Keys({VK_RETURN});
    EXPECT_EQ(::GetFocus(), entry.Item(kConfirm));
    EXPECT_EQ(entry.Told(kConfirm, BN_CLICKED), 0);
    entry.dialog.Keys({VK_RETURN, VK_ESCAPE, VK_F1});
    EXPECT_EQ(entry.Told(kConfirm, BN_CLICKED), 1);
    EXPECT_EQ(::GetFocus(), entry.Item(kCancel)) << "the click is followed by Tab";
    EXPECT_EQ(entry.offersToDialog, 2) << "nothing else is the dialog's";
}

TEST(DialogKeys, TabMarksAnEditWholeAndNoKeyFollowsAClickThatMovesTheKeyboard) {
    Entry entry("DEC");
    entry.Set(kQty, "12");
    entry.Set(kFee, "7");
    ::SetFocus(entry.Item(kCancel));
    entry.dialog.Keys({VK_TAB, '3'});
    EXPECT_EQ(entry.Text(kQty), "3");
    entry.dialog.onCommand = [&](WPARAM wParam, LPARAM) {
        if (LOWORD(wParam) == kConfirm && HIWORD(wParam) == BN_CLICKED) {
            ::SetFocus(entry.Item(kFee));
        }
    };
    ::SetFocus(entry.Item(kConfirm));
    entry.dialog.Keys({VK_RETURN});
    EXPECT_EQ(::GetFocus(), entry.Item(kFee));
}

TEST(DialogKeys, AButtonMayTakeTheDialogAway) {
    Entry entry("DEC");
    entry.dialog.onCommand = [&](WPARAM wParam, LPARAM) {
        if (LOWORD(wParam) == kCancel) {
            entry.dialog.DestroyWindow();
        }
    };
    ::SetFocus(entry.Item(kCancel));
    entry.dialog.Keys({VK_RETURN});
    EXPECT_EQ(entry.dialog.m_hWnd, nullptr);
    EXPECT_EQ(entry.offersToDialog, 0);
}

TEST(Placement, MovesADialogOverItsHost) {
    HostWindow host({40, 50, 840, 650});
    ControlDialog dialog;
    ::SetWindowLongA(dialog.m_hWnd, GWL_HWNDPARENT, reinterpret_cast<LONG>(host.Get()));
    const RECT before = dialog.GetWindowRect();
    PlaceDialogOverHost(dialog.m_hWnd);
    const RECT after = dialog.GetWindowRect();
    const PixelSize size{static_cast<int>(before.right - before.left),
                         static_cast<int>(before.bottom - before.top)};
    const PixelPoint place = PlaceOverHost({40, 50, 840, 650}, size);
    EXPECT_EQ(std::tie(after.left, after.top), std::tuple(place.x, place.y));
    EXPECT_EQ(after.right - after.left, size.width);
}

}  // namespace
