#pragma once

#include "app/host_app.h"
#include "frame/raw_host.h"
#include "support/window_kit.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

// The built module, loaded and driven as a host does it.
struct Module : testing::Test {
    static constexpr WORD kEnglish = 1033;
    static constexpr int kFillOperation = 0;
    static constexpr int kOrderOperation = 1;
    static constexpr int kPreTranslateMessage = 0;
    static constexpr int kGetSafeHwnd = 1;

    RawHost host;
    HostWindow desk;
    std::unique_ptr<ModuleHandle> loaded;
    void* api = nullptr;

    Module() { Load(); }

    // Unloads the module and loads it again.
    void Load(const std::string& file = "EmendoOrd.dll") {
        loaded.reset();
        ASSERT_EQ(GetModuleHandleA("EmendoOrd.dll"), nullptr);
        loaded = std::make_unique<ModuleHandle>(file);
    }
    // Starts it as a host does.
    void Start(RawHost& with) {
        loaded->onPluginLoad(kEnglish);
        loaded->onPluginInit(with.Manager());
        api = loaded->createPluginApi("1.0.0.1");
        ASSERT_NE(api, nullptr);
    }
    void* OpenOrder(int mode = 0, HWND parent = nullptr, void* record = nullptr) {
        return CallSlot<void*>(api, kOrderOperation, mode, record, parent ? parent : desk.Get());
    }
    void* OpenFill(HWND parent = nullptr, int mode = 0, void* record = nullptr, int kind = 1) {
        return CallSlot<void*>(api, kFillOperation, mode, record, kind, parent ? parent : desk.Get());
    }
    static HWND Window(void* dialog) { return CallSlot<HWND>(dialog, kGetSafeHwnd); }
};
