// The functions through which the host drives the module, in the order in which it calls them.

#include "frame/emendo_control.h"
#include "framework/guard.h"
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
    Guarded([&] { ChooseResourceLanguage(language); });
}

void OnPluginInit(IPluginManager* manager) {
    Guarded([&] { AcquireHostServices(manager); });
}

// Null for any other version; FreePluginApi frees the result.
IEmendix* CreatePluginApi(const char* version) {
    return Guarded(
        [&]() -> IEmendix* {
            return version && std::strcmp(version, kApiVersion) == 0 ? new IEmendoControl : nullptr;
        },
        static_cast<IEmendix*>(nullptr));
}

// Open dialogs stay open.
void FreePluginApi(IEmendix* api) {
    delete static_cast<IEmendoControl*>(api);
}

// Nothing here is the module's to release: every service is the host's.
void OnPluginFree() {}
}
