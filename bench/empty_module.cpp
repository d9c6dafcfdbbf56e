// The yardstick of load_bench: a library that imports what the module imports, has its manifest and its
// exports, and does nothing.

#include <windows.h>

#include <commctrl.h>
#include <uxtheme.h>

extern "C" {

// One function of each library is named, so that the system loads them all.
void OnPluginFree(void) {
    static void* volatile kept[] = {
        reinterpret_cast<void*>(&InitCommonControlsEx), reinterpret_cast<void*>(&DeleteObject),
        reinterpret_cast<void*>(&IsWindow), reinterpret_cast<void*>(&IsThemeActive)};
    (void)kept[0];
}
void OnPluginLoad(WORD) {}
void OnPluginInit(void*) {}
void* CreatePluginApi(const char*) {
    return nullptr;
}
void FreePluginApi(void*) {}
}
