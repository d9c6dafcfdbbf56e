#pragma once

#include "controls/sele_part.h"

#include <algorithm>
#include <string>

// The list of contracts or strikes of the contract popup. It paints its cells itself and highlights the hot
// one: that under the mouse, or the one that was clicked, or that the keys have walked to.
class CSeleSubListCtrl : public CSelePart<CListCtrl> {
public:
    // A cell's rectangle in client coordinates, the same for painting and for repainting. Empty for a cell
    // that does not exist.
    RECT CellRect(int row, int column) const;

    // Makes an existing cell the hot one, selected and in view, from which the keys go on.
    void GoToCell(int row, int column);
    // Takes the keyboard to the cell where the keys were before, the first one in a fresh list.
    void TakeKeyboard();
    // What the hot cell shows; empty when there is none.
    std::string HotText() const;

protected:
    LRESULT OnKeyDown(WPARAM key, LPARAM flags);
    void OnMouseMove(UINT keys, POINT point);
    void OnClick(NMHDR* notification, LRESULT* result);
    void OnCustomDraw(NMHDR* notification, LRESULT* result);

    DECLARE_MESSAGE_MAP()

private:
    int LastColumn() const { return std::max(GetColumnCount() - 1, 0); }
    int FocusedRow() const { return ListView_GetNextItem(m_hWnd, -1, LVNI_FOCUSED); }
    void SetHotCell(int row, int column);
    void PaintCell(HDC dc, int row, int column) const;

    int m_hotRow = -1;  // -1: no hot cell
    int m_hotColumn = -1;
};
