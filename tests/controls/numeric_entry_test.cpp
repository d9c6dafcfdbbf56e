#include "controls/numeric_entry.h"

#include "controls/dialog_keys.h"
#include "controls/window_placement.h"
#include "tests/controls/control_dialog.h"
#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

namespace {

enum Id {
    kQty = 100,
    kQtySpin,
    kWhole,
    kWholeSpin,
    kNumerator,
    kSecond,
    kSecondSpin,
    kSecondNumerator,
    kFee
};
constexpr int kConfirm = 200;
constexpr int kCancel = 201;

constexpr NumericRow kRows[] = {
    {.edit = kQty, .spin = kQtySpin},
    {.edit = kWhole, .spin = kWholeSpin, .numerator = kNumerator},
    {.edit = kSecond, .spin = kSecondSpin, .numerator = kSecondNumerator, .wheelSteps = false},
};

struct Context final : INumericContext {
    SampleContracts book;
    CommodityKey key{};

    explicit Context(std::uint32_t denominator) {
        book.AddExchange("EXA", "A");
        CommodityRecord& commodity = book.AddCommodity('F', "CM", "");
        commodity.tickNumerator = 1;
        commodity.tickDenominator = denominator;
        key = CommodityOf(commodity);
    }
    CommodityKey Commodity() const override { return key; }
    TradeData Trade() const override { return TradeData(const_cast<FakeTradeApi*>(&book.api)); }
    std::string FormatPrice(double price) const override { return std::to_string(static_cast<int>(price)); }
};

// A dialog with every kind of numeric edit, wired as the module's dialogs are.
struct Entry {
    NumericTable table{kRows, kFee, TextRuleScope::ChangedEdit};
    Context context;
    NumericEntry numbers{table, context};
    ControlDialog dialog;
    int tabs = 0;

    explicit Entry(std::uint32_t denominator, TextRuleScope scope = TextRuleScope::ChangedEdit)
        : context(denominator) {
        table.scope = scope;
        int top = 0;
        for (int id = kQty; id <= kFee; ++id, top += 15) {
            const bool spin = id == kQtySpin || id == kWholeSpin || id == kSecondSpin;
            dialog.Add(spin ? UPDOWN_CLASSA : "EDIT", spin ? 0 : ES_AUTOHSCROLL, id, {5, top, 60, top + 14});
        }
        dialog.Add("BUTTON", 0, kConfirm, {100, 0, 150, 20});
        dialog.Add("BUTTON", 0, kCancel, {100, 30, 150, 50});
        numbers.Attach(dialog.m_hWnd);
        dialog.translate = [this](MSG& message) {
            const KeyOutcome outcome = TranslateDialogKey(dialog.m_hWnd, message, kConfirm, kCancel, numbers);
            if (outcome == KeyOutcome::DialogKeyboard) {
                EXPECT_EQ(message.wParam, static_cast<WPARAM>(VK_TAB));
                ++tabs;
                return dialog.CDialog::PreTranslateMessage(&message) != FALSE;
            }
            return outcome == KeyOutcome::Consumed;
        };
        dialog.onCommand = [this](WPARAM wParam, LPARAM) {
            if (HIWORD(wParam) == EN_UPDATE) {
                numbers.OnTextUpdate(LOWORD(wParam));
            }
        };
        dialog.notify = [this](const NMHDR& header, LRESULT& result) {
            if (header.code != static_cast<UINT>(UDN_DELTAPOS)) {
                return false;
            }
            result = numbers.OnSpin(&header);
            return true;
        };
    }

    HWND Item(int id) const { return dialog.GetDlgItem(id); }
    std::string Text(int id) const { return TextOf(Item(id)); }
    std::string Price() const { return Text(kWhole) + "+" + Text(kNumerator); }
    void Set(int id, const char* text) {
        ::SetWindowTextA(Item(id), text);
        ::SetFocus(Item(id));
        ::SendMessageA(Item(id), EM_SETSEL, 0, 0);
    }
    int Caret(int id) const { return HIWORD(::SendMessageA(Item(id), EM_GETSEL, 0, 0)); }
};

TEST(NumericEntry, ArrowKeysStepTheFocusedEdit) {
    Entry entry(4);
    entry.Set(kNumerator, "3");
    entry.Set(kWhole, "9");
    entry.dialog.Keys({VK_UP});
    EXPECT_EQ(entry.Price(), "10+0");
    EXPECT_EQ(entry.Caret(kWhole), 2) << "the caret stands at the end";
    ::SetFocus(entry.Item(kNumerator));
    entry.dialog.Keys({VK_DOWN});
    EXPECT_EQ(entry.Price(), "9+3");
    entry.Set(kQty, "");
    entry.dialog.Keys({VK_UP, VK_UP, VK_DOWN});
    EXPECT_EQ(entry.Text(kQty), "1");
}

TEST(NumericEntry, WheelStepsByItsDirection) {
    Entry entry(1);
    entry.Set(kWhole, "9");
    for (const int delta : {120, -120, -120}) {
        ::PostMessageA(::GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
    }
    entry.dialog.Pump();
    EXPECT_EQ(entry.Text(kWhole), "8");
}

TEST(NumericEntry, ConsumesAMessageOnlyForAStep) {
    Entry entry(1);
    const auto consumed = [&](int id, UINT message, WPARAM wParam) {
        ::SetFocus(entry.Item(id));
        const MSG step{entry.Item(id), message, wParam, 0, 0, {}};
        return entry.numbers.OnMessage(step);
    };
    EXPECT_TRUE(consumed(kQty, WM_KEYDOWN, VK_UP));
    EXPECT_TRUE(consumed(kQty, WM_MOUSEWHEEL, MAKEWPARAM(0, 120)));
    EXPECT_FALSE(consumed(kQty, WM_KEYDOWN, VK_LEFT));
    EXPECT_FALSE(consumed(kQty, WM_KEYUP, VK_UP));
    EXPECT_FALSE(consumed(kFee, WM_KEYDOWN, VK_UP));
    EXPECT_FALSE(consumed(kSecond, WM_MOUSEWHEEL, MAKEWPARAM(0, 120)));
    EXPECT_FALSE(consumed(kConfirm, WM_KEYDOWN, VK_UP));
}

TEST(NumericEntry, SpinButtonFocusesAndStepsItsEdit) {
    Entry entry(4);
    entry.Set(kWhole, "1");
    entry.Set(kQty, "7");
    entry.dialog.Click(entry.Item(kWholeSpin), 5, 2);
    EXPECT_EQ(entry.Price(), "1+1");
    EXPECT_EQ(::GetFocus(), entry.Item(kWhole));
    ::SetFocus(entry.Item(kNumerator));
    entry.dialog.Click(entry.Item(kWholeSpin), 5, 12);
    EXPECT_EQ(entry.Price(), "1+0");
    EXPECT_EQ(::GetFocus(), entry.Item(kNumerator)) << "the numerator keeps the focus";
    entry.dialog.Click(entry.Item(kQtySpin), 5, 12);
    EXPECT_EQ(entry.Text(kQty), "6");
    EXPECT_EQ(::SendMessageA(entry.Item(kQtySpin), UDM_GETPOS32, 0, 0), 0) << "the spin itself stays";
}

TEST(NumericEntry, PutsTheLastGoodTextBack) {
    Entry entry(4);
    EXPECT_EQ(::SendMessageA(entry.Item(kNumerator), EM_GETLIMITTEXT, 0, 0), 64);
    entry.Set(kWhole, "");
    entry.dialog.Keys({'1', '2', 'A', '3'});
    EXPECT_EQ(entry.Text(kWhole), "123");
    EXPECT_EQ(entry.Caret(kWhole), 3);
    entry.dialog.Keys({VK_OEM_PERIOD});
    EXPECT_EQ(entry.Text(kWhole), "123") << "a price in fractions has no point";
    entry.Set(kQty, "5");
    entry.Set(kWhole, "oops");
    EXPECT_EQ(entry.Text(kWhole), "5") << "one last good text serves all edits";

    // A text that is good in one edit and bad in the other where it is put back must not go round in circles.
    Entry decimal(1);
    decimal.Set(kWhole, "1.5");
    decimal.Set(kQty, "x");
    EXPECT_EQ(decimal.Text(kQty), "1.5");

    Entry focused(1, TextRuleScope::FocusedEdit);
    ::SetFocus(focused.Item(kQty));
    ::SetWindowTextA(focused.Item(kWhole), "by program");
    EXPECT_EQ(focused.Text(kWhole), "by program") << "only the focused edit is judged";
}

TEST(DialogKeys, EnterIsTabAndClicksTheButtons) {
    Entry entry(1);
    const std::string clicked = std::to_string(kConfirm) + ":0";
    ::SetFocus(entry.Item(kFee));
    entry.dialog.Keys({VK_RETURN});
    EXPECT_EQ(::GetFocus(), entry.Item(kConfirm));
    EXPECT_EQ(std::count(entry.dialog.log.begin(), entry.dialog.log.end(), clicked), 0);
    entry.dialog.Keys({VK_RETURN, VK_ESCAPE, VK_F1});
    EXPECT_EQ(std::count(entry.dialog.log.begin(), entry.dialog.log.end(), clicked), 1);
    EXPECT_EQ(::GetFocus(), entry.Item(kCancel)) << "the click is followed by Tab";
    EXPECT_EQ(entry.tabs, 2) << "nothing else is the dialog's";
}

TEST(DialogKeys, AButtonMayTakeTheDialogAway) {
    Entry entry(1);
    entry.dialog.onCommand = [&](WPARAM wParam, LPARAM) {
        if (LOWORD(wParam) == kCancel) {
            entry.dialog.DestroyWindow();
        }
    };
    ::SetFocus(entry.Item(kCancel));
    entry.dialog.Keys({VK_RETURN});
    EXPECT_EQ(entry.dialog.m_hWnd, nullptr);
    EXPECT_EQ(entry.tabs, 0);
}

TEST(Placement, MovesADialogOverItsHost) {
    HostWindow host({40, 50, 840, 650});
    ControlDialog dialog;
    ::SetWindowLongA(dialog.m_hWnd, GWL_HWNDPARENT, reinterpret_cast<LONG>(host.Get()));
    EXPECT_EQ(TopMostAncestor(dialog.Add("EDIT", 0, 9)), host.Get());
    const RECT before = dialog.GetWindowRect();
    PlaceDialogOverHost(dialog.m_hWnd);
    const RECT after = dialog.GetWindowRect();
    EXPECT_EQ(after.left, 40 + (800 - (before.right - before.left)) / 2);
    EXPECT_EQ(after.top, 50 + static_cast<LONG>(600 * 0.382 - (before.bottom - before.top) / 2));
    EXPECT_EQ(after.right - after.left, before.right - before.left);
}

}  // namespace
