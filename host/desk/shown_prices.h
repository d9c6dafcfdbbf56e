#pragma once

#include "review/second_look.h"

#include <windows.h>

// The prices that can be entered in the dialog from which a request comes, while it is being sent; none when
// no open dialog sent it, or for the fills behind an order, whose prices came with the order.
std::vector<ShownPrice> PricesShownFor(const JournalEntry& entry, const std::vector<HWND>& dialogs);
