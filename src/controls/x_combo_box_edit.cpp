// The edit part of the type-ahead box: what it takes and shows, and the completion of what is typed.

#include "controls/x_combo_box.h"
#include "framework/guard.h"
#include "framework/window_helpers.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace {

// Longer than any code and name of a record; what is typed beyond it is of no use.
constexpr int kMaxText = 255;
// As an end of a marked range: behind any text.
constexpr int kTextEnd = 0x7FFF;
constexpr WPARAM kSelectAll = 1;  // the character of Ctrl+A

bool IsSystemLeadByte(unsigned char byte) {
    return IsDBCSLeadByteEx(CP_ACP, byte) != FALSE;
}

bool SystemHasLeadBytes() {
    CPINFO info{};
    return GetCPInfo(CP_ACP, &info) && info.MaxCharSize > 1;
}

// The edit parts that are attached. A map costs a message next to nothing, while the system's own subclassing
// asks its server for the window's properties on every one.
struct AttachedEdit {
    CxComboBox* comboBox;  // null when its object is gone
    WNDPROC former;
};

std::unordered_map<HWND, AttachedEdit>& Edits() {
    static std::unordered_map<HWND, AttachedEdit> edits;
    return edits;
}

// In the window's own character set, so that its messages arrive unconverted.
WNDPROC CurrentProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(IsWindowUnicode(window) ? GetWindowLongW(window, GWL_WNDPROC)
                                                             : GetWindowLongA(window, GWL_WNDPROC));
}

WNDPROC ReplaceProcedure(HWND window, WNDPROC procedure) {
    const auto value = reinterpret_cast<LONG>(procedure);
    return reinterpret_cast<WNDPROC>(IsWindowUnicode(window) ? SetWindowLongW(window, GWL_WNDPROC, value)
                                                             : SetWindowLongA(window, GWL_WNDPROC, value));
}

LRESULT CallFormer(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = Edits().find(edit);
    if (found == Edits().end()) {
        return 0;
    }
    const WNDPROC former = found->second.former;
    return IsWindowUnicode(edit) ? CallWindowProcW(former, edit, message, wParam, lParam)
                                 : CallWindowProcA(former, edit, message, wParam, lParam);
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

// --- attaching ---

void CxComboBox::AttachEdit() {
    m_format.isLeadByte = SystemHasLeadBytes() ? &IsSystemLeadByte : nullptr;
    m_edit = EditWindow();
    if (m_edit) {
        LimitText(kMaxText);
        m_editFocused = GetFocus() == m_edit;
        Edits()[m_edit] = {this, ReplaceProcedure(m_edit, &CxComboBox::EditProc)};
    }
}

void CxComboBox::DetachEdit() {
    const auto found = m_edit ? Edits().find(m_edit) : Edits().end();
    m_edit = nullptr;
    if (found == Edits().end()) {
        return;
    }
    const HWND edit = found->first;
    if (CurrentProcedure(edit) == &CxComboBox::EditProc) {
        ReplaceProcedure(edit, found->second.former);
        Edits().erase(found);
    } else {
        // Somebody subclassed the edit after this and goes on calling its procedure.
        found->second.comboBox = nullptr;
    }
}

// --- the edit part ---

LRESULT CALLBACK CxComboBox::EditProc(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = Edits().find(edit);
    CxComboBox* comboBox = found == Edits().end() ? nullptr : found->second.comboBox;
    if (message == WM_NCDESTROY) {
        if (comboBox) {
            comboBox->m_edit = nullptr;
        }
        const LRESULT result = CallFormer(edit, message, wParam, lParam);
        Edits().erase(edit);
        return result;
    }
    if (!comboBox) {
        return CallFormer(edit, message, wParam, lParam);
    }
    return Guarded(
        {"the edit of a combo box", message, wParam},
        [&] {
            const RunningCalls calls(*comboBox);
            return comboBox->OnEditMessage(message, wParam, lParam);
        },
        LRESULT{0});
}

LRESULT CxComboBox::OnEditMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const WindowWatch watch(this);
    ++m_messageDepth;
    m_clicking = m_clicking || message == WM_LBUTTONDOWN;
    const LRESULT result = HandleEditMessage(message, wParam, lParam);
    if (!watch.WindowAlive()) {
        return result;
    }
    --m_messageDepth;
    m_clicking = m_clicking && message != WM_LBUTTONDOWN;
    if (message == WM_SETTEXT && m_messageDepth == 0) {
        FollowText();  // a program's; the system's own comes in other messages and before its selection
    }
    AfterOpening();
    return result;
}

LRESULT CxComboBox::HandleEditMessage(UINT message, WPARAM wParam, LPARAM lParam) {
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
            return MarkText(static_cast<int>(wParam), static_cast<int>(lParam));
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            return OnEditFocus(message, wParam, lParam);
        case WM_LBUTTONDOWN:
            if (m_listOnly) {
                return OpenFromEdit(wParam, lParam);
            }
            break;
        case WM_KEYDOWN:
            if (wParam == VK_ESCAPE && ListMessage(CB_GETDROPPEDSTATE)) {
                GiveBack();
                return 0;
            }
            break;
        case WM_CHAR:
            if (wParam == kSelectAll) {
                return MarkText(0, -1);
            }
            break;
        default:
            break;
    }
    if (SwallowsEditMessage(message, wParam)) {
        message = WM_NULL;
    }
    return CallFormer(edit, message, wParam, lParam);
}

bool CxComboBox::SwallowsEditMessage(UINT message, WPARAM wParam) const {
    switch (message) {
        case WM_CONTEXTMENU:
            return m_noContextMenu || m_listOnly;
        case WM_KEYDOWN:
            // The edit pastes by this key without a message.
            return (wParam == VK_DELETE || (wParam == VK_INSERT && GetKeyState(VK_SHIFT) < 0)) &&
                   (m_noDelete || m_listOnly);
        case WM_CHAR:
            return m_listOnly || (m_noDelete && wParam == VK_BACK) || wParam == VK_ESCAPE;
        case WM_CUT:
        case WM_PASTE:
            return m_listOnly || m_noDelete;
        case WM_UNDO:
        case EM_UNDO:
            return m_listOnly || m_noUndo;
        case WM_CLEAR:
        case EM_REPLACESEL:
        case WM_UNICHAR:
        case WM_IME_CHAR:
        case WM_IME_COMPOSITION:
            return m_listOnly;
        default:
            return false;
    }
}

LRESULT CxComboBox::MarkText(int start, int end) {
    const bool whole = start == 0 && (end < 0 || end >= kTextEnd);
    if (m_listOnly || !m_editFocused) {
        // Nothing is highlighted where nothing can be typed over.
        start = end = whole ? 0 : end;
    } else if (whole) {
        // From the end: the caret, and with it what is in view, is at the first character.
        start = kTextEnd;
        end = 0;
    }
    return CallFormer(m_edit, EM_SETSEL, static_cast<WPARAM>(start), end);
}

// What is typed replaces the text that the operator comes back to, unless a click says where to type.
LRESULT CxComboBox::OnEditFocus(UINT message, WPARAM wParam, LPARAM lParam) {
    const WindowWatch watch(this);
    m_editFocused = message == WM_SETFOCUS;
    const LRESULT result = CallFormer(m_edit, message, wParam, lParam);
    if (watch.WindowAlive() && m_edit && !(m_editFocused && m_clicking)) {
        FollowText();
        MarkText(0, -1);
    }
    return result;
}

template <typename Char>
LRESULT CxComboBox::OnSetEditText(WPARAM wParam, const Char* text) {
    const std::basic_string_view<Char> line(text);
    const std::size_t codeLength = CodeLength(line, m_format);
    if (codeLength == line.size()) {
        return CallFormer(m_edit, WM_SETTEXT, wParam, reinterpret_cast<LPARAM>(text));
    }
    const std::basic_string<Char> code(line.substr(0, codeLength));
    const LRESULT result = CallFormer(m_edit, WM_SETTEXT, wParam, reinterpret_cast<LPARAM>(code.c_str()));
    MoveCaretToEnd(m_edit);
    if (CallFormer(m_edit, EM_GETFIRSTVISIBLELINE, 0, 0) > 0) {
        MarkText(0, 0);  // a code begins in view, also a long one
    }
    NotifyDialog(CBN_EDITCHANGE);
    return result;
}

template <typename Char>
LRESULT CxComboBox::OnGetEditText(WPARAM size, Char* buffer) {
    const LRESULT length = CallFormer(m_edit, WM_GETTEXT, size, reinterpret_cast<LPARAM>(buffer));
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
    return ::IsWindow(edit) ? CallFormer(edit, WM_NULL, wParam, lParam) : 0;
}

// --- type-ahead ---

bool CxComboBox::OnEditUpdate() {
    if (m_edit && !m_ownText) {
        m_opening = false;
        FollowText();
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
    // A longer text than can be typed is a program's, and is read in part only.
    if (!m_split || !m_typing || length >= kMaxText) {
        return;
    }
    EditSelection typed;
    ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&typed.start),
                   reinterpret_cast<LPARAM>(&typed.end));
    const std::string text = ToAnsi(std::basic_string<Char>(buffer.data(), static_cast<std::size_t>(length)));
    // A code that was typed whole is that code, also where a longer one that begins so is listed before it.
    const int exact = FindCode(text);
    const int found = exact >= 0 ? exact : FindString(-1, text);
    if (found >= 0) {
        // Already set texts are set again all the same: they may differ in case.
        m_ownText = true;
        ::SetWindowTextA(m_edit, GetItemCode(found).c_str());
        m_ownText = false;
    }
    const EditSelection marked = SelectionAfterCompletion(typed, length);
    ::SendMessageA(m_edit, EM_SETSEL, marked.start, marked.end);
}
