// Shows dialog templates as they are in the resources, beside each other, for a look or a picture:
//   scripts/wine.sh --screenshot FILE build/windows/bin/dialog_gallery.exe 1028 278 279
// Arguments: the language (2052, 1028, 1033), then dialog ids.
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>

#include "res/language.h"
#include "res/resource_loader.h"

namespace {

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
    int x = 0;
    for (int i = 2; i < argc; ++i) {
        const auto shown = static_cast<LPCDLGTEMPLATEW>(LockResource(LoadResDialog(std::atoi(argv[i]))));
        const HWND dialog = CreateDialogIndirectParamW(GetOwnModuleHandle(), shown, nullptr, DialogProc, 0);
        if (!dialog) return 1;
        SetWindowPos(dialog, nullptr, x, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_SHOWWINDOW);
        RECT place;
        GetWindowRect(dialog, &place);
        x = place.right + 20;
    }
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
