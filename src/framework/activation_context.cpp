#include "framework/activation_context.h"

#include "framework/module_instance.h"

namespace {

// The context of the module's manifest, made on first use and released with the module.
class ManifestContext {
public:
    ManifestContext() {
        ACTCTXA description{};
        description.cbSize = sizeof(description);
        description.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
        description.hModule = ModuleInstance();
        description.lpResourceName = MAKEINTRESOURCEA(2);
        m_context = CreateActCtxA(&description);
    }
    ManifestContext(const ManifestContext&) = delete;
    ManifestContext& operator=(const ManifestContext&) = delete;
    ~ManifestContext() {
        if (m_context != INVALID_HANDLE_VALUE) {
            ReleaseActCtx(m_context);
        }
    }
    HANDLE Get() const { return m_context; }

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
};

HANDLE Manifest() {
    static const ManifestContext manifest;
    return manifest.Get();
}

// What ends the activation; 0 when there is none.
ULONG_PTR Activate(HANDLE context) {
    ULONG_PTR cookie = 0;
    return context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie) ? cookie : 0;
}

// Also when a call that is over has left activations of its own behind.
void Deactivate(void* cookie, std::intptr_t) {
    DeactivateActCtx(DEACTIVATE_ACTCTX_FLAG_FORCE_EARLY_DEACTIVATION, reinterpret_cast<ULONG_PTR>(cookie));
}

}  // namespace

ScopedActivationContext::ScopedActivationContext()
    : m_active(reinterpret_cast<void*>(Activate(Manifest())), &Deactivate) {}

FormerActivationContext::FormerActivationContext() {
    GetCurrentActCtx(&m_context);
}

FormerActivationContext::~FormerActivationContext() {
    if (m_context) {
        ReleaseActCtx(m_context);
    }
}

FormerActivationContext::Activated::Activated(HANDLE context)
    : active(reinterpret_cast<void*>(Activate(context)), &Deactivate) {}
