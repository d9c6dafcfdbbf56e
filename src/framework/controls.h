#pragma once

#include "framework/wnd.h"

#include <string>

// Thin classes over the system's controls: the operations are the control's messages. Indexes are zero-based,
// a negative result means none.

class CComboBox : public CWnd {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    int AddString(const std::string& text) const { return Send(CB_ADDSTRING, 0, text); }
    void ResetContent() const { SendMessage(CB_RESETCONTENT); }
    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int index) const { return static_cast<int>(SendMessage(CB_SETCURSEL, index)); }
    // Searches behind the item `after` (-1: from the start), round to it again; by prefix, regardless of
    // case.
    int SelectString(int after, const std::string& prefix) const {
        return Send(CB_SELECTSTRING, after, prefix);
    }
    int FindString(int after, const std::string& prefix) const { return Send(CB_FINDSTRING, after, prefix); }
    int FindStringExact(int after, const std::string& text) const {
        return Send(CB_FINDSTRINGEXACT, after, text);
    }
    // Empty for an index that does not exist.
    std::string GetLBText(int index) const;
    DWORD_PTR GetItemData(int index) const {
        return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, index));
    }
    void SetItemData(int index, DWORD_PTR data) const {
        SendMessage(CB_SETITEMDATA, index, static_cast<LPARAM>(data));
    }
    void ShowDropDown(bool show = true) const { SendMessage(CB_SHOWDROPDOWN, show); }
    bool GetDroppedState() const { return SendMessage(CB_GETDROPPEDSTATE) != 0; }
    int SetDroppedWidth(int pixels) const {
        return static_cast<int>(SendMessage(CB_SETDROPPEDWIDTH, pixels));
    }
    void LimitText(int characters) const { SendMessage(CB_LIMITTEXT, characters); }
    // The edit part; null for a drop-down list.
    HWND EditWindow() const { return ::FindWindowExA(m_hWnd, nullptr, "Edit", nullptr); }

private:
    int Send(UINT message, int index, const std::string& text) const {
        return static_cast<int>(SendMessage(message, index, reinterpret_cast<LPARAM>(text.c_str())));
    }
};

class CTreeCtrl : public CWnd {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    bool DeleteAllItems() const { return TreeView_DeleteAllItems(m_hWnd); }
    LPARAM GetItemData(HTREEITEM item) const;
    bool Expand(HTREEITEM item, UINT code = TVE_EXPAND) const { return TreeView_Expand(m_hWnd, item, code); }
    bool IsExpanded(HTREEITEM item) const {
        return (TreeView_GetItemState(m_hWnd, item, TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
    }
    bool SelectItem(HTREEITEM item) const { return TreeView_SelectItem(m_hWnd, item); }
    HTREEITEM GetSelectedItem() const { return TreeView_GetSelection(m_hWnd); }
    HTREEITEM GetRootItem() const { return TreeView_GetRoot(m_hWnd); }
    HTREEITEM GetChildItem(HTREEITEM item) const { return TreeView_GetChild(m_hWnd, item); }
    HTREEITEM GetParentItem(HTREEITEM item) const { return TreeView_GetParent(m_hWnd, item); }
    HTREEITEM GetNextSiblingItem(HTREEITEM item) const { return TreeView_GetNextSibling(m_hWnd, item); }
    int GetCount() const { return static_cast<int>(TreeView_GetCount(m_hWnd)); }
    // The item at a point in client coordinates, null for none; `flags` receives the TVHT_ part that was hit.
    HTREEITEM HitTest(POINT point, UINT* flags = nullptr) const;
};

class CListCtrl : public CWnd {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    int InsertColumn(int index, const std::string& heading, int format, int width) const;
    bool DeleteColumn(int index) const { return ListView_DeleteColumn(m_hWnd, index); }
    HWND GetHeaderCtrl() const { return ListView_GetHeader(m_hWnd); }
    int GetColumnCount() const { return Header_GetItemCount(GetHeaderCtrl()); }
    bool DeleteAllItems() const { return ListView_DeleteAllItems(m_hWnd); }
    void SetItemCount(int count) const { SendMessage(LVM_SETITEMCOUNT, count); }
    void SetExtendedStyle(DWORD style) const { SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style); }
    int GetSelectionMark() const { return ListView_GetSelectionMark(m_hWnd); }
    std::string GetItemText(int row, int column) const;
    // The row and column at a point in client coordinates, both -1 when there is none.
    void SubItemHitTest(POINT point, int* row, int* column) const;
    // `code` LVIR_BOUNDS or LVIR_LABEL. False when the row does not exist.
    bool GetSubItemRect(int row, int column, int code, RECT* rect) const;
};
