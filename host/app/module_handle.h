#pragma once

#include "trade/host_interfaces.h"
#include "trade/plugin_interface.h"

#include <string>

#include <windows.h>

// The module's library with its five exports, loaded as a terminal loads it. Freed with the object; who
// called OnPluginLoad is to have called OnPluginFree by then.
class ModuleHandle {
public:
    // Throws std::runtime_error with the reason: the file, or the export that is missing.
    explicit ModuleHandle(const std::string& path);
    ~ModuleHandle();
    ModuleHandle(const ModuleHandle&) = delete;
    ModuleHandle& operator=(const ModuleHandle&) = delete;

    HMODULE Library() const { return m_library; }

    void(__cdecl* onPluginLoad)(WORD language) = nullptr;
    void(__cdecl* onPluginInit)(IPluginManager* manager) = nullptr;
    IEmendix*(__cdecl* createPluginApi)(const char* version) = nullptr;
    void(__cdecl* freePluginApi)(IEmendix* api) = nullptr;
    void(__cdecl* onPluginFree)() = nullptr;

private:
    template <typename Function>
    void Resolve(Function& function, const char* name);

    HMODULE m_library;
    std::string m_path;
};
