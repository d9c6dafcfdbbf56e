#pragma once

#include "fill/fill_book.h"
#include "frame/module_fixture.h"
#include "trade/plugin_interface.h"

#include <vector>

// One of the ways in which a dialog is opened.
struct Way {
    const char* what;
    bool fill;
    int mode;
    bool onRecord;
};
inline constexpr Way kWays[] = {
    {"input", false, 0, false}, {"carry", false, 1, false}, {"fill", true, 0, true}};

inline BOOL CALLBACK CollectModuleWindow(HWND window, LPARAM found) {
    char name[40] = "";
    GetClassNameA(window, name, sizeof name);
    const std::string text = name;
    if (text == "#32770" || text.starts_with("EmendoWindow")) {
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    }
    return TRUE;
}

// The module over a small book, its dialogs opened in every way.
struct Openings : Module {
    FillBook book;
    FillRecord fill = book.FillOf("EXA CM 1509");
    std::unique_ptr<HostWindow> parent;

    Openings() {
        host.service.api = &book;
        Start(host);
    }
    ~Openings() override { book.whileAsked = nullptr; }

    void* Open(const Way& way) {
        void* record = !way.onRecord ? nullptr : way.fill ? static_cast<void*>(&fill) : &book.order;
        return way.fill ? OpenFill(parent->Get(), way.mode, record, kRecordKindFill)
                        : OpenOrder(way.mode, parent->Get(), record);
    }
    static std::vector<HWND> ModuleWindows(const char* className = nullptr) {
        std::vector<HWND> all;
        EnumThreadWindows(GetCurrentThreadId(), &CollectModuleWindow, reinterpret_cast<LPARAM>(&all));
        std::erase_if(all, [&](HWND window) {
            char name[40] = "";
            GetClassNameA(window, name, sizeof name);
            return className && std::string(name) != className;
        });
        return all;
    }
    static std::vector<HWND> Dialogs() { return ModuleWindows("#32770"); }
    static void CloseAll() {
        for (const HWND dialog : Dialogs()) {
            DestroyWindow(dialog);
        }
    }
    void ExpectNothingLeft() {
        parent.reset();
        HostLoop().PumpUntilIdle();
        EXPECT_TRUE(ModuleWindows().empty());
        EXPECT_TRUE(book.listeners.empty());
    }
};
