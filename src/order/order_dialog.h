#pragma once

#include "controls/entry_dialog.h"
#include "controls/sele_code_wnd.h"
#include "order/carry_lists.h"
#include "order/contract_edit.h"
#include "order/order_layout.h"
#include "order/order_population.h"
#include "order/order_submission.h"
#include "trade/trader_spi.h"

#include <string>
#include <string_view>
#include <vector>

// The order dialog: one class for every mode of working on an order. It deletes itself when its window is
// destroyed.
class CEmendoOrder : public CEntryDialog, public TradeSpiEx, public ISelectDataNotify {
public:
    // `record` is the host's order to work on, may be null; it is kept, not copied.
    CEmendoOrder(unsigned templateId, int mode, OrderRecord* record, HWND parent);
    ~CEmendoOrder() override;

    // A position changed.
    void OnTradeNotify11(void* position) override;
    // The operator picked a position in one of the carry lists.
    void OnSelectData(ITradeListWindow* list, int unused, PositionRecord* position) override;

protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnWindowGone() override;

    void OnTimer(UINT_PTR id);
    void OnAccountSelected();
    void OnAccountFocusLost();
    void OnAccountFocus();
    void OnDirectionSelected();
    void OnValidTypeSelected();
    void OnSourceSelected();
    void OnTypeOrStateSelected();
    void OnCarryChoice();
    void OnForwardChosen();
    void OnPriceFocusLost(UINT controlId);
    void OnOrderQtyChanged();
    void OnFillQtyChanged();
    void OnFeeClicked();
    void OnChosenPositionClicked();
    void OnContractFocusLost();
    void OnPickContract();
    void OnPickContractByKey();
    LRESULT OnSelectCode(WPARAM text, LPARAM sign);
    BOOL OnDrawChosenPosition(NMHDR* notification, LRESULT* result);

    DECLARE_MESSAGE_MAP()

private:
    bool IsOffered(const MSG& message) const override;
    void Confirm() override;
    // The contract of the dialog, as its numeric edits ask for it.
    CommodityKey Commodity() const override;
    std::string FormatPrice(double price) const override;

    void ExchangeAccount(CDataExchange* exchange);
    // Values of the controls into the form and back.
    void ReadForm();
    void ShowForm();

    // What one list of words shows, taken into the form.
    char ShownCode(int comboId);
    void EnterCode(int comboId, char code);
    // What is typed becomes the form's account and contract when its box is left, or confirmed.
    void TakeShownAccount();
    void TakeAccountRow(int index, std::string_view accountNo);
    void TakeShownContract();

    void ShowLists();
    void ShowAccounts();
    void ShowForwardContracts();
    void SetUpControls();
    void ShowContract();
    void ShowNumbers();

    void Apply(const std::vector<ControlChange>& changes);
    void SetUpMode();
    void Refresh();  // nothing before the dialog has started
    void RefreshControls();
    void FollowCommodity();
    // Reads the controls and the commodity, whose denominator becomes the form's.
    OrderView TakeView();
    void ArrangeBottomRow();

    bool IsCarryReady() const { return m_form.mode == OrderMode::Carry && m_started && !m_showing; }
    void UpdateCarry();
    void UpdateFilters();
    void UpdateQuantities(const PositionRecord* changed);

    // Makes, fills and places the contract picker. False when there is none.
    bool PreparePicker();
    void Finish(OrderOutcome outcome);

    OrderForm m_form;
    std::string m_accountText;    // of the account combo box; the form's account is the one last taken over
    std::string m_takenContract;  // text of the contract edit that the form has taken over
    CommodityKey m_forwardCommodity{};  // whose contracts the forward list holds
    std::string m_offeredForward;       // contract number that the dialog itself selected there
    bool m_forwardChosen = false;       // the operator selected one
    CContractEdit m_contractEdit;
    CSeleCodeWnd::Owner m_picker;
    CarryLists m_carryLists;
    bool m_refreshing = false;
    bool m_showing = false;  // the form is on its way into the controls, which must not be read meanwhile
};

// The one open order dialog; null when there is none.
inline CEmendoOrder* g_pOrderDialog = nullptr;
