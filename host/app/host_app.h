#pragma once

#include "app/module_handle.h"
#include "services/position_list.h"
#include "services/service_set.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// A terminal around a book: all services, the module, its open dialogs and the message loop that serves them.
// Everything happens on the thread that made it. Tests, the desk and scenarios drive the module through this.
//
//     auto book = ReadBookFile(path);
//     HostApp host(*book);
//     host.Load("EmendoOrd.dll", 1033);
//     host.OpenOrderDialog(0, nullptr, window);
//     host.PumpUntilIdle();
class HostApp {
public:
    explicit HostApp(Book& book);
    ~HostApp();  // ends the module first
    HostApp(const HostApp&) = delete;
    HostApp& operator=(const HostApp&) = delete;

    // The start sequence: library, OnPluginLoad, OnPluginInit, CreatePluginApi. Throws std::runtime_error
    // with the reason; nothing stays loaded then. A language of 0 leaves the choice to the module. The host's
    // own words follow.
    void Load(const std::string& modulePath, WORD language);
    // The end sequence: dialogs closed, FreePluginApi, OnPluginFree, library freed.
    void Unload();
    // Ends the module and starts the same file in another language.
    void Reload(WORD language);
    bool Loaded() const { return m_module != nullptr; }
    // The module's interface; null when it is not loaded.
    IEmendix* Api() const { return m_api; }
    ModuleHandle* Module() const { return m_module.get(); }
    // The file that was loaded last.
    const std::string& ModulePath() const { return m_modulePath; }

    // Null when the module opened nothing. The record must live as long as the dialog.
    IEmendixOper* OpenOrderDialog(int mode, OrderRecord* record, HWND parent);
    IEmendixOper* OpenFillDialog(int mode, void* record, int recordKind, HWND parent);
    // The open dialogs' windows.
    std::vector<HWND> Dialogs();
    // Asks every open dialog to close and destroys what stays.
    void CloseDialogs();

    // Offers the message to the open dialogs. True when one of them handled it.
    bool Offer(MSG& message);
    // Offers and dispatches. False when it was WM_QUIT.
    bool Handle(MSG& message);
    // Handles what is queued, and what that queues. False when the program is to end.
    bool PumpUntilIdle();
    // Handles messages until the condition holds; false when it does not within the time.
    bool PumpUntil(const std::function<bool()>& condition, unsigned milliseconds);
    // The terminal's message loop, until WM_QUIT; its exit code.
    int Run();

    Book& TheBook() { return m_book; }
    ServiceSet& Services() { return m_services; }
    HostTradeList& Lists() { return m_lists; }

private:
    // A dialog as the module handed it out. Its object dies with its window, so the window is asked first.
    struct OpenDialog {
        IEmendixOper* oper;
        HWND window;
    };

    IEmendixOper* Remember(IEmendixOper* oper);
    void ForgetClosed();
    static LRESULT CALLBACK EventProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    EventPosting Posting();

    Book& m_book;
    HWND m_eventWindow;  // hears that posted events have been handled
    ServiceSet m_services;
    HostTradeList m_lists;
    std::unique_ptr<ModuleHandle> m_module;
    std::string m_modulePath;
    IEmendix* m_api = nullptr;
    std::vector<OpenDialog> m_dialogs;
    HWND m_lastParent = nullptr;
    bool m_quit = false;
};

// The folder of the running program, with a backslash at its end.
std::string ProgramFolder();
