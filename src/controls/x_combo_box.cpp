#include "controls/x_combo_box.h"

#include "framework/guard.h"
#include "framework/owned_handle.h"
#include "framework/window_helpers.h"

#include <algorithm>
#include <array>
#include <cstring>

const UINT g_uLButtonClick = RegisterWindowMessageA("WM_LBUTTONCLK");

namespace {

constexpr UINT_PTR kClickTimer = 1;
constexpr UINT_PTR kEditSubclass = 1;
// Longer than any code and name of a record; what is typed beyond it is of no use.
constexpr int kMaxText = 255;

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

bool IsSystemLeadByte(unsigned char byte) {
    return IsDBCSLeadByteEx(CP_ACP, byte) != FALSE;
}

bool SystemHasLeadBytes() {
    CPINFO info{};
    return GetCPInfo(CP_ACP, &info) && info.MaxCharSize > 1;
}

HWND NearestDialog(HWND control) {
    for (HWND window = GetParent(control); window; window = GetParent(window)) {
        if (HasClass(window, "#32770")) {
            return window;
        }
    }
    return nullptr;
}

std::string ToAnsi(const std::string& text) {
    return text;
}

std::string ToAnsi(const std::wstring& text) {
    const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0,
                                           nullptr, nullptr);
    std::string ansi(static_cast<std::size_t>(std::max(length, 0)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), ansi.data(), length, nullptr,
                        nullptr);
    return ansi;
}

int ReadText(HWND window, char* buffer, int size) {
    return ::GetWindowTextA(window, buffer, size);
}

int ReadText(HWND window, wchar_t* buffer, int size) {
    return ::GetWindowTextW(window, buffer, size);
}

}  // namespace

BEGIN_MESSAGE_MAP(CxComboBox, CComboBox)
ON_WM_TIMER()
ON_WM_DESTROY()
ON_CBN_EDITUPDATE_REFLECT(&CxComboBox::OnEditUpdate)
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

void CxComboBox::AttachEdit() {
    m_format.isLeadByte = SystemHasLeadBytes() ? &IsSystemLeadByte : nullptr;
    m_edit = EditWindow();
    if (m_edit) {
        LimitText(kMaxText);
        SetWindowSubclass(m_edit, &CxComboBox::EditProc, kEditSubclass, reinterpret_cast<DWORD_PTR>(this));
    }
}

void CxComboBox::DetachEdit() {
    if (m_edit) {
        RemoveWindowSubclass(m_edit, &CxComboBox::EditProc, kEditSubclass);
        m_edit = nullptr;
    }
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

    // Emptying the list also forgets the selection and the text, so both are carried over.
    const int selected = static_cast<int>(ListMessage(CB_GETCURSEL));
    m_ownText = true;
    const std::string text = m_edit ? TextOf(m_edit) : std::string();
    EditSelection marked;
    if (m_edit) {
        ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&marked.start),
                       reinterpret_cast<LPARAM>(&marked.end));
    }
    FillList(AlignLines(std::move(lines), m_format), fitWidth);
    for (int i = 0; anyData && i < count; ++i) {
        ListMessage(CB_SETITEMDATA, i, data[static_cast<std::size_t>(i)]);
    }
    if (selected >= 0) {
        ListMessage(CB_SETCURSEL, selected);
    }
    if (m_edit) {
        const std::string shown = selected >= 0 && m_showFullText ? GetLBText(selected) : text;
        SetTextIfChanged(m_edit, shown);
        ::SendMessageA(m_edit, EM_SETSEL, marked.start, marked.end);
    }
    m_ownText = false;
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

std::string CxComboBox::GetCurrentCode() const {
    const int selected = GetCurSel();
    if (selected >= 0) {
        return GetItemCode(selected);
    }
    return std::string(CodeOf(GetWindowText(), m_format));
}

std::string CxComboBox::GetText() const {
    return m_showFullText ? GetCurrentCode() : GetWindowText();
}

// --- reporting selections ---

LRESULT CxComboBox::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CComboBox::WindowProc(message, wParam, lParam);
    if (message == CB_SETCURSEL || message == CB_SELECTSTRING) {
        NotifyDialog(CBN_SELCHANGE);
    } else if (message == WM_CREATE && result != -1 && !m_edit) {
        // A control created by code gets its edit part only now.
        AttachEdit();
    }
    return result;
}

void CxComboBox::NotifyDialog(UINT notification) const {
    if (HWND dialog = NearestDialog(m_hWnd)) {
        ::SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), notification),
                       reinterpret_cast<LPARAM>(m_hWnd));
    }
}

// --- the edit part ---

LRESULT CALLBACK CxComboBox::EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR object) {
    auto* comboBox = reinterpret_cast<CxComboBox*>(object);
    if (message == WM_NCDESTROY) {
        comboBox->DetachEdit();
        return DefSubclassProc(edit, message, wParam, lParam);
    }
    return Guarded([&] { return comboBox->OnEditMessage(message, wParam, lParam); }, LRESULT{0});
}

LRESULT CxComboBox::OnEditMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND edit = m_edit;
    switch (message) {
        case WM_SETTEXT:
            if (!lParam || !m_split || m_showFullText || m_ownText) {
                break;
            }
            return IsWindowUnicode(edit) ? OnSetEditText(wParam, reinterpret_cast<const wchar_t*>(lParam))
                                         : OnSetEditText(wParam, reinterpret_cast<const char*>(lParam));
        case WM_GETTEXT:
            if (!lParam || !m_showFullText || m_ownText) {
                break;
            }
            return IsWindowUnicode(edit) ? OnGetEditText(wParam, reinterpret_cast<wchar_t*>(lParam))
                                         : OnGetEditText(wParam, reinterpret_cast<char*>(lParam));
        case EM_SETSEL:
            // Nothing is highlighted where nothing can be typed over.
            if (m_listOnly || GetFocus() != edit) {
                wParam = static_cast<WPARAM>(lParam);
            }
            break;
        case WM_LBUTTONDOWN:
            if (m_listOnly) {
                return OpenFromEdit(wParam, lParam);
            }
            break;
        default:
            if (SwallowsEditMessage(message, wParam)) {
                return DefSubclassProc(edit, WM_NULL, wParam, lParam);
            }
            break;
    }
    return DefSubclassProc(edit, message, wParam, lParam);
}

bool CxComboBox::SwallowsEditMessage(UINT message, WPARAM wParam) const {
    switch (message) {
        case WM_CONTEXTMENU:
            return m_noContextMenu;
        case WM_KEYDOWN:
            return m_noDelete && wParam == VK_DELETE;
        case WM_CHAR:
            return m_listOnly || (m_noDelete && wParam == VK_BACK);
        case WM_CUT:
        case WM_PASTE:
            return m_listOnly || m_noDelete;
        case WM_UNDO:
        case EM_UNDO:
            return m_noUndo;
        default:
            return false;
    }
}

template <typename Char>
LRESULT CxComboBox::OnSetEditText(WPARAM wParam, const Char* text) {
    const std::basic_string_view<Char> line(text);
    const std::size_t codeLength = CodeLength(line, m_format);
    if (codeLength == line.size()) {
        return DefSubclassProc(m_edit, WM_SETTEXT, wParam, reinterpret_cast<LPARAM>(text));
    }
    const std::basic_string<Char> code(line.substr(0, codeLength));
    const LRESULT result =
        DefSubclassProc(m_edit, WM_SETTEXT, wParam, reinterpret_cast<LPARAM>(code.c_str()));
    MoveCaretToEnd(m_edit);
    NotifyDialog(CBN_EDITCHANGE);
    return result;
}

template <typename Char>
LRESULT CxComboBox::OnGetEditText(WPARAM size, Char* buffer) {
    const LRESULT length = DefSubclassProc(m_edit, WM_GETTEXT, size, reinterpret_cast<LPARAM>(buffer));
    if (length <= 0) {
        return length;
    }
    const std::basic_string_view<Char> line(buffer, static_cast<std::size_t>(length));
    const std::size_t codeLength = CodeLength(line, m_format);
    if (codeLength < line.size()) {
        buffer[codeLength] = 0;
    }
    return static_cast<LRESULT>(codeLength);
}

LRESULT CxComboBox::OpenFromEdit(WPARAM wParam, LPARAM lParam) {
    const HWND edit = m_edit;
    WindowWatch watch(this);
    SendMessage(WM_SETFOCUS);
    if (!watch.WindowAlive()) {
        return 0;
    }
    ShowDropDown(true);
    return ::IsWindow(edit) ? DefSubclassProc(edit, WM_NULL, wParam, lParam) : 0;
}

// --- type-ahead ---

bool CxComboBox::OnEditUpdate() {
    if (m_edit && !m_ownText) {
        IsWindowUnicode(m_edit) ? Complete<wchar_t>() : Complete<char>();
    }
    return false;  // the dialog may want to know as well
}

// In the edit's own character type, whose units its selection counts.
template <typename Char>
void CxComboBox::Complete() {
    std::array<Char, kMaxText + 1> buffer{};
    const int length = ReadText(m_edit, buffer.data(), static_cast<int>(buffer.size()));
    if (length == 0) {
        SetCurSel(-1);
        return;
    }
    if (!m_split || !m_typing) {
        return;
    }
    EditSelection typed;
    ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&typed.start),
                   reinterpret_cast<LPARAM>(&typed.end));
    const std::string text = ToAnsi(std::basic_string<Char>(buffer.data(), static_cast<std::size_t>(length)));
    const int found = FindString(-1, text);
    if (found >= 0) {
        // Already set texts are set again all the same: they may differ in case.
        m_ownText = true;
        ::SetWindowTextA(m_edit, GetItemCode(found).c_str());
        m_ownText = false;
    }
    const EditSelection marked = SelectionAfterCompletion(typed, length);
    ::SendMessageA(m_edit, EM_SETSEL, marked.start, marked.end);
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
