#include "desk/list_pane.h"

#include "services/wide_text.h"
#include "services/wording.h"

#include <stdexcept>

namespace {

constexpr int kHeadingHeight = 18;
constexpr COLORREF kMarkedColour = RGB(255, 242, 204);
constexpr wchar_t kUpwards[] = L" \u25b2";
constexpr wchar_t kDownwards[] = L" \u25bc";

HWND MakeChild(const wchar_t* className, DWORD style, DWORD exStyle, HWND parent, unsigned id, HFONT font) {
    HWND window = CreateWindowExW(exStyle, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0, parent,
                                  reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
                                  GetModuleHandleW(nullptr), nullptr);
    if (!window) {
        throw std::runtime_error("a list cannot be made (error " + std::to_string(GetLastError()) + ")");
    }
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return window;
}

}  // namespace

ListPane::ListPane(DeskList& list, HWND parent, unsigned id, HFONT font)
    : m_model(list),
      m_heading(MakeChild(L"STATIC", SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX, 0, parent, 0, font)),
      m_list(MakeChild(WC_LISTVIEWW,
                       WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS,
                       WS_EX_CLIENTEDGE, parent, id, font)) {
    SendMessageW(m_list, LVM_SETUNICODEFORMAT, TRUE, 0);
    SendMessageW(m_list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
                 LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP | LVS_EX_DOUBLEBUFFER);
    MakeColumns();
}

void ListPane::MakeColumns() {
    int index = 0;
    for (const DeskColumn& column : m_model.Columns()) {
        std::wstring title = Wide(Say(column.title));
        LVCOLUMNW item{};
        item.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        item.fmt = column.number ? LVCFMT_RIGHT : LVCFMT_LEFT;
        item.cx = Scaled(column.width);
        item.pszText = title.data();
        SendMessageW(m_list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index++),
                     reinterpret_cast<LPARAM>(&item));
    }
}

void ListPane::Place(const PaneBox& box) {
    const int heading = Scaled(kHeadingHeight);
    const int width = box.right - box.left;
    // Pixels are not carried along: a list view's header and scroll bars would stay where they were.
    constexpr UINT kFlags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS;
    SetWindowPos(m_heading, nullptr, box.left + Scaled(4), box.top, width - Scaled(4), heading, kFlags);
    SetWindowPos(m_list, nullptr, box.left, box.top + heading, width, box.bottom - box.top - heading, kFlags);
}

const void* ListPane::Selected() const {
    const int index = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    return index < 0 ? nullptr : m_model.Row(static_cast<std::size_t>(index));
}

void ListPane::Select(int index) {
    ListView_SetItemState(m_list, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(m_list, index, FALSE);
}

void ListPane::Reveal(const void* row) {
    if (const int index = m_model.Find(row); index >= 0) {
        Select(index);
    }
}

void ListPane::Reload(bool follow) {
    const void* selected = Selected();
    const std::size_t before = m_model.Count();
    m_model.Reload();
    if (follow && m_model.Count() > before) {
        selected = nullptr;
    }
    Show(selected, false);
    if (follow && !selected && m_model.Count() > 0) {
        Select(static_cast<int>(m_model.Count()) - 1);
    }
}

// The rows may all have moved: the selection, which the list view keeps by place, goes with its row.
void ListPane::Show(const void* selected, bool reveal) {
    constexpr UINT kSelection = LVIS_SELECTED | LVIS_FOCUSED;
    const int count = static_cast<int>(m_model.Count());
    const int was = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    const int index = m_model.Find(selected);
    if (was >= 0 && was != index) {
        ListView_SetItemState(m_list, was, 0, kSelection);
    }
    ListView_SetItemCountEx(m_list, count, LVSICF_NOSCROLL);
    if (index >= 0 && index != was) {
        ListView_SetItemState(m_list, index, kSelection, kSelection);
    }
    if (index >= 0 && reveal) {
        ListView_EnsureVisible(m_list, index, FALSE);
    }
    InvalidateRect(m_list, nullptr, FALSE);
    const std::string name = Say(m_model.Name());
    SetWindowTextW(m_heading, Wide(name + " (" + std::to_string(count) + ")").c_str());
    SetWindowTextW(m_list, Wide(name).c_str());  // for who has the screen read out
}

void ListPane::ShowSortMark(int column, bool show) {
    if (column < 0) {
        return;
    }
    std::wstring title = Wide(Say(m_model.Columns()[static_cast<std::size_t>(column)].title));
    if (show) {
        title += m_model.Descending() ? kDownwards : kUpwards;
    }
    LVCOLUMNW item{};
    item.mask = LVCF_TEXT;
    item.pszText = title.data();
    SendMessageW(m_list, LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
}

void ListPane::SayAnew() {
    for (int i = 0; i < static_cast<int>(m_model.Columns().size()); ++i) {
        ShowSortMark(i, i == m_model.SortColumn());
    }
    Show(Selected(), false);
}

void ListPane::SortBy(int column) {
    const void* selected = Selected();
    ShowSortMark(m_model.SortColumn(), false);
    m_model.SortBy(column, column == m_model.SortColumn() && !m_model.Descending());
    ShowSortMark(m_model.SortColumn(), true);
    Show(selected, true);
}

void ListPane::Apply(const DeskSettings::List& settings) {
    int index = 0;
    if (settings.widths.size() == m_model.Columns().size()) {
        for (const int width : settings.widths) {
            ListView_SetColumnWidth(m_list, index++, Scaled(width));
        }
    }
    m_model.SortBy(settings.sortColumn, settings.descending);
    ShowSortMark(m_model.SortColumn(), true);
    Show(nullptr, false);
}

DeskSettings::List ListPane::Settings() const {
    DeskSettings::List settings{{}, m_model.SortColumn(), m_model.Descending()};
    for (int i = 0; i < static_cast<int>(m_model.Columns().size()); ++i) {
        settings.widths.push_back(Unscaled(ListView_GetColumnWidth(m_list, i)));
    }
    return settings;
}

LRESULT ListPane::OnNotify(NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW: {
            LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
            if (item.mask & LVIF_TEXT) {
                m_cell = Wide(m_model.Text(static_cast<std::size_t>(item.iItem),
                                           static_cast<std::size_t>(item.iSubItem)));
                item.pszText = m_cell.data();
            }
            return 0;
        }
        case LVN_COLUMNCLICK:
            SortBy(reinterpret_cast<NMLISTVIEW&>(header).iSubItem);
            return 0;
        case LVN_ODFINDITEMW:
            return FindText(reinterpret_cast<NMLVFINDITEMW&>(header));
        case NM_CUSTOMDRAW: {
            auto& draw = reinterpret_cast<NMLVCUSTOMDRAW&>(header);
            if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) {
                return m_model.marked ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
            }
            const void* row = m_model.Row(draw.nmcd.dwItemSpec);
            if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && row && m_model.marked(row)) {
                draw.clrTextBk = kMarkedColour;
            }
            return CDRF_DODEFAULT;
        }
        default:
            return 0;
    }
}

// Typing the beginning of a row's first cell goes to that row.
int ListPane::FindText(const NMLVFINDITEMW& find) const {
    if (!(find.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || !find.lvfi.psz) {
        return -1;
    }
    const std::wstring wanted = find.lvfi.psz;
    const int count = static_cast<int>(m_model.Count());
    for (int step = 0; step < count; ++step) {
        const int index = (find.iStart + step) % count;
        const std::wstring text = Wide(m_model.Text(static_cast<std::size_t>(index), 0));
        if (text.size() >= wanted.size() && _wcsnicmp(text.c_str(), wanted.c_str(), wanted.size()) == 0) {
            return index;
        }
    }
    return -1;
}

POINT ListPane::MenuPlace() const {
    RECT row{0, 0, 0, 0};
    const int index = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    if (index >= 0) {
        ListView_EnsureVisible(m_list, index, FALSE);
        ListView_GetItemRect(m_list, index, &row, LVIR_LABEL);
    }
    POINT place{row.left + Scaled(8), row.bottom};
    ClientToScreen(m_list, &place);
    return place;
}
