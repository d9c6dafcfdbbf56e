// The functions through which the host drives the module, in the order in which it calls them.

#include "emendo_build.h"
#include "frame/emendo_control.h"
#include "frame/own_exceptions.h"
#include "framework/debug_line.h"
#include "framework/guard.h"
#include "res/language.h"
#include "res/system_language.h"
#include "trade/host_services.h"

#include <windows.h>

#include <cstring>

namespace {

constexpr const char* kApiVersion = "1.0.0.1";

}  // namespace

extern "C" {

// `language`: the host's language id, 0 leaves the choice to the module.
void OnPluginLoad(WORD language) {
    PrepareExceptions();
    Guarded("OnPluginLoad", [&] { ChooseResourceLanguage(language); });
    TellDebugger("version " EMENDO_VERSION " (build " EMENDO_BUILD "), language %u, %s", g_wResLanguage,
                 language ? "given by the terminal" : "that of the system");
}

void OnPluginInit(IPluginManager* manager) {
    Guarded("OnPluginInit", [&] { AcquireHostServices(manager); });
}

// Null for any other version and without memory; FreePluginApi frees the result.
IEmendix* CreatePluginApi(const char* version) {
    if (version && std::strcmp(version, kApiVersion) == 0) {
        return IEmendoControl::Create();
    }
    TellDebugger("refused interface version %.20s, this is %s", version ? version : "null", kApiVersion);
    return nullptr;
}

// Open dialogs stay open. A null pointer and one that was freed before are ignored.
void FreePluginApi(IEmendix* api) {
    IEmendoControl::Free(api);
}

// Nothing here is the module's to release: every service is the host's.
void OnPluginFree() {}
}
