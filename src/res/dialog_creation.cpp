#include "res/dialog_creation.h"

#include "framework/debug_line.h"
#include "res/language.h"
#include "res/resource_loader.h"

namespace {

constexpr unsigned kDialogInitType = 240;

// The code page in which the texts of a language are kept in an initialisation resource.
UINT AnsiCodePage(WORD language) {
    DWORD codePage = CP_ACP;
    GetLocaleInfoA(MAKELCID(language, SORT_DEFAULT), LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                   reinterpret_cast<char*>(&codePage), sizeof(codePage));
    return codePage;
}

}  // namespace

bool CreateFromResources(CDialog& dialog, unsigned id, HWND parent) {
    const HGLOBAL layout = LoadResDialog(id);
    if (!layout) {
        TellDebugger("no dialog template %u in language %u", id, g_wResLanguage);
        return false;
    }
    const HMODULE module = GetOwnModuleHandle();
    const HRSRC init =
        FindResourceExA(module, MAKEINTRESOURCEA(kDialogInitType), MAKEINTRESOURCEA(id), g_wResLanguage);
    const HGLOBAL loadedInit = init ? LoadResource(module, init) : nullptr;
    return dialog.CreateIndirect(static_cast<const DLGTEMPLATE*>(LockResource(layout)), parent,
                                 loadedInit ? LockResource(loadedInit) : nullptr,
                                 init ? SizeofResource(module, init) : 0, AnsiCodePage(g_wResLanguage));
}
