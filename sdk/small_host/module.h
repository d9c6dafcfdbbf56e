#pragma once

#include "trade/host_interfaces.h"
#include "trade/plugin_interface.h"

#include <windows.h>

// The module's file and its five exports, found by their plain names. All are __cdecl, whatever the
// terminal's default is.
struct Module {
    HMODULE dll = nullptr;
    void(__cdecl* onPluginLoad)(WORD language) = nullptr;
    void(__cdecl* onPluginInit)(IPluginManager* manager) = nullptr;
    IEmendix*(__cdecl* createPluginApi)(const char* version) = nullptr;
    void(__cdecl* freePluginApi)(IEmendix* api) = nullptr;
    void(__cdecl* onPluginFree)() = nullptr;

    // False when the file or one of its exports is missing: GetLastError() says which.
    bool Load(const char* path) {
        dll = LoadLibraryA(path);
        return dll && Resolve("OnPluginLoad", onPluginLoad) && Resolve("OnPluginInit", onPluginInit) &&
               Resolve("CreatePluginApi", createPluginApi) && Resolve("FreePluginApi", freePluginApi) &&
               Resolve("OnPluginFree", onPluginFree);
    }

private:
    template <typename Function>
    bool Resolve(const char* name, Function& function) {
        function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(dll, name)));
        return function != nullptr;
    }
};
