#include "framework/module_instance.h"

#include "framework/format_text.h"
#include "framework/guard.h"

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
        const auto known = m_names.find(name);
        if (known != m_names.end()) {
            return known->c_str();
        }
        WNDCLASSA windowClass = properties;
        windowClass.lpszClassName = name.c_str();
        return RegisterClassA(&windowClass) ? m_names.insert(name).first->c_str() : nullptr;
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

void ReportSwallowedException() noexcept {
    OutputDebugStringA("EmendoOrd: an exception was stopped at the module's edge\n");
}
