#pragma once

#include "controls/x_combo_box.h"
#include "entry/combo_settings.h"
#include "entry/control_state.h"

#include <span>
#include <string>
#include <vector>

void SetUpCombo(CxComboBox& combo, const ComboSettings& settings);

// Replaces the items by these lines as they are, names not aligned; what the box shows stays. The open list
// becomes as wide as its widest line in the default font of a device context, with room for a scroll bar.
void SetPlainItems(CxComboBox& combo, const std::vector<std::string>& lines);

// Shows, hides, enables and disables the dialog's controls.
void ApplyControlStates(HWND dialog, std::span<const ControlState> states);
