// The module's five exports, served by the probe in its place: the terminal loads EmendoProbe.dll instead of
// EmendoOrd.dll and opens any dialog.

#include "framework/debug_line.h"
#include "framework/guard.h"
#include "probe/probe.h"
#include "probe/probe_window.h"
#include "trade/host_services.h"

#include <cstring>
#include <memory>

namespace {

constexpr const char* kApiVersion = "1.0.0.1";

// Between loading and unloading of the library.
std::unique_ptr<Probe> g_probe;

Probe& TheProbe() {
    if (!g_probe) {
        g_probe = std::make_unique<Probe>();
    }
    return *g_probe;
}

IEmendixOper* Open(const Probe::Opening& opening) {
    return Guarded(
        opening.operation,
        [&]() -> IEmendixOper* {
            TheProbe().OnStep(Probe::Step::kNone, opening.operation);
            TheProbe().Look(opening);
            return ProbeWindow::Show(TheProbe(), opening.parent);
        },
        static_cast<IEmendixOper*>(nullptr));
}

class ProbeApi final : public IEmendix {
public:
    IEmendixOper* OpenFillDialog(int mode, void* record, int recordKind, HWND parent) override {
        return Open({"OpenFillDialog", mode, record, recordKind, parent});
    }
    IEmendixOper* OpenOrderDialog(int mode, OrderRecord* record, HWND parent) override {
        return Open({"OpenOrderDialog", mode, record, kRecordKindOrder, parent});
    }
};

}  // namespace

extern "C" {

void OnPluginLoad(WORD /*language*/) {
    Guarded("OnPluginLoad", [] { TheProbe().OnStep(Probe::Step::kLoad, "OnPluginLoad"); });
}

void OnPluginInit(IPluginManager* manager) {
    Guarded("OnPluginInit", [&] {
        TheProbe().OnStep(Probe::Step::kInit, "OnPluginInit");
        AcquireHostServices(manager);
    });
}

IEmendix* CreatePluginApi(const char* version) {
    return Guarded(
        "CreatePluginApi",
        [&]() -> IEmendix* {
            TheProbe().OnStep(Probe::Step::kCreate, "CreatePluginApi");
            if (version && std::strcmp(version, kApiVersion) == 0) {
                return new ProbeApi;
            }
            TheProbe().OnOtherVersion(version ? version : "null");
            return nullptr;
        },
        static_cast<IEmendix*>(nullptr));
}

void FreePluginApi(IEmendix* api) {
    delete static_cast<ProbeApi*>(api);
}

void OnPluginFree() {
    Guarded("OnPluginFree", [] {
        if (ProbeWindow* window = ProbeWindow::Current()) {
            window->DestroyWindow();
        }
        if (g_probe) {
            g_probe->Refresh();
        }
        g_probe.reset();
    });
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_ATTACH) {
        g_debugSink = [](const char* line) { OutputDebugStringA(line); };
    } else if (reason == DLL_PROCESS_DETACH && !processEnds) {
        OnPluginFree();
    }
    return TRUE;
}
}
