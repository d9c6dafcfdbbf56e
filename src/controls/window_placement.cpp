#include "controls/window_placement.h"

#include "entry/placement.h"

HWND TopMostAncestor(HWND window) {
    while (HWND parent = GetParent(window)) {
        window = parent;
    }
    return window;
}

void PlaceDialogOverHost(HWND dialog) {
    RECT host{};
    RECT own{};
    if (!GetWindowRect(TopMostAncestor(dialog), &host) || !GetWindowRect(dialog, &own)) {
        return;
    }
    const PixelPoint place =
        PlaceOverHost({static_cast<int>(host.left), static_cast<int>(host.top), static_cast<int>(host.right),
                       static_cast<int>(host.bottom)},
                      {static_cast<int>(own.right - own.left), static_cast<int>(own.bottom - own.top)});
    SetWindowPos(dialog, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
