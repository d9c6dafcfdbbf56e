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
