#include "order/carry_check_box.h"

#include "framework/font.h"
#include "framework/window_helpers.h"

#include <uxtheme.h>
#include <vssym32.h>

namespace {

int GlyphState(const NMCUSTOMDRAW& draw) {
    const bool ticked = SendMessageA(draw.hdr.hwndFrom, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (draw.uItemState & CDIS_DISABLED) {
        return ticked ? CBS_CHECKEDDISABLED : CBS_UNCHECKEDDISABLED;
    }
    if (draw.uItemState & CDIS_SELECTED) {
        return ticked ? CBS_CHECKEDPRESSED : CBS_UNCHECKEDPRESSED;
    }
    return ticked ? CBS_CHECKEDNORMAL : CBS_UNCHECKEDNORMAL;
}

RECT CentredSquare(const RECT& place, int size) {
    const LONG top = place.top + (place.bottom - place.top - size) / 2;
    return {place.left, top, place.left + size, top + size};
}

// Some systems draw the box before they ask for the label, others leave it to whoever draws the label.
void DrawGlyph(const NMCUSTOMDRAW& draw) {
    const HWND box = draw.hdr.hwndFrom;
    if (HTHEME theme = OpenThemeData(box, L"Button")) {
        const int state = GlyphState(draw);
        SIZE size{};
        GetThemePartSize(theme, draw.hdc, BP_CHECKBOX, state, nullptr, TS_DRAW, &size);
        const RECT glyph = CentredSquare(draw.rc, size.cx);
        DrawThemeBackground(theme, draw.hdc, BP_CHECKBOX, state, &glyph, nullptr);
        CloseThemeData(theme);
        return;
    }
    const bool ticked = SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
    RECT glyph = CentredSquare(draw.rc, GetSystemMetrics(SM_CYMENUCHECK));
    DrawFrameControl(draw.hdc, &glyph, DFC_BUTTON,
                     static_cast<UINT>(DFCS_BUTTONCHECK | (ticked ? DFCS_CHECKED : 0)));
}

void DrawLabel(const NMCUSTOMDRAW& draw, RECT place) {
    const std::string text = TextOf(draw.hdr.hwndFrom);
    const COLORREF formerColour = SetTextColor(draw.hdc, GetSysColor(COLOR_HOTLIGHT));
    const int formerMode = SetBkMode(draw.hdc, TRANSPARENT);
    DrawWhole(draw.hdc, text, place, DT_SINGLELINE | DT_VCENTER);
    if (draw.uItemState & CDIS_FOCUS) {
        DrawFocusRect(draw.hdc, &place);
    }
    SetBkMode(draw.hdc, formerMode);
    SetTextColor(draw.hdc, formerColour);
}

}  // namespace

LRESULT DrawChosenPositionLabel(const NMCUSTOMDRAW& draw) {
    RECT label = draw.rc;
    label.left += GetSystemMetrics(SM_CYHSCROLL);
    switch (draw.dwDrawStage) {
        case CDDS_PREERASE:
            FillRect(draw.hdc, &label, GetSysColorBrush(COLOR_BTNFACE));
            break;
        case CDDS_PREPAINT:
            DrawGlyph(draw);
            DrawLabel(draw, label);
            return CDRF_SKIPDEFAULT;
        default:
            break;
    }
    return CDRF_DODEFAULT;
}
