// A terminal in its smallest form: loads the module, serves one account and one contract, opens both dialogs
// and prints what they send.
//
//     small_host [EmendoOrd.dll] [seconds after which it closes by itself]

#include "module.h"
#include "services.h"

#include <windows.h>

#include <cstdlib>

namespace {

// An interface of a dialog lives exactly as long as its window: look at the window before each use.
struct OpenDialog {
    IEmendixOper* oper;
    HWND window;

    explicit OpenDialog(IEmendixOper* opened)
        : oper(opened), window(opened ? opened->GetSafeHwnd() : nullptr) {}
    bool IsOpen() const { return IsWindow(window) != FALSE; }
};

// A terminal's message loop offers each message to the dialogs first: that makes Tab, Enter and the lists
// work.
void RunUntilClosed(const OpenDialog (&dialogs)[2], DWORD milliseconds) {
    const UINT_PTR timer = milliseconds ? SetTimer(nullptr, 0, milliseconds, nullptr) : 0;
    MSG message;
    while ((dialogs[0].IsOpen() || dialogs[1].IsOpen()) && GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (timer && message.message == WM_TIMER && message.wParam == timer && !message.hwnd) {
            break;
        }
        bool handled = false;
        for (const OpenDialog& dialog : dialogs) {
            handled = handled || (dialog.IsOpen() && dialog.oper->PreTranslateMessage(&message));
        }
        if (!handled) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
}

}  // namespace

int main(int count, char** arguments) {
    const char* const path = count > 1 ? arguments[1] : "EmendoOrd.dll";
    const DWORD milliseconds = count > 2 ? static_cast<DWORD>(std::atoi(arguments[2])) * 1000 : 0;
    Module module;
    if (!module.Load(path)) {
        std::printf("%s cannot be loaded, error %u\n", path, static_cast<unsigned>(GetLastError()));
        return 1;
    }
    SmallBook book;
    SmallTradeApi tradeApi(book);
    SmallTradeService trade(tradeApi);
    SmallSysConfig config(book);
    SmallTradeList list;
    SmallPluginManager manager(trade, list, config);

    // Start: the language (0: the system's), the services, the interface of the version that this terminal
    // knows.
    module.onPluginLoad(0);
    module.onPluginInit(&manager);
    IEmendix* const emendo = module.createPluginApi("1.0.0.1");
    if (!emendo) {
        std::printf("the module is of another version\n");
        return 1;
    }
    const HWND owner = CreateWindowExA(0, "Static", "Terminal", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 400,
                                       120, nullptr, nullptr, nullptr, nullptr);
    const OpenDialog dialogs[2] = {OpenDialog(emendo->OpenOrderDialog(0, nullptr, owner)),
                                   OpenDialog(emendo->OpenFillDialog(0, nullptr, -1, owner))};
    for (const OpenDialog& dialog : dialogs) {
        char title[100] = "no dialog";
        GetWindowTextA(dialog.window, title, sizeof(title));
        std::printf("opened: %s\n", title);
    }
    RunUntilClosed(dialogs, milliseconds);

    // End: the dialogs go with their owner, then the interface, the services and the library.
    DestroyWindow(owner);
    module.freePluginApi(emendo);
    module.onPluginFree();
    FreeLibrary(module.dll);
    const bool opened = dialogs[0].window && dialogs[1].window;
    return opened && !tradeApi.listener ? 0 : 1;
}
