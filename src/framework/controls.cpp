#include "framework/controls.h"

#include "framework/activation_context.h"

#include <array>
#include <cstring>

namespace {

bool CreateControl(CWnd& control, const char* className, DWORD classes, DWORD style, const RECT& rect,
                   HWND parent, UINT id) {
    const ScopedActivationContext commonControls6;
    const INITCOMMONCONTROLSEX needed{sizeof(INITCOMMONCONTROLSEX), classes};
    InitCommonControlsEx(&needed);
    return control.Create(className, nullptr, style, rect, parent, id);
}

}  // namespace

bool CComboBox::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return CreateControl(*this, WC_COMBOBOXA, ICC_STANDARD_CLASSES, style, rect, parent, id);
}

std::string CComboBox::GetLBText(int index) const {
    const LRESULT length = SendMessage(CB_GETLBTEXTLEN, index);
    if (length == CB_ERR) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied = SendMessage(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied == CB_ERR ? 0 : strnlen(text.c_str(), text.size()));
    return text;
}

bool CTreeCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return CreateControl(*this, WC_TREEVIEWA, ICC_TREEVIEW_CLASSES, style, rect, parent, id);
}

LPARAM CTreeCtrl::GetItemData(HTREEITEM item) const {
    TVITEMA query{};
    query.mask = TVIF_PARAM;
    query.hItem = item;
    SendMessage(TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&query));
    return query.lParam;
}

HTREEITEM CTreeCtrl::HitTest(POINT point, UINT* flags) const {
    TVHITTESTINFO hit{};
    hit.pt = point;
    const HTREEITEM item = TreeView_HitTest(m_hWnd, &hit);
    if (flags) {
        *flags = hit.flags;
    }
    return item;
}

bool CListCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return CreateControl(*this, WC_LISTVIEWA, ICC_LISTVIEW_CLASSES, style, rect, parent, id);
}

int CListCtrl::InsertColumn(int index, const std::string& heading, int format, int width) const {
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM;
    column.fmt = format;
    column.cx = width;
    column.iSubItem = index;
    column.pszText = const_cast<char*>(heading.c_str());  // read only by the control
    return static_cast<int>(SendMessage(LVM_INSERTCOLUMNA, index, reinterpret_cast<LPARAM>(&column)));
}

std::string CListCtrl::GetItemText(int row, int column) const {
    std::array<char, 512> text{};  // long enough for every text that the module puts into a list
    LVITEMA query{};
    query.iSubItem = column;
    query.pszText = text.data();
    query.cchTextMax = static_cast<int>(text.size());
    SendMessage(LVM_GETITEMTEXTA, row, reinterpret_cast<LPARAM>(&query));
    return text.data();
}

void CListCtrl::SubItemHitTest(POINT point, int* row, int* column) const {
    LVHITTESTINFO hit{};
    hit.pt = point;
    const bool found = SendMessage(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)) != -1;
    *row = found ? hit.iItem : -1;
    *column = found ? hit.iSubItem : -1;
}

bool CListCtrl::GetSubItemRect(int row, int column, int code, RECT* rect) const {
    *rect = RECT{code, column, 0, 0};
    return SendMessage(LVM_GETSUBITEMRECT, row, reinterpret_cast<LPARAM>(rect)) != 0;
}
