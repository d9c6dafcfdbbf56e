#include "framework/redraw_off.h"

#include "framework/window_helpers.h"

#include <new>

namespace {

constexpr UINT kRepaint = RDW_ERASE | RDW_INVALIDATE | RDW_ALLCHILDREN;

void RepaintPlace(HWND window, RECT place) {
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    RedrawWindow(window, &place, nullptr, kRepaint);
}

void SwitchOn(HWND window) {
    SendMessageA(window, WM_SETREDRAW, TRUE, 0);
}

void RepaintAll(HWND window) {
    RedrawWindow(window, nullptr, nullptr, kRepaint | RDW_FRAME);
}

// The handle, unless it has been destroyed or is not shown.
HWND Shown(HWND window) {
    return GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE ? window : nullptr;
}

}  // namespace

// What waits for being painted is painted first: switching redrawing off drops it.
RedrawOff::RedrawOff(HWND window)
    : m_window(Shown(window)), m_off(m_window, [](void* abandoned, std::intptr_t) {
          SwitchOn(static_cast<HWND>(abandoned));
          RepaintAll(static_cast<HWND>(abandoned));
      }) {
    if (m_window) {
        RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        GetWindowRect(m_window, &m_place);
        m_before = LooksOfControls();
        SendMessageA(m_window, WM_SETREDRAW, FALSE, 0);
    }
}

RedrawOff::~RedrawOff() {
    if (!m_window || !IsWindow(m_window)) {
        m_off.Drop();  // a null window would be the whole desktop
        return;
    }
    SwitchOn(m_window);
    try {
        if (RepaintChanged()) {
            m_off.Drop();
        }
    } catch (const std::bad_alloc&) {
        // Then everything is painted.
    }
}

RedrawOff::Look RedrawOff::LookOf(HWND control) {
    Look look{control, GetWindowLongA(control, GWL_STYLE), {}, TextOf(control)};
    GetWindowRect(control, &look.place);
    return look;
}

std::vector<RedrawOff::Look> RedrawOff::LooksOfControls() const {
    std::vector<Look> looks;
    for (HWND control = GetWindow(m_window, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        looks.push_back(LookOf(control));
    }
    return looks;
}

// False when more than single controls has changed. The control with the focus shows more than its text (its
// selection), and is painted in any case.
bool RedrawOff::RepaintChanged() const {
    RECT place{};
    GetWindowRect(m_window, &place);
    const std::vector<Look> after = LooksOfControls();
    if (!EqualRect(&place, &m_place) || after.size() != m_before.size()) {
        return false;
    }
    const HWND focus = GetFocus();
    for (std::size_t i = 0; i < after.size(); ++i) {
        const Look& now = after[i];
        const Look& former = m_before[i];
        if (now.control != former.control) {
            return false;
        }
        const bool same =
            now.style == former.style && EqualRect(&now.place, &former.place) && now.text == former.text;
        if (!same || now.control == focus || IsChild(now.control, focus)) {
            RepaintPlace(m_window, former.place);
            RepaintPlace(m_window, now.place);
        }
    }
    return true;
}
