#include "framework/data_exchange.h"

#include "framework/controls.h"
#include "framework/dialog.h"
#include "tests/framework/test_templates.h"

#include <gtest/gtest.h>

namespace {

class ExchangeDialog : public CDialog {
public:
    std::string text = "text";
    int number = 7;
    double amount = 12.5;
    std::string choice;
    int check = 1;
    SYSTEMTIME date{2026, 2, 0, 28, 13, 14, 15, 0};
    CComboBox box;
    int editChanges = 0;

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, 104, box);
        DDX_Text(exchange, 101, text);
        DDX_Text(exchange, 102, number);
        DDX_Text(exchange, 103, amount);
        DDX_CBString(exchange, 104, choice);
        DDX_Check(exchange, 105, check);
        DDX_DateTimeCtrl(exchange, 106, date);
        DDX_Text(exchange, 999, absent);
        DDX_Control(exchange, 999, absentControl);
    }
    void OnEdit() { ++editChanges; }
    DECLARE_MESSAGE_MAP()

private:
    std::string absent = "left alone";
    CComboBox absentControl;
};

BEGIN_MESSAGE_MAP(ExchangeDialog, CDialog)
ON_EN_CHANGE(101, &ExchangeDialog::OnEdit)
END_MESSAGE_MAP()

struct DataExchange : testing::Test {
    DataExchange() { EXPECT_TRUE(dialog.CreateIndirect(Template(500), nullptr)); }
    ExchangeDialog dialog;
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
        {"5x", 0, 0.0}, {"1,5", 0, 0.0}, {"1.25", 0, 1.25}, {".5", 0, 0.5}, {"+-5", 0, 0.0},
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
        {0.0, "0"}, {100.0, "100"}, {0.1 + 0.2, "0.3"}, {-1.25, "-1.25"}};
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
    dialog.editChanges = 0;
    dialog.text = "other";
    dialog.UpdateData(false);
    EXPECT_EQ(dialog.editChanges, 0);
    SetWindowTextA(dialog.GetDlgItem(101), "typed");
    EXPECT_EQ(dialog.editChanges, 1);
    dialog.SetDlgItemText(101, "typed");
    EXPECT_EQ(dialog.editChanges, 1) << "an equal text is not set again";
}

TEST_F(DataExchange, FailsWithoutTheWindow) {
    dialog.DestroyWindow();
    EXPECT_FALSE(dialog.UpdateData(true));
}

}  // namespace
