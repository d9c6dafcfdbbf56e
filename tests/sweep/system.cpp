#include "sweep/system.h"

#include <cstring>

namespace {

// One class for each, by its number.
template <int Number, typename Function>
struct Maker;
template <int Number, typename Result, typename... Arguments>
struct Maker<Number, Result(WINAPI*)(Arguments...)> {
    static inline Result(WINAPI* former)(Arguments...) = nullptr;
    static inline const char* name = nullptr;
    static Result WINAPI Make(Arguments... arguments) {
        if (g_faults.At(Site::Resource, 's', name) == Kind::None) {
            return former(arguments...);
        }
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return Result{};
    }
};

HDC WINAPI PaintNothing(HWND window, PAINTSTRUCT* paint) {
    if (g_faults.At(Site::Resource, 's', "BeginPaint") == Kind::None) {
        return BeginPaint(window, paint);
    }
    ValidateRect(window, nullptr);  // or the system would ask again at once
    return nullptr;
}
HANDLE WINAPI NoContext(const ACTCTXA* wanted) {
    return g_faults.At(Site::Resource, 's', "CreateActCtxA") == Kind::None ? CreateActCtxA(wanted)
                                                                           : INVALID_HANDLE_VALUE;
}

struct Import {
    const char* name;
    void* ours;
    void (*keep)(void* theirs);
};
#define MAKER(function)                                                                    \
    {                                                                                      \
#function, reinterpret_cast<void*>(&Maker<__COUNTER__, decltype(&function)>::Make),      \
     [](void* theirs) {                                                                       \
         using Kept = Maker<__COUNTER__ - 1, decltype(&function)>;                            \
         Kept::former = reinterpret_cast<decltype(&function)>(theirs);                        \
         Kept::name = #function;                                                              \
     } \
    }
const Import kImports[] = {
    MAKER(CreateWindowExA),
    MAKER(CreateDialogIndirectParamA),
    MAKER(MessageBoxA),
    MAKER(CreateFontIndirectA),
    MAKER(CreateSolidBrush),
    MAKER(CreatePen),
    MAKER(GetDC),
    MAKER(RegisterClassA),
    MAKER(SetWindowsHookExA),
    MAKER(SetTimer),
    MAKER(GetComboBoxInfo),
    MAKER(FindResourceExA),
    MAKER(FindResourceExW),
    MAKER(LoadResource),
    MAKER(LoadCursorA),
    MAKER(OpenClipboard),
    MAKER(GlobalAlloc),
    {"BeginPaint", reinterpret_cast<void*>(&PaintNothing), [](void*) {}},
    {"CreateActCtxA", reinterpret_cast<void*>(&NoContext), [](void*) {}},
};
#undef MAKER

}  // namespace

SystemFaults::SystemFaults(HMODULE module) : m_memory(module) {
    ForEachImport(module, [](const char* name, void*& address) {
        for (const Import& import : kImports) {
            if (std::strcmp(import.name, name) == 0) {
                import.keep(address);
                ExchangeImport(address, import.ours);
            }
        }
    });
}
