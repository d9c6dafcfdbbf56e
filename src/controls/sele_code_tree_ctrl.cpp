#include "controls/sele_code_tree_ctrl.h"

BEGIN_MESSAGE_MAP(CSeleCodeTreeCtrl, CTreeCtrl)
ON_WM_NCHITTEST()
END_MESSAGE_MAP()

LRESULT CSeleCodeTreeCtrl::OnNcHitTest(POINT point) {
    const LRESULT hit = CTreeCtrl::OnNcHitTest(point);
    FocusOnHover(m_hWnd, hit);
    return hit;
}

void FocusOnHover(HWND control, LRESULT hit) {
    if (hit == HTCLIENT && control && ::GetFocus() != control) {
        ::SetFocus(control);
    }
}
