#pragma once

#include <windows.h>

#include <commctrl.h>

// Draws the label of a chosen-position box in the hot-light colour, beside the box that the system has
// drawn. For NM_CUSTOMDRAW; the result is the notification's.
LRESULT DrawChosenPositionLabel(const NMCUSTOMDRAW& draw);
