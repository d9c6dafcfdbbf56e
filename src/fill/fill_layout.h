#pragma once

#include "entry/control_state.h"
#include "fill/fill_form.h"
#include "trade/host_records.h"

#include <cstdint>
#include <span>
#include <vector>

// The three shapes of the fill dialog. The template is the full one.
enum class FillLayout {
    Full,         // open contract row and second price row: a carry
    Combination,  // the second price row in the place of the open contract row, the window one row shorter
    Single,       // neither row, the window two rows shorter
};

// True for a control that is shut off when the dialog opens in this mode.
bool StartsDisabled(FillMode mode, bool forOrder, int controlId);

// What decides which controls are shown and enabled.
struct FillView {
    FillMode mode = FillMode::FullInput;
    char source = 0;  // 0: none
    bool carry = false;
    bool combination = false;
    std::int32_t denominator = 1;  // of both prices

    bool Fractional() const { return denominator >= kFractionDenominator; }
    FillLayout Layout() const;
};

// `commodity` is the chosen one, null when it is not known; its denominator then stays the dialog's.
FillView ViewOf(FillMode mode, char source, const CommodityRecord* commodity, std::int32_t denominator);

// The controls whose state follows the view, and their states.
std::vector<ControlState> RefreshStates(const FillView& view);

// The controls that move when the layout changes, and by how many rows; negative is upwards. The window grows
// by as much as its bottom controls move.
std::span<const int> SecondPriceControls();
std::span<const int> BottomControls();
struct FillMove {
    int secondPriceRows;
    int bottomRows;
};
FillMove MoveBetween(FillLayout from, FillLayout to);
