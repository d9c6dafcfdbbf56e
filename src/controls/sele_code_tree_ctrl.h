#pragma once

#include "framework/controls.h"

// The tree of exchanges, commodities and option series of the contract popup. It takes the focus when the
// mouse is over it, so that the wheel scrolls what is pointed at.
class CSeleCodeTreeCtrl : public CTreeCtrl {
public:
    // Appends a node whose item data point to the text `data`. Goes straight to the control's own procedure,
    // since a book has thousands of nodes.
    HTREEITEM AppendNode(const std::string& text, const std::string& data, HTREEITEM parent);

protected:
    LRESULT OnNcHitTest(POINT point);

    DECLARE_MESSAGE_MAP()
};

// Gives the focus to a control whose client area is under the mouse; `hit` is its own hit test's result.
void FocusOnHover(HWND control, LRESULT hit);
