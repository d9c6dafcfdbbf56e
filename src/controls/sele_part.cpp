#include "controls/sele_part.h"

bool OfferKey(const CWnd& part, WPARAM key) {
    NMKEY notification{};
    notification.hdr.hwndFrom = part.m_hWnd;
    notification.hdr.idFrom = static_cast<UINT_PTR>(part.GetDlgCtrlID());
    notification.hdr.code = NM_KEYDOWN;
    notification.nVKey = static_cast<UINT>(key);
    return ::SendMessageA(part.GetParent(), WM_NOTIFY, notification.hdr.idFrom,
                          reinterpret_cast<LPARAM>(&notification)) != 0;
}

void FocusOnHover(HWND part, LRESULT hit) {
    if (hit == HTCLIENT && part && ::GetFocus() != part) {
        ::SetFocus(part);
    }
}
