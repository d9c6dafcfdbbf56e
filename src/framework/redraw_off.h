#pragma once

#include "framework/call_note.h"

#include <windows.h>

#include <string>
#include <vector>

// Many changes of the controls of one visible window without painting in between. At the end the controls
// that look different are painted once, and where they stood before; everything is when the window itself has
// another size or other children. A window that is not shown is left alone, because switching redrawing on
// again would show it.
class RedrawOff {
public:
    explicit RedrawOff(HWND window);
    ~RedrawOff();

private:
    struct Look {
        HWND control;
        LONG style;  // shown, enabled
        RECT place;  // on the screen
        std::string text;
    };
    static Look LookOf(HWND control);
    std::vector<Look> LooksOfControls() const;
    bool RepaintChanged() const;

    HWND m_window;
    RECT m_place{};
    std::vector<Look> m_before;
    CallNote m_off;
};
