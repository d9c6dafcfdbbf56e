#pragma once

#include "controls/sele_code_tree_ctrl.h"
#include "controls/sele_sub_list_ctrl.h"
#include "entry/contract_catalog.h"
#include "framework/font.h"
#include "framework/wnd.h"
#include "trade/host_services.h"

#include <memory>
#include <string>
#include <vector>

// Sent to the popup's owner on every choice: wParam is the contract text, lParam the sign of the trade data
// that it came from (both const char*, valid during the call). The owner may destroy the popup meanwhile.
inline constexpr UINT WM_SELECTCODE = WM_USER + 110;

inline constexpr UINT kSeleCodeTreeId = 11100;
inline constexpr UINT kSeleCodeListId = 11101;

// The popup in which a contract is picked: a tree of exchanges, commodities and option series, and beside it
// the contracts or strikes of the chosen one. Clicks and Enter choose; moving about with the keyboard sends
// nothing.
class CSeleCodeWnd : public CWnd {
public:
    // `trade` is asked whenever the tree or the list is filled.
    explicit CSeleCodeWnd(TradeData (*trade)() = &CurrentTradeData);
    ~CSeleCodeWnd() override;

    // Destroys the window; the object stays until the calls that run in it have ended.
    struct Release {
        void operator()(CSeleCodeWnd* popup) const;
    };
    using Owner = std::unique_ptr<CSeleCodeWnd, Release>;

    // The hidden popup over `owner`, which is not told about choices before SetNotifyWnd. False when it could
    // not be created.
    bool CreatePopup(HWND owner);
    void SetNotifyWnd(HWND owner) { m_notifyWindow = owner; }
    // The owner's control that gets the keyboard when a key closes the popup; null: the system decides.
    void SetKeyboardHome(HWND control) { m_keyboardHome = control; }
    // Only exchanges that trade on the nearby/forward model; from the next Refresh on.
    void SetExchangeFilter(bool forwardOnly) { m_forwardOnly = forwardOnly; }
    // Fills the tree with the sign's data ("" means all); keeps it when it is filled already and neither the
    // sign nor the host asks for a new one.
    void Refresh(const std::string& sign);
    // Moves the popup under the button that opens it, size unchanged.
    void PlaceUnder(HWND button);
    // Hides the visible popup; shows and focuses the hidden one.
    void Toggle();
    // As Toggle, for a key: shown, it stands on what the contract text names, with the keyboard in the list
    // when the contract itself is there. Tells the owner nothing.
    void ToggleOn(const std::string& contractText);

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnPaint();
    void OnActivate(UINT state, HWND other, bool minimized);
    BOOL OnNcActivate(bool active);
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    void InsertNodes(const std::vector<CatalogNode>& nodes, HTREEITEM parent);
    void OnTreeClick(LRESULT* result);
    // What a click on the selected node does. False when the owner destroyed the popup.
    bool ChooseSelectedNode();
    void FillList();
    void SetUpColumns();
    BOOL OnListClick(const NMITEMACTIVATE& click, WPARAM wParam, LPARAM lParam, LRESULT* result);
    void ShowCell(NMLVDISPINFOA& cell) const;
    // True when the popup uses the key itself.
    bool OnPartKey(HWND part, UINT key);
    void EnterList();
    void CloseByKey();
    bool GoToContract(const std::string& contractText);
    // False when the owner destroyed the popup.
    bool SendChoice(const std::string& text);

    TradeData (*m_trade)();
    HWND m_notifyWindow = nullptr;
    HWND m_keyboardHome = nullptr;
    RestingMouse m_mouse;
    bool m_built = false;
    bool m_forwardOnly = false;
    std::string m_lastSign;
    std::vector<CatalogNode> m_catalog;  // owns the texts that the tree's item data point to
    ContractChoice m_choice;
    ContractRows m_rows;
    CFont m_treeFont;
    CFont m_listFont;
    CSeleCodeTreeCtrl m_tree;
    CSeleSubListCtrl m_list;
};
