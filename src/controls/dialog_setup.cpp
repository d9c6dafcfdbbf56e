#include "controls/dialog_setup.h"

namespace {

constexpr int kMarginOfPlainList = 4;

}  // namespace

void SetUpCombo(CxComboBox& combo, const ComboSettings& settings) {
    combo.SetShowFullText(settings.showFullText);
    combo.SetNoContextMenu(settings.noContextMenu);
    combo.SetListOnly(settings.listOnly);
    if (settings.wholeItemIsCode) {
        combo.SetSeparator(0);
    }
    if (settings.minVisibleItems != 0) {
        combo.SetMinVisibleItems(settings.minVisibleItems);
    }
}

void SetPlainItems(CxComboBox& combo, std::vector<std::string> lines) {
    combo.SetSplit(false);
    combo.SetItems(std::move(lines), false);
    combo.SetSplit(true);
    combo.SetDroppedWidth(combo.WidestItem(nullptr) + GetSystemMetrics(SM_CXVSCROLL) + kMarginOfPlainList);
}

void ApplyControlStates(HWND dialog, std::span<const ControlState> states) {
    for (const ControlState& state : states) {
        const HWND control = GetDlgItem(dialog, state.id);
        if (!control) {
            continue;
        }
        if (state.shown != Wanted::Keep) {
            ShowWindow(control, state.shown == Wanted::Yes ? SW_SHOW : SW_HIDE);
        }
        if (state.enabled != Wanted::Keep) {
            EnableWindow(control, state.enabled == Wanted::Yes);
        }
    }
}
