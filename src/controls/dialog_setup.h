#pragma once

#include "controls/combo_settings.h"
#include "controls/control_state.h"
#include "controls/x_combo_box.h"

#include <span>
#include <string>
#include <vector>

void SetUpCombo(CxComboBox& combo, const ComboSettings& settings);

// Replaces the items by these lines as they are, names not aligned; what the box shows stays. The open list
// becomes as wide as its widest line in the default font of a device context, with room for a scroll bar.
void SetPlainItems(CxComboBox& combo, const std::vector<std::string>& lines);

// Selects the item of exactly this code; without one nothing is selected and the text itself is shown. A
// search by prefix, as the list does it, would take account 100010 for account 10001.
void SelectByCode(CxComboBox& combo, const std::string& code);

// Shows, hides, enables and disables the dialog's controls.
void ApplyControlStates(HWND dialog, std::span<const ControlState> states);
