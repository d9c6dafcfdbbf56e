#include "controls/dialog_setup.h"

#include <algorithm>

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

void SetPlainItems(CxComboBox& combo, const std::vector<std::string>& lines) {
    combo.ReplaceLines(lines);
    const int width =
        WidestLine(combo.m_hWnd, nullptr, lines) + GetSystemMetrics(SM_CXVSCROLL) + kMarginOfPlainList;
    combo.SetDroppedWidth(std::max(width, static_cast<int>(combo.SendMessage(CB_GETDROPPEDWIDTH))));
}

void ApplyControlStates(HWND dialog, std::span<const ControlState> states) {
    for (const ControlState& state : states) {
        const HWND control = DialogItem(dialog, state.id);
        if (!control) {
            continue;
        }
        const bool shown = (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
        if (state.shown != Wanted::Keep && shown != (state.shown == Wanted::Yes)) {
            ShowWindow(control, shown ? SW_HIDE : SW_SHOWNA);
        }
        const bool enabled = IsWindowEnabled(control) != FALSE;
        if (state.enabled != Wanted::Keep && enabled != (state.enabled == Wanted::Yes)) {
            EnableWindow(control, !enabled);
        }
    }
}
