#include "controls/x_combo_box.h"

#include "framework/owned_handle.h"
#include "framework/scoped_value.h"
#include "framework/trim_blanks.h"
#include "framework/window_helpers.h"
#include "trade/code_tables.h"

#include <algorithm>
#include <cstring>

const UINT g_uLButtonClick = RegisterWindowMessageA("WM_LBUTTONCLK");

namespace {

constexpr UINT_PTR kClickTimer = 1;

// The list part of a combo box paints and measures itself on every change unless it is told not to. The
// combo box itself is left alone: switching its redrawing on again would show a hidden one.
class ListRedrawOff {
public:
    explicit ListRedrawOff(HWND comboBox) {
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        if (GetComboBoxInfo(comboBox, &info)) {
            m_list = info.hwndList;
            ::SendMessageA(m_list, WM_SETREDRAW, FALSE, 0);
        }
    }
    ~ListRedrawOff() { ::SendMessageA(m_list, WM_SETREDRAW, TRUE, 0); }
    ListRedrawOff(const ListRedrawOff&) = delete;
    ListRedrawOff& operator=(const ListRedrawOff&) = delete;

private:
    HWND m_list = nullptr;
};

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
ON_CBN_EDITUPDATE_REFLECT(&CxComboBox::OnEditUpdate)
ON_CBN_SELCHANGE_REFLECT(&CxComboBox::OnOperatorSelection)
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

// --- items ---

LRESULT CxComboBox::ListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProc(message, wParam, lParam);
}

void CxComboBox::SetItems(std::vector<std::string> lines, bool fitWidth) {
    AlignedLines aligned;
    if (m_split) {
        aligned = AlignLines(std::move(lines), m_format);
    } else {
        aligned.lines = std::move(lines);
    }
    FillList(aligned, fitWidth && m_split);
}

void CxComboBox::SetLines(const std::vector<std::string>& lines) {
    ListRedrawOff redrawOff(m_hWnd);
    ListMessage(CB_RESETCONTENT);
    m_selected = -1;
    for (const std::string& line : lines) {
        ListMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

void CxComboBox::FillList(const AlignedLines& aligned, bool fitWidth) {
    SetLines(aligned.lines);
    if (!fitWidth) {
        return;
    }
    WindowDc dc(m_hWnd);
    SelectedObject font(dc.Get(), GetFont() ? GetFont() : GetStockObject(SYSTEM_FONT));
    const std::string blanks(aligned.longestCode + 1 + aligned.longestName, ' ');
    SIZE extent{};
    GetTextExtentPoint32A(dc.Get(), blanks.data(), static_cast<int>(blanks.size()), &extent);
    const DropDownMetrics metrics{GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CXVSCROLL)};
    const auto visible = static_cast<std::size_t>(std::max(GetMinVisibleItems(), 0));
    SetDroppedWidth(DropDownWidth(extent.cx, aligned.lines.size(), visible, metrics));
}

void CxComboBox::AlignColumns(bool fitWidth) {
    if (!m_split || !m_hWnd) {
        return;
    }
    const int count = static_cast<int>(ListMessage(CB_GETCOUNT));
    std::vector<std::string> lines;
    std::vector<LRESULT> data;
    lines.reserve(static_cast<std::size_t>(std::max(count, 0)));
    data.reserve(lines.capacity());
    bool anyData = false;
    for (int i = 0; i < count; ++i) {
        // Twice the length: it may count characters, of which each can take two bytes.
        const LRESULT length = std::max<LRESULT>(ListMessage(CB_GETLBTEXTLEN, i), 0);
        std::string line(static_cast<std::size_t>(2 * length), '\0');
        ListMessage(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(line.data()));
        line.resize(strnlen(line.data(), line.size()));
        lines.push_back(std::move(line));
        data.push_back(ListMessage(CB_GETITEMDATA, i));
        anyData = anyData || data.back() != 0;
    }

    const int selected = GetSelectedIndex();
    const KeptText kept = KeepText();
    FillList(AlignLines(std::move(lines), m_format), fitWidth);
    for (int i = 0; anyData && i < count; ++i) {
        ListMessage(CB_SETITEMDATA, i, data[static_cast<std::size_t>(i)]);
    }
    RestoreText(kept, selected);
}

void CxComboBox::ReplaceLines(const std::vector<std::string>& lines) {
    const int former = GetSelectedIndex();
    const std::string line = former >= 0 ? GetLBText(former) : std::string();
    std::ptrdiff_t equalBefore = 0;
    for (int i = 0; i < former; ++i) {
        equalBefore += GetLBText(i) == line;
    }
    const KeptText kept = KeepText();
    SetLines(lines);
    int selected = -1;
    if (former >= 0) {
        for (int i = 0; i < GetCount() && equalBefore >= 0; ++i) {
            if (lines[static_cast<std::size_t>(i)] == line) {
                selected = i;
                --equalBefore;
            }
        }
        selected = selected >= 0 ? selected : FindCode(std::string(CodeOf(line, m_format)));
    }
    RestoreText(kept, selected);
}

// Emptying the list also forgets the selection and the text, so both are carried over.
CxComboBox::KeptText CxComboBox::KeepText() {
    KeptText kept;
    if (m_edit) {
        const ScopedValue ownText(m_ownText, true);
        kept.text = TextOf(m_edit);
        ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&kept.marked.start),
                       reinterpret_cast<LPARAM>(&kept.marked.end));
    }
    return kept;
}

void CxComboBox::RestoreText(const KeptText& kept, int selected) {
    m_selected = selected;
    SelectInList(selected);
    if (m_edit) {
        const ScopedValue ownText(m_ownText, true);
        SetTextIfChanged(m_edit, selected >= 0 && m_showFullText ? GetLBText(selected) : kept.text);
        ::SendMessageA(m_edit, EM_SETSEL, kept.marked.start, kept.marked.end);
    }
}

int CxComboBox::WidestItem(HFONT font) const {
    WindowDc dc(m_hWnd);
    SelectedObject selected(dc.Get(),
                            font ? static_cast<HGDIOBJ>(font) : GetCurrentObject(dc.Get(), OBJ_FONT));
    LONG widest = 0;
    const int count = GetCount();
    for (int i = 0; i < count; ++i) {
        const std::string line = GetLBText(i);
        SIZE extent{};
        GetTextExtentPoint32A(dc.Get(), line.data(), static_cast<int>(line.size()), &extent);
        widest = std::max(widest, extent.cx);
    }
    return widest;
}

std::string CxComboBox::GetItemCode(int index) const {
    if (index < 0) {
        return {};
    }
    std::string line = GetLBText(index);
    line.resize(CodeLength(line, m_format));
    return line;
}

int CxComboBox::FindItemByCode(const std::string& code) const {
    const int found = FindString(-1, code);
    return found >= 0 && GetItemCode(found) == code ? found : -1;
}

int CxComboBox::FindCode(const std::string& code) const {
    int exact = -1;
    int similar = -1;
    const auto take = [&](int index) {
        const std::string found = GetItemCode(index);
        if (found == code) {
            exact = exact < 0 ? index : std::min(exact, index);
        } else if (EqualIgnoringCase(found, code)) {
            similar = similar < 0 ? index : std::min(similar, index);
        }
        return exact == index;
    };
    if (code.empty()) {
        return -1;
    }
    // A search goes on behind the last find and comes round to the first one again.
    if (m_format.separator != 0) {
        for (int last = -1, at; (at = FindString(last, code + m_format.separator)) > last && !take(at);) {
            last = at;
        }
    }
    for (int last = -1, at; (at = FindStringExact(last, code)) > last && !take(at);) {
        last = at;
    }
    return exact >= 0 ? exact : similar;
}

// --- what is shown ---

std::string CxComboBox::ShownCode() const {
    const ScopedValue ownText(m_ownText, true);
    const std::string text = m_edit ? TextOf(m_edit) : GetWindowText();
    return std::string(CodeOf(TrimBlanks(text), m_format));
}

// An upper-case box shows every code in upper case.
bool CxComboBox::IsSameCode(std::string_view shown, std::string_view code) const {
    const bool anyCase = (GetWindowLongA(m_hWnd, GWL_STYLE) & (CBS_UPPERCASE | CBS_LOWERCASE)) != 0;
    return anyCase ? EqualIgnoringCase(shown, TrimBlanks(code)) : shown == TrimBlanks(code);
}

bool CxComboBox::IsShown(int index) const {
    if (index < 0 || index >= GetCount()) {
        return false;
    }
    const std::string shown = ShownCode();
    const std::string code = GetItemCode(index);
    return IsSameCode(shown, code) ||
           (EqualIgnoringCase(shown, code) && GetItemCode(FindCode(shown)) != shown);
}

bool CxComboBox::Shows(std::string_view line) const {
    return IsSameCode(ShownCode(), CodeOf(TrimBlanks(line), m_format));
}

int CxComboBox::GetSelectedIndex() const {
    if (!m_edit) {
        return GetCurSel();
    }
    return IsShown(m_selected) ? m_selected : -1;
}

int CxComboBox::GetCurrentIndex() const {
    const int selected = GetSelectedIndex();
    return selected >= 0 ? selected : FindCode(ShownCode());
}

std::string CxComboBox::GetCurrentCode() const {
    const int index = GetCurrentIndex();
    return index >= 0 ? GetItemCode(index) : ShownCode();
}

void CxComboBox::SelectInList(int index) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(m_hWnd, &info) && ::SendMessageA(info.hwndList, LB_GETCURSEL, 0, 0) != index) {
        ::SendMessageA(info.hwndList, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
}

// The systems drop a selection at times of their own when the text changes; here it goes as soon as the text
// contradicts it, and not before. An open list shows where the typed text leads.
void CxComboBox::FollowText() {
    m_selected = GetSelectedIndex();
    if (!GetDroppedState()) {
        SelectInList(m_selected);
    }
}

void CxComboBox::SelectQuietly(int index) {
    ListMessage(CB_SETCURSEL, static_cast<WPARAM>(index));
    m_selected = static_cast<int>(ListMessage(CB_GETCURSEL));
}

std::string CxComboBox::GetText() const {
    return m_showFullText ? GetCurrentCode() : GetWindowText();
}

// --- reporting selections ---

LRESULT CxComboBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CB_GETCURSEL && m_edit) {
        return GetSelectedIndex();
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
            m_reporting = true;
            NotifyDialog(CBN_SELCHANGE);
            if (watch.WindowAlive()) {
                m_reporting = false;
            }
            break;
        case CB_RESETCONTENT:
        case CB_INSERTSTRING:
        case CB_DELETESTRING:
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
    return result;
}

// The system reports a line picked from the open list before it shows it, while the dialog reads what is
// shown. A report from elsewhere, which comes in no message of this control, is about the text that stands
// there already.
bool CxComboBox::OnOperatorSelection() {
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
