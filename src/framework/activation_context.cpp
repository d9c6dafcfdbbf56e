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

}  // namespace

ScopedActivationContext::ScopedActivationContext() {
    static const ManifestContext manifest;
    m_active = manifest.Get() != INVALID_HANDLE_VALUE && ActivateActCtx(manifest.Get(), &m_cookie);
}

ScopedActivationContext::~ScopedActivationContext() {
    if (m_active) {
        DeactivateActCtx(0, m_cookie);
    }
}

FormerActivationContext::FormerActivationContext() {
    GetCurrentActCtx(&m_context);
}

FormerActivationContext::~FormerActivationContext() {
    if (m_context) {
        ReleaseActCtx(m_context);
    }
}

FormerActivationContext::Activated::Activated(HANDLE context)
    : active(ActivateActCtx(context, &cookie) != FALSE) {}

FormerActivationContext::Activated::~Activated() {
    if (active) {
        DeactivateActCtx(0, cookie);
    }
}
