// Shows the four dialog templates of one language (argument: 2052, 1028 or 1033) beside each other, as they are
// in the resources, for a look or a picture: scripts/wine.sh --screenshot FILE dialog_gallery.exe 1028
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>

#include "res/language.h"
#include "res/resource_ids.h"
#include "res/resource_loader.h"

namespace {

struct Place {
    unsigned dialog;
    int x, y;
};

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM, LPARAM) {
    if (message != WM_CLOSE) return FALSE;
    DestroyWindow(dialog);
    PostQuitMessage(0);
    return TRUE;
}

}  // namespace

int main(int argc, char** argv) {
    g_wResLanguage = static_cast<std::uint16_t>(argc > 1 ? std::atoi(argv[1]) : kEnglish);
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_DATE_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&controls);
    // The exercise dialog stands last: what it hides may leave the screen.
    const Place places[] = {{IDD_ORDER, 0, 0}, {IDD_CARRY, 500, 0}, {IDD_FILL, 0, 540}, {IDD_EXERCISE, 0, 870}};
    for (const Place& place : places) {
        const auto shown = static_cast<LPCDLGTEMPLATEW>(LockResource(LoadResDialog(place.dialog)));
        const HWND dialog = CreateDialogIndirectParamW(GetOwnModuleHandle(), shown, nullptr, DialogProc, 0);
        if (!dialog) return 1;
        SetWindowPos(dialog, nullptr, place.x, place.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
    }
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
