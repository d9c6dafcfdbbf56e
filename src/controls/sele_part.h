#pragma once

#include "framework/controls.h"

// A mouse that has not moved since a key was pressed. The system reports the pointer again whenever something
// appears under it; what it merely rests on is not pointed at.
class RestingMouse {
public:
    void Note() { m_noted = ::GetCursorPos(&m_at) != FALSE; }
    // `at` in screen coordinates, of a report. The first one from elsewhere ends the rest.
    bool RestsAt(POINT at) {
        m_noted = m_noted && at.x == m_at.x && at.y == m_at.y;
        return m_noted;
    }

private:
    bool m_noted = false;
    POINT m_at{};
};

// A key on its way to a part of the contract popup, as NM_KEYDOWN to the popup: true when the popup has used
// it. The control may be gone then.
bool OfferKey(const CWnd& part, WPARAM key);
// Gives the keyboard to a part whose client area is under the mouse; `hit` is its own hit test's result.
void FocusOnHover(HWND part, LRESULT hit);

// What the tree and the list of the contract popup have in common: the one under the mouse takes the
// keyboard, so that the wheel scrolls what is pointed at, and the popup sees every key first, whether or not
// the host forwards the messages of its loop.
template <typename Control>
class CSelePart : public Control {
public:
    void SetRestingMouse(RestingMouse* mouse) { m_mouse = mouse; }

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
            case WM_KEYDOWN:
                if (OfferKey(*this, wParam)) {
                    return 0;
                }
                break;
            case WM_CHAR:
                if (wParam < ' ') {
                    return 0;  // Enter, Tab and Esc once more; a search for them would only beep
                }
                break;
            case WM_GETDLGCODE:
                return Control::WindowProc(message, wParam, lParam) | DLGC_WANTALLKEYS;
            case WM_NCHITTEST: {
                const LRESULT hit = Control::WindowProc(message, wParam, lParam);
                if (!MouseRestsAt(PackedPoint(lParam))) {
                    FocusOnHover(this->m_hWnd, hit);
                }
                return hit;
            }
            default:
                break;
        }
        return Control::WindowProc(message, wParam, lParam);
    }
    bool MouseRestsAt(POINT screen) const { return m_mouse && m_mouse->RestsAt(screen); }

private:
    RestingMouse* m_mouse = nullptr;
};
