#pragma once

#include <windows.h>

// Moves the dialog to its place over the host's top-most window, size unchanged.
void PlaceDialogOverHost(HWND dialog);
// The end of a window's chain of parents and owners.
HWND TopMostAncestor(HWND window);
