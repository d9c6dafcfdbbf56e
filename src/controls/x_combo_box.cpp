#include "controls/x_combo_box.h"

#include "framework/window_helpers.h"

const UINT g_uLButtonClick = RegisterWindowMessageA("WM_LBUTTONCLK");

namespace {

constexpr UINT_PTR kClickTimer = 1;

HWND NearestDialog(HWND control) {
    for (HWND window = GetParent(control); window; window = GetParent(window)) {
        if (HasClass(window, "#32770")) {
            return window;
        }
    }
    return nullptr;
}

}  // namespace

BEGIN_MESSAGE_MAP(CxComboBox, CComboBox)
ON_WM_TIMER()
ON_WM_DESTROY()
ON_CONTROL_REFLECT(CBN_DROPDOWN, &CxComboBox::OnOpening)
ON_CBN_EDITUPDATE_REFLECT(&CxComboBox::OnEditUpdate)
ON_CBN_SELCHANGE_REFLECT(&CxComboBox::OnOperatorSelection)
ON_CONTROL_REFLECT(CBN_SETFOCUS, &CxComboBox::OnFocusReport)
ON_WM_SETCURSOR()
END_MESSAGE_MAP()

CxComboBox::~CxComboBox() {
    DetachEdit();
}

// --- attaching ---

BOOL CxComboBox::PreCreateWindow(CREATESTRUCT& create) {
    create.style &= ~static_cast<LONG>(CBS_SORT);
    return CComboBox::PreCreateWindow(create);
}

void CxComboBox::PreSubclassWindow() {
    AttachEdit();
    CComboBox::PreSubclassWindow();
}

// --- options ---

void CxComboBox::SetShowFullText(bool showFullText) {
    if (showFullText == m_showFullText) {
        return;
    }
    m_showFullText = showFullText;
    const int selected = m_hWnd ? GetCurSel() : CB_ERR;
    if (selected >= 0 && m_edit) {
        const std::string text = showFullText ? GetLBText(selected) : GetItemCode(selected);
        ::SetWindowTextA(m_edit, text.c_str());
    }
}

void CxComboBox::SetMinVisibleItems(int count) {
    m_minVisibleItems = count;
    if (SendMessage(CB_SETMINVISIBLE, count)) {
        return;
    }
    // Controls older than version 6 take the height of the open list from the height of the window.
    const RECT field = GetWindowRect();
    const int itemHeight = static_cast<int>(SendMessage(CB_GETITEMHEIGHT, 0));
    const int listHeight = count * itemHeight + 2 * GetSystemMetrics(SM_CYBORDER);
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, field.right - field.left, field.bottom - field.top + listHeight,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

int CxComboBox::GetMinVisibleItems() const {
    const int count = static_cast<int>(SendMessage(CB_GETMINVISIBLE));
    return count > 0 ? count : m_minVisibleItems;
}

// --- reporting selections ---

LRESULT CxComboBox::ListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CxComboBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CB_GETCURSEL && m_edit) {
        return GetSelectedIndex();
    }
    std::string line;  // a copy: the system may change it in place
    if ((message == CB_ADDSTRING || message == CB_INSERTSTRING) && lParam && ChangesCase()) {
        line = reinterpret_cast<const char*>(lParam);
    }
    WindowWatch watch(this);
    ++m_messageDepth;
    const LRESULT result = CComboBox::WindowProc(message, wParam, lParam);
    if (!watch.WindowAlive()) {
        return result;
    }
    --m_messageDepth;
    switch (message) {
        case CB_SETCURSEL:
        case CB_SELECTSTRING:
            if (message == CB_SETCURSEL || result >= 0) {
                m_selected = static_cast<int>(ListMessage(CB_GETCURSEL));
            }
            Report();
            break;
        case CB_ADDSTRING:
        case CB_RESETCONTENT:
        case CB_INSERTSTRING:
        case CB_DELETESTRING:
            if (ChangesCase()) {
                KeepLine(message, message == CB_DELETESTRING ? static_cast<LRESULT>(wParam) : result, line);
            }
            m_selected = static_cast<int>(ListMessage(CB_GETCURSEL));
            break;
        case WM_SETTEXT:
            FollowText();
            break;
        case WM_COMMAND:
            if (HIWORD(wParam) == EN_CHANGE && reinterpret_cast<HWND>(lParam) == m_edit) {
                FollowText();
            }
            break;
        case WM_CREATE:
            if (result != -1 && !m_edit) {
                // A control created by code gets its edit part only now.
                AttachEdit();
            }
            break;
        default:
            break;
    }
    if (watch.WindowAlive()) {
        AfterOpening();
    }
    return result;
}

// The dialog asks the host when a box is entered, and the host may take the dialog away. The system's control
// and dialog go on writing to themselves after they have moved the keyboard, so the report comes behind that.
bool CxComboBox::OnFocusReport() {
    const HWND dialog = NearestDialog(m_hWnd);
    if (m_messageDepth == 0 || !dialog) {
        return false;
    }
    ::PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), CBN_SETFOCUS),
                   reinterpret_cast<LPARAM>(m_hWnd));
    return true;
}

void CxComboBox::Report() {
    const WindowWatch watch(this);
    m_reporting = true;
    NotifyDialog(CBN_SELCHANGE);
    if (watch.WindowAlive()) {
        m_reporting = false;
    }
}

// The system reports a line picked from the open list before it shows it, while the dialog reads what is
// shown. A report from elsewhere, which comes in no message of this control, is about the text that stands
// there already.
bool CxComboBox::OnOperatorSelection() {
    m_opening = false;
    const int selected = static_cast<int>(ListMessage(CB_GETCURSEL));
    if (m_messageDepth > 0 && !m_reporting && selected >= 0) {
        SelectQuietly(selected);
    }
    return false;  // the dialog wants to know as well
}

void CxComboBox::NotifyDialog(UINT notification) const {
    if (HWND dialog = NearestDialog(m_hWnd)) {
        ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), notification),
                       reinterpret_cast<LPARAM>(m_hWnd));
    }
}

// --- the open list ---

bool CxComboBox::OnOpening() {
    m_before = KeepText();
    m_opening = true;
    return false;  // the dialog may want to know as well
}

// The system opens the list at the first line that begins with the text, and shows that line: account 100010
// for 10001. What stood there stays.
void CxComboBox::AfterOpening() {
    if (!m_opening || m_messageDepth > 0) {
        return;
    }
    m_opening = false;
    if (ListMessage(CB_GETDROPPEDSTATE)) {
        if (KeepText().text != m_before->text) {
            RestoreText(*m_before);
        }
        if (const int shown = GetCurrentIndex(); shown >= 0) {
            SelectInList(shown);
        }
    }
}

// Closes the list; what stood there before it was opened comes back, and is reported where it differs.
void CxComboBox::GiveBack() {
    const WindowWatch watch(this);
    ShowDropDown(false);
    if (!watch.WindowAlive() || !m_before) {
        return;
    }
    const KeptText left = KeepText();
    if (left.text != m_before->text || left.selected != m_before->selected) {
        RestoreText(*m_before);
        Report();
    }
}

// --- keys and clicks ---

BOOL CxComboBox::PreTranslateMessage(MSG* message) {
    if (m_hWnd && (message->hwnd == m_hWnd || (m_edit && message->hwnd == m_edit))) {
        switch (message->message) {
            case WM_KEYDOWN:
                m_typing = message->wParam != VK_DELETE && message->wParam != VK_BACK;
                break;
            case WM_LBUTTONDOWN:
                SetTimer(kClickTimer, GetDoubleClickTime());
                m_clickTimerRunning = true;
                break;
            case WM_LBUTTONUP: {
                const RECT client = GetClientRect();
                if (m_clickTimerRunning && PtInRect(&client, PackedPoint(message->lParam))) {
                    m_clickPending = true;
                    m_clickKeys = message->wParam;
                    m_clickPoint = message->lParam;
                } else {
                    StopClickTimer();
                }
                break;
            }
            case WM_LBUTTONDBLCLK:
            case WM_MOUSELEAVE:
                StopClickTimer();
                break;
            default:
                break;
        }
    }
    return CComboBox::PreTranslateMessage(message);
}

void CxComboBox::StopClickTimer() {
    if (m_clickTimerRunning) {
        KillTimer(kClickTimer);
    }
    m_clickTimerRunning = false;
    m_clickPending = false;
}

void CxComboBox::OnTimer(UINT_PTR id) {
    if (m_clickPending) {
        StopClickTimer();
        WindowWatch watch(this);
        SendMessage(g_uLButtonClick, m_clickKeys, m_clickPoint);  // x in the low half, y in the high one
        if (!watch.WindowAlive()) {
            return;
        }
    }
    CComboBox::OnTimer(id);
}

void CxComboBox::OnDestroy() {
    StopClickTimer();
    CComboBox::OnDestroy();
}

BOOL CxComboBox::OnSetCursor(HWND window, UINT hitTest, UINT message) {
    if (m_listOnly && hitTest == HTCLIENT) {
        ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW)));
        return TRUE;
    }
    return CComboBox::OnSetCursor(window, hitTest, message);
}
