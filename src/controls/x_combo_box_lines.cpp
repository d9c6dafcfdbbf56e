// The lines of the type-ahead box: filling, aligning and finding them, and which of them is shown.

#include "controls/x_combo_box.h"
#include "framework/owned_handle.h"
#include "framework/scoped_value.h"
#include "framework/trim_blanks.h"
#include "framework/window_helpers.h"
#include "trade/code_tables.h"

#include <algorithm>

namespace {

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

}  // namespace

int WidestLine(HWND window, HFONT font, const std::vector<std::string>& lines) {
    const WindowDc dc(window);
    const SelectedObject selected(dc.Get(),
                                  font ? static_cast<HGDIOBJ>(font) : GetCurrentObject(dc.Get(), OBJ_FONT));
    LONG widest = 0;
    for (const std::string& line : lines) {
        SIZE extent{};
        GetTextExtentPoint32A(dc.Get(), line.data(), static_cast<int>(line.size()), &extent);
        widest = std::max(widest, extent.cx);
    }
    return static_cast<int>(widest);
}

void CxComboBox::SetItems(std::vector<std::string> lines, bool fitWidth) {
    AlignedLines aligned;
    if (m_split) {
        aligned = AlignLines(std::move(lines), m_format);
    } else {
        aligned.lines = std::move(lines);
    }
    FillLines(aligned.lines);
    FitList(aligned.lines, fitWidth && m_split ? aligned.longestCode + 1 + aligned.longestName : 0);
}

void CxComboBox::SetLines(const std::vector<std::string>& lines) {
    FillLines(lines);
    FitList(lines, 0);
}

void CxComboBox::FillLines(const std::vector<std::string>& lines) {
    const ListRedrawOff redrawOff(m_hWnd);
    ListMessage(CB_RESETCONTENT);
    m_selected = -1;
    m_lines = ChangesCase() ? lines : std::vector<std::string>();
    for (const std::string& line : lines) {
        ListMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

// The open list takes the widest line, and so many blanks.
void CxComboBox::FitList(const std::vector<std::string>& lines, std::size_t blanks) {
    const HFONT font = GetFont() ? GetFont() : static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    const int width =
        std::max(WidestLine(m_hWnd, font, lines), WidestLine(m_hWnd, font, {std::string(blanks, ' ')}));
    const DropDownMetrics metrics{GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CXVSCROLL)};
    const auto visible = static_cast<std::size_t>(std::max(GetMinVisibleItems(), 0));
    SetDroppedWidth(DropDownWidth(width, lines.size(), visible, metrics));
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
        lines.push_back(LineAt(i));
        data.push_back(ListMessage(CB_GETITEMDATA, i));
        anyData = anyData || data.back() != 0;
    }

    const KeptText kept = KeepText();
    const AlignedLines aligned = AlignLines(std::move(lines), m_format);
    FillLines(aligned.lines);
    if (fitWidth) {
        FitList(aligned.lines, aligned.longestCode + 1 + aligned.longestName);
    }
    for (int i = 0; anyData && i < count; ++i) {
        ListMessage(CB_SETITEMDATA, i, data[static_cast<std::size_t>(i)]);
    }
    RestoreText(kept);
}

void CxComboBox::ReplaceLines(const std::vector<std::string>& lines) {
    KeptText kept = KeepText();
    const std::string line = kept.selected >= 0 ? LineAt(kept.selected) : std::string();
    int equalBefore = 0;
    for (int i = 0; i < kept.selected; ++i) {
        equalBefore += LineAt(i) == line;
    }
    SetLines(lines);
    if (kept.selected >= 0) {
        kept.selected = FindCode(std::string(CodeOf(line, m_format)));
        for (std::size_t i = 0; i < lines.size() && equalBefore >= 0; ++i) {
            if (lines[i] == line) {
                kept.selected = static_cast<int>(i);
                --equalBefore;
            }
        }
    }
    RestoreText(kept);
}

// Emptying the list also forgets the selection and the text, so both are carried over.
CxComboBox::KeptText CxComboBox::KeepText() const {
    KeptText kept;
    kept.selected = GetSelectedIndex();
    if (m_edit) {
        const ScopedValue ownText(m_ownText, true);
        kept.text = TextOf(m_edit);
        ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&kept.marked.start),
                       reinterpret_cast<LPARAM>(&kept.marked.end));
    }
    return kept;
}

void CxComboBox::RestoreText(const KeptText& kept) {
    m_selected = kept.selected;
    SelectInList(kept.selected);
    if (m_edit) {
        const ScopedValue ownText(m_ownText, true);
        const bool fullLine = kept.selected >= 0 && m_showFullText;
        SetTextIfChanged(m_edit, fullLine ? GetLBText(kept.selected) : kept.text);
        const bool whole = kept.marked.start == 0 && kept.marked.end == ::GetWindowTextLengthW(m_edit);
        ::SendMessageA(m_edit, EM_SETSEL, kept.marked.start, whole ? -1 : kept.marked.end);
    }
}

int CxComboBox::WidestItem(HFONT font) const {
    std::vector<std::string> lines;
    for (int i = 0; i < GetCount(); ++i) {
        lines.push_back(GetLBText(i));
    }
    return WidestLine(m_hWnd, font, lines);
}

bool CxComboBox::ChangesCase() const {
    return (GetWindowLongA(m_hWnd, GWL_STYLE) & (CBS_UPPERCASE | CBS_LOWERCASE)) != 0;
}

std::string CxComboBox::LineAt(int index) const {
    const auto place = static_cast<std::size_t>(index);
    return place < m_lines.size() ? m_lines[place] : GetLBText(index);
}

void CxComboBox::KeepLine(UINT message, LRESULT index, const std::string& line) {
    const auto place = static_cast<std::size_t>(std::max<LRESULT>(index, 0));
    if (message == CB_RESETCONTENT) {
        m_lines.clear();
    } else if (message == CB_DELETESTRING) {
        if (place < m_lines.size()) {
            m_lines.erase(m_lines.begin() + static_cast<std::ptrdiff_t>(place));
        }
    } else if (index >= 0 && place <= m_lines.size()) {
        m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(place), line);
    }
}

std::string CxComboBox::GetItemCode(int index) const {
    if (index < 0) {
        return {};
    }
    std::string line = LineAt(index);
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
    return ChangesCase() ? EqualIgnoringCase(shown, TrimBlanks(code)) : shown == TrimBlanks(code);
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
