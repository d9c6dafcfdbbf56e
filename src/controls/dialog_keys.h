#pragma once

#include "controls/numeric_entry.h"

// The keyboard of the dialogs: Enter is Tab; on the two buttons it is a click, and Tab only where the click
// leaves the keyboard.
enum class KeyOutcome {
    Pass,           // not a key of the dialogs
    Consumed,       // handled; the dialog may be gone
    DialogKeyboard  // to be handed to the dialog's own keyboard handling
};
// Runs first in a dialog's PreTranslateMessage. Enter is turned into Tab in `message`.
KeyOutcome TranslateDialogKey(HWND dialog, MSG& message, int confirmId, int cancelId, NumericEntry& numbers);
