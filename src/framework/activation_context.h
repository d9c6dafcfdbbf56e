#pragma once

#include <windows.h>

// Common controls 6 for windows created while an object of this class lives. The module's manifest (resource
// id 2) binds its imports only; the version of a control is chosen when its window is created. Keep it around
// creation alone, never around a message loop: the host's own windows must not be affected. Without the
// manifest, or on a system without version 6, nothing happens and the standard controls are used.
class ScopedActivationContext {
public:
    ScopedActivationContext();
    ~ScopedActivationContext();
    ScopedActivationContext(const ScopedActivationContext&) = delete;
    ScopedActivationContext& operator=(const ScopedActivationContext&) = delete;

    bool Active() const { return m_active; }

private:
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};
