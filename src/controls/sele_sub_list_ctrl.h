#pragma once

#include "framework/controls.h"

// The list of contracts or strikes of the contract popup. It paints its cells itself and highlights the one
// under the mouse, or the one that was clicked.
class CSeleSubListCtrl : public CListCtrl {
public:
    // A cell's rectangle in client coordinates, the same for painting and for repainting. Empty for a cell
    // that does not exist.
    RECT CellRect(int row, int column) const;

protected:
    LRESULT OnNcHitTest(POINT point);
    void OnMouseMove(UINT keys, POINT point);
    void OnClick(NMHDR* notification, LRESULT* result);
    void OnCustomDraw(NMHDR* notification, LRESULT* result);

    DECLARE_MESSAGE_MAP()

private:
    void SetHotCell(int row, int column);
    void PaintCell(HDC dc, int row, int column) const;

    int m_hotRow = -1;  // -1: no hot cell
    int m_hotColumn = -1;
};
