#pragma once

#include "framework/scoped_value.h"
#include "framework/wnd.h"

// Binds `object` to the window that is created while this lives, before that window's first message. The
// window is recognised by its creation parameter, or without a `token` as the next dialog window.
class CreationBinding {
public:
    CreationBinding(CWnd& object, const void* token);

private:
    static LRESULT CALLBACK HookProc(int code, WPARAM wParam, LPARAM lParam);
    bool IsExpected(HWND window, const CREATESTRUCTA& create) const;

    CWnd& m_object;
    const void* m_token;
    ScopedValue<CreationBinding*> m_innermost;
    CallNote m_hook;
    bool m_bound = false;
    static CreationBinding* s_innermost;
};
