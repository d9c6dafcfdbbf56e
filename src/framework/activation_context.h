#pragma once

#include "framework/call_note.h"

#include <windows.h>

// Common controls 6 for windows created while an object of this class lives. The module's manifest (resource
// id 2) binds its imports only; the version of a control is chosen when its window is created. Keep it around
// creation alone, never around a message loop: the host's own windows must not be affected. Without the
// manifest, or on a system without version 6, nothing happens and the standard controls are used.
class ScopedActivationContext {
public:
    ScopedActivationContext();

private:
    CallNote m_active;
};

// The context that was active when the object was made: the host's. A handler that runs while a window is
// being created works under it, since it may call the host, whose windows are its own affair.
class FormerActivationContext {
public:
    FormerActivationContext();
    ~FormerActivationContext();
    FormerActivationContext(const FormerActivationContext&) = delete;
    FormerActivationContext& operator=(const FormerActivationContext&) = delete;

    template <typename Body>
    auto Run(Body&& body) const {
        const Activated activated(m_context);
        return body();
    }

private:
    struct Activated {
        explicit Activated(HANDLE context);
        CallNote active;
    };
    HANDLE m_context = nullptr;
};
