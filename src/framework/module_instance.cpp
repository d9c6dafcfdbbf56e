#include "framework/module_instance.h"

#include "framework/format_text.h"

#include <set>
#include <string>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace {

class ModuleClasses {
public:
    ModuleClasses() = default;
    ModuleClasses(const ModuleClasses&) = delete;
    ModuleClasses& operator=(const ModuleClasses&) = delete;
    ~ModuleClasses() {
        for (const std::string& name : m_names) {
            UnregisterClassA(name.c_str(), ModuleInstance());
        }
    }

    const char* Register(const WNDCLASSA& properties, const std::string& name) {
        // Noted first: a class that is registered and not known would never be given back.
        const auto [known, isNew] = m_names.insert(name);
        WNDCLASSA windowClass = properties;
        windowClass.lpszClassName = known->c_str();
        if (isNew && !RegisterClassA(&windowClass)) {
            m_names.erase(known);
            return nullptr;
        }
        return known->c_str();
    }

private:
    std::set<std::string> m_names;
};

ModuleClasses g_moduleClasses;

}  // namespace

HINSTANCE ModuleInstance() {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

const char* RegisterModuleClass(UINT classStyle, HCURSOR cursor, HBRUSH background, HICON icon) {
    WNDCLASSA windowClass{};
    windowClass.style = classStyle;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = ModuleInstance();
    windowClass.hCursor = cursor;
    windowClass.hbrBackground = background;
    windowClass.hIcon = icon;
    return g_moduleClasses.Register(
        windowClass, FormatText("EmendoWindow:%x:%p:%p:%p", classStyle, static_cast<void*>(cursor),
                                static_cast<void*>(background), static_cast<void*>(icon)));
}
