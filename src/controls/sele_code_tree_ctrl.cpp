#include "controls/sele_code_tree_ctrl.h"

HTREEITEM CSeleCodeTreeCtrl::AppendNode(const std::string& text, const std::string& data, HTREEITEM parent) {
    TVINSERTSTRUCTA insert{};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM;
    insert.item.pszText = const_cast<char*>(text.c_str());  // read only by the control
    insert.item.lParam = reinterpret_cast<LPARAM>(data.c_str());
    return reinterpret_cast<HTREEITEM>(DefWindowProc(TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
}

void CSeleCodeTreeCtrl::Clear() {
    DeleteAllItems();
    m_lastOpened = nullptr;
}

void CSeleCodeTreeCtrl::OpenSingleChildren(HTREEITEM item) {
    for (HTREEITEM child; item && (child = GetChildItem(item)) && !GetNextSiblingItem(child); item = child) {
        Expand(child);
    }
}

void CSeleCodeTreeCtrl::CloseOtherRoots(HTREEITEM item) {
    if (item == m_lastOpened || !IsExpanded(item)) {
        return;
    }
    for (HTREEITEM other = GetRootItem(); other; other = GetNextSiblingItem(other)) {
        if (other != item) {
            Expand(other, TVE_COLLAPSE);
        }
    }
    m_lastOpened = item;
}

std::vector<std::string_view> CSeleCodeTreeCtrl::PathOf(HTREEITEM item) const {
    std::vector<std::string_view> path;
    for (; item; item = GetParentItem(item)) {
        const auto* data = reinterpret_cast<const char*>(GetItemData(item));
        path.push_back(data ? std::string_view(data) : std::string_view());
    }
    return path;
}
