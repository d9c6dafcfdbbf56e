#include "controls/sele_sub_list_ctrl.h"

#include "framework/font.h"

namespace {
constexpr int kTextIndent = 5;
}

BEGIN_MESSAGE_MAP(CSeleSubListCtrl, CListCtrl)
ON_MESSAGE(WM_KEYDOWN, &CSeleSubListCtrl::OnKeyDown)
ON_WM_MOUSEMOVE()
ON_NOTIFY_REFLECT(NM_CLICK, &CSeleSubListCtrl::OnClick)
ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CSeleSubListCtrl::OnCustomDraw)
END_MESSAGE_MAP()

// Left and Right go from column to column; every other key walks the rows as it does in any list.
LRESULT CSeleSubListCtrl::OnKeyDown(WPARAM key, LPARAM) {
    if (key == VK_LEFT || key == VK_RIGHT) {
        SetHotCell(m_hotRow, std::clamp(m_hotColumn + (key == VK_RIGHT ? 1 : -1), 0, LastColumn()));
        return 0;
    }
    if (m_hotRow >= 0 && m_hotRow != FocusedRow()) {
        GoToCell(m_hotRow, m_hotColumn);  // the mouse has been elsewhere meanwhile
    }
    const LRESULT result = Default();
    if (const int row = FocusedRow(); m_hWnd && row >= 0 && row != m_hotRow) {
        SetHotCell(row, std::max(m_hotColumn, 0));
    }
    return result;
}

void CSeleSubListCtrl::GoToCell(int row, int column) {
    constexpr UINT kAll = LVIS_FOCUSED | LVIS_SELECTED;
    ListView_SetItemState(m_hWnd, -1, 0, kAll);
    ListView_SetItemState(m_hWnd, row, kAll, kAll);
    ListView_SetSelectionMark(m_hWnd, row);
    ListView_EnsureVisible(m_hWnd, row, FALSE);
    SetHotCell(row, column);
}

void CSeleSubListCtrl::TakeKeyboard() {
    GoToCell(std::max(FocusedRow(), 0), std::clamp(m_hotColumn, 0, LastColumn()));
    SetFocus();
}

std::string CSeleSubListCtrl::HotText() const {
    return m_hotRow >= 0 && m_hotColumn >= 0 && m_hotColumn <= LastColumn()
               ? GetItemText(m_hotRow, m_hotColumn)
               : std::string();
}

void CSeleSubListCtrl::OnMouseMove(UINT keys, POINT point) {
    POINT screen = point;
    ::ClientToScreen(m_hWnd, &screen);
    if (!MouseRestsAt(screen)) {
        int row = -1;
        int column = -1;
        SubItemHitTest(point, &row, &column);
        SetHotCell(row, column);
    }
    CListCtrl::OnMouseMove(keys, point);
}

void CSeleSubListCtrl::OnClick(NMHDR* notification, LRESULT* result) {
    const auto& click = *reinterpret_cast<const NMITEMACTIVATE*>(notification);
    SetHotCell(click.iItem, click.iSubItem);
    *result = 0;
}

void CSeleSubListCtrl::SetHotCell(int row, int column) {
    const RECT old = CellRect(m_hotRow, m_hotColumn);
    ::InvalidateRect(m_hWnd, &old, TRUE);
    m_hotRow = row;
    m_hotColumn = column;
    const RECT hot = CellRect(m_hotRow, m_hotColumn);
    ::InvalidateRect(m_hWnd, &hot, TRUE);
}

RECT CSeleSubListCtrl::CellRect(int row, int column) const {
    RECT rect{};
    if (row < 0 || column < 0 ||
        !GetSubItemRect(row, column, column == 0 ? LVIR_LABEL : LVIR_BOUNDS, &rect)) {
        return RECT{};
    }
    return rect;
}

void CSeleSubListCtrl::OnCustomDraw(NMHDR* notification, LRESULT* result) {
    const auto& draw = *reinterpret_cast<const NMLVCUSTOMDRAW*>(notification);
    switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            *result = CDRF_NOTIFYITEMDRAW;
            break;
        case CDDS_ITEMPREPAINT:
            *result = CDRF_NOTIFYSUBITEMDRAW;
            break;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            PaintCell(draw.nmcd.hdc, static_cast<int>(draw.nmcd.dwItemSpec), draw.iSubItem);
            *result = CDRF_SKIPDEFAULT;
            break;
        default:
            *result = 0;
            break;
    }
}

void CSeleSubListCtrl::PaintCell(HDC dc, int row, int column) const {
    const std::string text = GetItemText(row, column);
    RECT cell = CellRect(row, column);
    ::FillRect(dc, &cell, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    const bool hot = row == m_hotRow && column == m_hotColumn;
    const COLORREF colour = ::GetTextColor(dc);
    if (hot) {
        ::FillRect(dc, &cell, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    } else if (ListView_GetItemState(m_hWnd, row, LVIS_SELECTED) != 0) {
        // The system's colour for a selected row is meant for a background that only the hot cell has.
        ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
    }
    cell.left += kTextIndent;
    const int former = ::SetBkMode(dc, TRANSPARENT);
    DrawWhole(dc, text, cell, 0);
    ::SetBkMode(dc, former);
    ::SetTextColor(dc, colour);
}
