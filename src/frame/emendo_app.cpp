#include "frame/emendo_app.h"

#include "fill/fill_dialog.h"
#include "frame/own_exceptions.h"
#include "framework/debug_line.h"
#include "framework/guard.h"
#include "order/order_dialog.h"

CEmendoOrdApp theApp;

namespace {

// A dialog that outlived the module would run code that is no longer there.
void CloseLeftOpen(CDialog* dialog) {
    if (dialog && GetWindowThreadProcessId(dialog->m_hWnd, nullptr) == GetCurrentThreadId()) {
        dialog->DestroyWindow();
    }
}

bool IsOnDialogThread() {
    const CDialog* dialogs[] = {g_pOrderDialog, g_pFillDialog};
    for (const CDialog* dialog : dialogs) {
        if (dialog && GetWindowThreadProcessId(dialog->m_hWnd, nullptr) == GetCurrentThreadId()) {
            return true;
        }
    }
    return false;
}

}  // namespace

BOOL CEmendoOrdApp::InitInstance() {
    CWinApp::InitInstance();
    g_debugSink = [](const char* line) { OutputDebugStringA(line); };
    return TRUE;
}

void CEmendoOrdApp::ExitInstance() {
    if (IsOnDialogThread()) {
        CallNote::PutBackAll();
    }
    CloseLeftOpen(g_pOrderDialog);
    CloseLeftOpen(g_pFillDialog);
    CWinApp::ExitInstance();
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        PrepareExceptions();
        return Guarded(
            "DllMain", [] { return theApp.InitInstance(); }, FALSE);
    }
    if (reason == DLL_PROCESS_DETACH && !processEnds) {
        Guarded("DllMain", [] { theApp.ExitInstance(); });
    }
    return TRUE;
}
