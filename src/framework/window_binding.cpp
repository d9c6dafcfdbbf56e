// How objects and windows come together: the table of bound windows, the window procedure that finds the
// object, and the hook that binds a window before its first message.

#include "framework/guard.h"
#include "framework/module_instance.h"
#include "framework/scoped_value.h"
#include "framework/window_creation.h"
#include "framework/wnd.h"

#include <typeinfo>
#include <unordered_map>

namespace {

struct Binding {
    CWnd* object;
    // The procedure that this module's one replaced.
    WNDPROC formerProcedure;
};

std::unordered_map<HWND, Binding>& Bindings() {
    static std::unordered_map<HWND, Binding> bindings;
    return bindings;
}

WNDPROC FormerProcedure(HWND window) {
    const auto found = Bindings().find(window);
    return found == Bindings().end() ? nullptr : found->second.formerProcedure;
}

LRESULT CallFormer(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const WNDPROC former = FormerProcedure(window)) {
        return ::CallWindowProcA(former, window, message, wParam, lParam);
    }
    return window ? ::DefWindowProcA(window, message, wParam, lParam) : 0;
}

}  // namespace

// The message that an object is handling, innermost first: what Default() passes on.
struct CWnd::DispatchFrame {
    DispatchFrame(const CWnd* handlingObject, const WindowMessage& handledMessage)
        : object(handlingObject), message(handledMessage), innermost(s_innermost, this) {}

    const CWnd* object;
    const WindowMessage& message;
    ScopedValue<DispatchFrame*> innermost;
    static DispatchFrame* s_innermost;
};

CWnd::DispatchFrame* CWnd::DispatchFrame::s_innermost = nullptr;

CWnd* CWnd::FromHandlePermanent(HWND window) {
    const auto found = Bindings().find(window);
    return found == Bindings().end() ? nullptr : found->second.object;
}

bool CWnd::Bind(HWND window) {
    if (m_hWnd || !::IsWindow(window)) {
        return false;
    }
    Binding& binding = Bindings()[window];
    if (binding.object) {
        return false;
    }
    binding.object = this;
    m_hWnd = window;
    try {
        PreSubclassWindow();
    } catch (...) {
        Unbind();
        throw;
    }
    // An earlier object may have left this module's procedure in place below another subclass.
    if (!FormerProcedure(window)) {
        const LONG former =
            ::SetWindowLongA(window, GWL_WNDPROC, reinterpret_cast<LONG>(&CWnd::StaticWindowProc));
        if (!former) {
            Unbind();
            return false;
        }
        Bindings()[window].formerProcedure = reinterpret_cast<WNDPROC>(former);
    }
    return true;
}

void CWnd::Unbind() {
    const HWND window = std::exchange(m_hWnd, nullptr);
    m_createdHere = false;
    const auto found = Bindings().find(window);
    if (found == Bindings().end() || found->second.object != this) {
        return;
    }
    const auto procedure = reinterpret_cast<LONG>(&CWnd::StaticWindowProc);
    if (!found->second.formerProcedure) {
        Bindings().erase(found);
    } else if (::GetWindowLongA(window, GWL_WNDPROC) == procedure) {
        ::SetWindowLongA(window, GWL_WNDPROC, reinterpret_cast<LONG>(found->second.formerProcedure));
        Bindings().erase(found);
    } else {
        // Somebody subclassed the window after this module and will go on calling its procedure.
        found->second.object = nullptr;
    }
}

bool CWnd::SubclassWindow(HWND window) {
    return Bind(window);
}

HWND CWnd::UnsubclassWindow() {
    const HWND window = m_hWnd;
    Unbind();
    return window;
}

LRESULT CALLBACK CWnd::StaticWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CallNote::PutBackAbandoned(__builtin_frame_address(0));
    CWnd* object = FromHandlePermanent(window);
    if (object && !CallNote::NearlyFull()) {
        return object->Dispatch({message, wParam, lParam});
    }
    const LRESULT result = CallFormer(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        Bindings().erase(window);
    }
    return result;
}

LRESULT CWnd::Dispatch(const WindowMessage& message) {
    const RunningCalls calls(*this);
    const WindowWatch watch(this);
    const HWND window = m_hWnd;
    const LRESULT result = DispatchGuarded(message, watch);
    if (message.id == WM_NCDESTROY) {
        if (watch.ObjectAlive()) {
            Unbind();
            Guarded({typeid(*this).name(), WM_NCDESTROY}, [this] { PostNcDestroy(); });
        }
        Bindings().erase(window);
    }
    return result;
}

LRESULT CWnd::DispatchGuarded(const WindowMessage& message, const WindowWatch& watch) {
    const DispatchFrame frame(this, message);
    bool threw = true;
    const LRESULT result = Guarded(
        {typeid(*this).name(), message.id, message.wParam},
        [&] {
            const LRESULT answer = WindowProc(message.id, message.wParam, message.lParam);
            threw = false;
            return answer;
        },
        LRESULT{0});
    if (threw && message.id == WM_PAINT && watch.WindowAlive()) {
        // Or the system would ask for the same painting again at once, for ever.
        ::ValidateRect(m_hWnd, nullptr);
    }
    if (message.id != WM_CREATE || (!threw && result != -1)) {
        return result;
    }
    // The system takes the children of a window that fails to be created away without a word to them, and a
    // tree would leave its tooltip.
    while (watch.WindowAlive() && ::DestroyWindow(::GetWindow(m_hWnd, GW_CHILD))) {
    }
    return -1;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return CallFormer(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const DispatchFrame* frame = DispatchFrame::s_innermost;
    if (!frame || frame->object != this) {
        return 0;
    }
    return DefWindowProc(frame->message.id, frame->message.wParam, frame->message.lParam);
}

CreationBinding* CreationBinding::s_innermost = nullptr;

CreationBinding::CreationBinding(CWnd& object, const void* token)
    : m_object(object),
      m_token(token),
      m_innermost(s_innermost, this),
      m_hook(::SetWindowsHookExA(WH_CBT, &CreationBinding::HookProc, nullptr, ::GetCurrentThreadId()),
             [](void* hook, std::intptr_t) { ::UnhookWindowsHookEx(static_cast<HHOOK>(hook)); }) {}

LRESULT CALLBACK CreationBinding::HookProc(int code, WPARAM wParam, LPARAM lParam) {
    CreationBinding* creation = s_innermost;
    if (code == HCBT_CREATEWND && creation && !creation->m_bound) {
        const auto window = reinterpret_cast<HWND>(wParam);
        const auto* details = reinterpret_cast<const CBT_CREATEWNDA*>(lParam);
        if (creation->IsExpected(window, *details->lpcs)) {
            creation->m_bound = true;
            CWnd& object = creation->m_object;
            object.m_createdHere = Guarded(
                "binding of a new window", [&] { return object.Bind(window); }, false);
            if (!object.m_createdHere) {
                return 1;  // a window without its object is better not created
            }
        }
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

bool CreationBinding::IsExpected(HWND window, const CREATESTRUCTA& create) const {
    if (m_token) {
        return create.lpCreateParams == m_token;
    }
    return ::GetClassLongA(window, GCW_ATOM) == LOWORD(reinterpret_cast<ULONG_PTR>(WC_DIALOG));
}

bool CWnd::CreateEx(DWORD exStyle, const char* className, const char* title, DWORD style, const RECT& rect,
                    HWND parent, UINT_PTR idOrMenu) {
    CREATESTRUCTA create{};
    create.dwExStyle = exStyle;
    create.lpszClass = className ? className : RegisterModuleClass(0);
    create.lpszName = title;
    create.style = static_cast<LONG>(style);
    create.x = rect.left;
    create.y = rect.top;
    create.cx = rect.right - rect.left;
    create.cy = rect.bottom - rect.top;
    create.hwndParent = parent;
    create.hMenu = reinterpret_cast<HMENU>(idOrMenu);
    create.hInstance = ModuleInstance();
    if (m_hWnd || !create.lpszClass || !PreCreateWindow(create)) {
        return false;
    }
    const WindowWatch watch(this);
    HWND window = nullptr;
    {
        // The address marks the window to be bound: others may be created on the way.
        const CreationBinding binding(*this, &create);
        window = ::CreateWindowExA(create.dwExStyle, create.lpszClass, create.lpszName,
                                   static_cast<DWORD>(create.style), create.x, create.y, create.cx, create.cy,
                                   create.hwndParent, create.hMenu, create.hInstance, &create);
    }
    return IsWholeCreation(window, watch);
}

// Without the hook, or when another one keeps the news from it, the window has come without its object.
bool CWnd::IsWholeCreation(HWND window, const WindowWatch& watch) {
    if (!watch.ObjectAlive()) {
        return false;
    }
    if (!window) {
        Unbind();
    } else if (m_hWnd != window && ::IsWindow(window)) {
        ::DestroyWindow(window);
    }
    return window && m_hWnd == window;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT&) {
    return TRUE;
}
