#include "framework/wnd.h"

#include "framework/guard.h"
#include "framework/window_helpers.h"

bool WindowWatch::WindowAlive() const {
    const auto* object = static_cast<const CWnd*>(m_note.Target());
    return object && object->m_hWnd && ::IsWindow(object->m_hWnd);
}

CWnd::RunningCall::RunningCall(CWnd& object) : m_note(&object, &End) {
    ++object.m_runningCalls;
}

void CWnd::RunningCall::End(void* target, std::intptr_t) {
    auto* object = static_cast<CWnd*>(target);
    --object->m_runningCalls;
    if (object->m_deleteWhenIdle) {
        object->DeleteWhenIdle();
    }
}

CWnd::RunningCalls::RunningCalls(CWnd& innermost) {
    CWnd* object = &innermost;
    for (std::optional<RunningCall>& call : m_calls) {
        if (!object) {
            return;
        }
        call.emplace(*object);
        object = FromHandlePermanent(::GetParent(object->m_hWnd));
    }
}

void CWnd::DeleteWhenIdle() {
    m_deleteWhenIdle = true;
    if (m_runningCalls == 0) {
        // The host may call once more while the destructor lets go of what is the host's.
        ++m_runningCalls;
        delete this;
    }
}

CWnd::~CWnd() {
    CallNote::ForgetTarget(this);
    if (m_hWnd && m_createdHere) {
        ::DestroyWindow(m_hWnd);
    }
    Unbind();
}

BOOL CWnd::DestroyWindow() {
    return m_hWnd ? ::DestroyWindow(m_hWnd) : FALSE;
}

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WindowWatch watch(this);
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result) || !watch.ObjectAlive()) {
        return result;
    }
    return DefWindowProc(message, wParam, lParam);
}

bool CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) {
        return OnCommand(wParam, lParam) != FALSE;
    }
    if (message == WM_NOTIFY) {
        return OnNotify(wParam, lParam, result) != FALSE;
    }
    return FindAndInvoke(MessageMapEntry::Kind::Message, message, 0, {message, wParam, lParam}, *result);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT code = HIWORD(wParam);
    const WindowMessage message{WM_COMMAND, wParam, lParam};
    LRESULT result = 0;
    if (const auto control = reinterpret_cast<HWND>(lParam)) {
        if (m_exchangesRunning > 0 && code != CBN_SELCHANGE) {
            return TRUE;
        }
        const WindowWatch watch(this);
        if (CWnd* child = FromHandlePermanent(control);
            child &&
            child->FindAndInvoke(MessageMapEntry::Kind::ReflectedCommand, code, 0, message, result)) {
            return TRUE;
        }
        if (!watch.ObjectAlive()) {
            return TRUE;
        }
    }
    return FindAndInvoke(MessageMapEntry::Kind::Command, code, LOWORD(wParam), message, result);
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* header = reinterpret_cast<const NMHDR*>(lParam);
    if (!header) {
        return FALSE;
    }
    const UINT code = header->code;
    const UINT id = header->idFrom;
    const WindowMessage message{WM_NOTIFY, wParam, lParam};
    const WindowWatch watch(this);
    if (CWnd* child = FromHandlePermanent(header->hwndFrom);
        child && child->FindAndInvoke(MessageMapEntry::Kind::ReflectedNotify, code, 0, message, *result)) {
        return TRUE;
    }
    if (!watch.ObjectAlive()) {
        return TRUE;
    }
    return FindAndInvoke(MessageMapEntry::Kind::Notify, code, id, message, *result);
}

bool CWnd::FindAndInvoke(MessageMapEntry::Kind kind, UINT code, UINT id, const WindowMessage& message,
                         LRESULT& result) {
    const WindowWatch watch(this);
    for (const MessageMap* map = &GetMessageMap(); map; map = map->base ? &map->base() : nullptr) {
        for (const MessageMapEntry* entry = map->entries; entry->kind != MessageMapEntry::Kind::End;
             ++entry) {
            const bool named = entry->kind == kind && entry->code == code &&
                               (entry->lastId == 0 || (id >= entry->firstId && id <= entry->lastId));
            if (named && (entry->invoke(*this, message, result) || !watch.ObjectAlive())) {
                return true;
            }
        }
    }
    return false;
}

const MessageMap& CWnd::ThisMessageMap() {
    static const MessageMapEntry entries[] = {MessageMapEntry{}};
    static const MessageMap map{nullptr, entries};
    return map;
}

HWND DialogItem(HWND dialog, int id) {
    const CWnd* object = CWnd::FromHandlePermanent(dialog);
    return object ? object->GetDlgItem(id) : ::GetDlgItem(dialog, id);
}

std::string CWnd::GetDlgItemText(int id) const {
    return TextOf(GetDlgItem(id));
}

void CWnd::SetDlgItemText(int id, const std::string& text) const {
    SetTextIfChanged(GetDlgItem(id), text);
}

std::string CWnd::GetWindowText() const {
    return TextOf(m_hWnd);
}

void CWnd::SetWindowText(const std::string& text) const {
    SetTextIfChanged(m_hWnd, text);
}

RECT CWnd::GetClientRect() const {
    RECT rect{};
    ::GetClientRect(m_hWnd, &rect);
    return rect;
}

RECT CWnd::GetWindowRect() const {
    RECT rect{};
    ::GetWindowRect(m_hWnd, &rect);
    return rect;
}

bool CWnd::UpdateData(bool saveAndValidate) {
    if (!m_hWnd) {
        return false;
    }
    // The exchange may end with the object deleted, by a handler of a selection that it made.
    const WindowWatch watch(this);
    const CallNote running(
        this, [](void* window, std::intptr_t) { --static_cast<CWnd*>(window)->m_exchangesRunning; });
    ++m_exchangesRunning;
    CDataExchange exchange(*this, saveAndValidate);
    DoDataExchange(&exchange);
    return watch.WindowAlive();
}

bool OfferToWindows(const CWnd& dialog, const MSG& message) {
    MSG copy = message;
    const HWND last = dialog.m_hWnd;
    for (HWND window = message.hwnd; window; window = ::GetParent(window)) {
        CWnd* object = CWnd::FromHandlePermanent(window);
        if (object && object->PreTranslateMessage(&copy)) {
            return true;
        }
        if (window == last) {
            return false;
        }
    }
    return false;
}

bool IsNearOwnWindow(HWND target) {
    return CWnd::FromHandlePermanent(target) || CWnd::FromHandlePermanent(::GetParent(target));
}
