#include "order/contract_edit.h"

LRESULT CContractEdit::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    // First on its usual way: the system learns from it that Alt was not pressed for a menu.
    const LRESULT result = CWnd::WindowProc(message, wParam, lParam);
    if (m_hWnd &&
        ((message == WM_KEYDOWN && wParam == VK_F4) || (message == WM_SYSKEYDOWN && wParam == VK_DOWN))) {
        ::SendMessageA(::GetParent(m_hWnd), WM_COMMAND,
                       MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID()), kPickerAsked),
                       reinterpret_cast<LPARAM>(m_hWnd));
    }
    return result;
}
