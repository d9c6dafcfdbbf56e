// A hundred lives of each control leave no window, no GDI object and no growing heap behind.

#include "controls/sele_code_wnd.h"
#include "controls/x_combo_box.h"
#include "support/leak_count.h"
#include "tests/controls/control_dialog.h"
#include "tests/controls/sample_contracts.h"

#include <gtest/gtest.h>

namespace {

SampleContracts g_book;

TradeData BookTrade() {
    return TradeData(&g_book);
}

void LiveAsComboBox() {
    ControlDialog dialog;
    CxComboBox combo;
    dialog.Add("COMBOBOX", CBS_DROPDOWN, 5);
    combo.SubclassDlgItem(5, dialog.m_hWnd);
    combo.SetItems({"SHFE Shanghai", "SGX Singapore"}, true);
    ::SetFocus(combo.EditWindow());
    dialog.Keys({'S'});
    dialog.Click(combo.EditWindow(), 3, 3);  // starts the click timer
    dialog.DestroyWindow();
}

void LiveAsPopup() {
    ControlDialog dialog;
    CSeleCodeWnd popup(&BookTrade);
    popup.CreatePopup(dialog.m_hWnd);
    popup.Refresh("");
    popup.Toggle();
    popup.Refresh("");
    dialog.Pump();
    popup.Toggle();
    dialog.DestroyWindow();
}

void LiveAsPlainControls() {
    ControlDialog dialog;
    dialog.Add("COMBOBOX", CBS_DROPDOWN, 5);
    dialog.Add(WC_TREEVIEWA, 0, 6);
    dialog.Add(WC_LISTVIEWA, LVS_REPORT | LVS_OWNERDATA, 7);
    dialog.Pump();
}

TEST(Leaks, ControlsLeaveNothingBehind) {
    g_book.signEntries.push_back(&g_book);
    g_book.AddUsualBook();
    const long long plain = KeptByEach(&LiveAsPlainControls);
    EXPECT_LE(KeptByEach(&LiveAsComboBox), plain);
    EXPECT_LE(KeptByEach(&LiveAsPopup), plain);
}

}  // namespace
