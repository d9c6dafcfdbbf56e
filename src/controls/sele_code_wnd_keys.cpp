// The contract popup by keyboard.

#include "controls/sele_code_wnd.h"

#include <optional>

void CSeleCodeWnd::ToggleOn(const std::string& contractText) {
    const RunningCall call(*this);
    const bool opens = m_hWnd && !IsWindowVisible();
    const bool found = opens && GoToContract(contractText);
    m_mouse.Note();
    Toggle();
    if (m_hWnd && found) {
        m_list.TakeKeyboard();
    }
}

// True when the list has the contract itself.
bool CSeleCodeWnd::GoToContract(const std::string& contractText) {
    HTREEITEM item = nullptr;
    HTREEITEM exchange = nullptr;
    for (std::size_t index : FindInCatalog(m_catalog, contractText)) {
        item = item ? m_tree.GetChildItem(item) : m_tree.GetRootItem();
        for (; item && index > 0; --index) {
            item = m_tree.GetNextSiblingItem(item);
        }
        m_tree.Expand(item);
        exchange = exchange ? exchange : item;
    }
    if (!item) {
        return false;
    }
    m_tree.CloseOtherRoots(exchange);
    m_tree.SelectItem(item);
    m_choice = ReadChoice(m_tree.PathOf(item));
    FillList();
    const auto cell = m_hWnd ? m_rows.Find(m_choice, contractText) : std::nullopt;
    if (cell) {
        m_list.GoToCell(static_cast<int>(cell->row), cell->column);
    }
    return cell.has_value();
}

bool CSeleCodeWnd::OnPartKey(HWND part, UINT key) {
    const bool inList = part == m_list.m_hWnd;
    m_mouse.Note();
    switch (key) {
        case VK_TAB:
            if (inList) {
                m_tree.SetFocus();
            } else {
                EnterList();
            }
            return true;
        case VK_RETURN:
            if (inList) {
                const std::string cell = m_list.HotText();
                if (!cell.empty() && SendChoice(ListClickText(m_choice, cell))) {
                    CloseByKey();
                }
            } else if (const HTREEITEM item = m_tree.GetSelectedItem()) {
                m_tree.Expand(item);
                if (ChooseSelectedNode() && !IsWindowVisible()) {
                    CloseByKey();
                }
            }
            return true;
        case VK_ESCAPE:
        case VK_F4:
            CloseByKey();
            return true;
        default:
            return false;
    }
}

// The selection in the tree may have moved on since the list was filled. What the keyboard enters are the
// contracts of the node that it comes from.
void CSeleCodeWnd::EnterList() {
    const ContractChoice selected = ReadChoice(m_tree.PathOf(m_tree.GetSelectedItem()));
    if (selected != m_choice || m_rows.Count(selected.commodityType) == 0) {
        m_choice = selected;
        FillList();
    }
    if (m_hWnd) {
        m_list.TakeKeyboard();
    }
}

void CSeleCodeWnd::CloseByKey() {
    const HWND home = m_keyboardHome;
    ShowWindow(SW_HIDE);
    if (home) {
        // As Tab enters a control: its text is marked.
        ::SendMessageA(::GetParent(home), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(home), TRUE);
    }
}
