#include "app/module_handle.h"

#include <stdexcept>

ModuleHandle::ModuleHandle(const std::string& path) : m_library(LoadLibraryA(path.c_str())), m_path(path) {
    if (!m_library) {
        throw std::runtime_error(path + " cannot be loaded (error " + std::to_string(GetLastError()) + ")");
    }
    try {
        Resolve(onPluginLoad, "OnPluginLoad");
        Resolve(onPluginInit, "OnPluginInit");
        Resolve(createPluginApi, "CreatePluginApi");
        Resolve(freePluginApi, "FreePluginApi");
        Resolve(onPluginFree, "OnPluginFree");
    } catch (...) {
        FreeLibrary(m_library);
        throw;
    }
}

ModuleHandle::~ModuleHandle() {
    FreeLibrary(m_library);
}

template <typename Function>
void ModuleHandle::Resolve(Function& function, const char* name) {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(m_library, name)));
    if (!function) {
        throw std::runtime_error(m_path + " does not export " + name);
    }
}
