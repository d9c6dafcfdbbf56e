#include "order/carry_check_box.h"

#include "framework/window_helpers.h"

LRESULT DrawChosenPositionLabel(const NMCUSTOMDRAW& draw) {
    RECT label = draw.rc;
    label.left += GetSystemMetrics(SM_CYHSCROLL);
    if (draw.dwDrawStage == CDDS_PREERASE) {
        FillRect(draw.hdc, &label, GetSysColorBrush(COLOR_BTNFACE));
        return CDRF_DODEFAULT;
    }
    if (draw.dwDrawStage != CDDS_PREPAINT) {
        return CDRF_DODEFAULT;
    }
    const std::string text = TextOf(draw.hdr.hwndFrom);
    const COLORREF formerColour = SetTextColor(draw.hdc, GetSysColor(COLOR_HOTLIGHT));
    const int formerMode = SetBkMode(draw.hdc, TRANSPARENT);
    DrawTextA(draw.hdc, text.c_str(), static_cast<int>(text.size()), &label, DT_SINGLELINE | DT_VCENTER);
    SetBkMode(draw.hdc, formerMode);
    SetTextColor(draw.hdc, formerColour);
    return CDRF_SKIPDEFAULT;
}
