#pragma once

#include "controls/numeric_entry.h"
#include "controls/x_combo_box.h"
#include "fill/fill_form.h"
#include "fill/fill_layout.h"
#include "fill/fill_submission.h"
#include "framework/self_owned_dialog.h"
#include "trade/plugin_interface.h"

#include <string>
#include <vector>

// The fill dialog: inputs a fill for an order, or removes one. It deletes itself when its window is
// destroyed.
class CEmendoMatch : public CSelfOwnedDialog, public IEmendixOper {
public:
    // `record` is the host's, kept and not copied: a FillRecord for kRecordKindFill, an OrderRecord for
    // kRecordKindOrder, ignored for any other kind.
    CEmendoMatch(int mode, void* record, int recordKind, HWND parent);
    ~CEmendoMatch() override;

    // False when the window could not be created; the object is then still there unless g_pFillDialog is
    // null.
    bool Create();

    const OrderRecord* Order() const { return m_form.order; }

    // For the host: a message of its loop on the way to the dialog's windows.
    BOOL PreTranslateMessage(const MSG* message) override;
    HWND GetSafeHwnd() override { return m_hWnd; }

    // The dialog's own keyboard.
    BOOL PreTranslateMessage(MSG* message) override;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnWindowGone() override;

    void OnClose();
    void OnDestroy();
    void OnConfirm();
    void OnCancelClicked();
    void OnSourceSelected();
    void OnExchangeChanged();
    void OnCommodityChanged();
    void OnDirectionSelected();
    void OnAccountFocus();
    void OnNumberFocus(UINT controlId);
    void OnNumberUpdate(UINT controlId);
    void OnSpin(NMHDR* notification, LRESULT* result);

    DECLARE_MESSAGE_MAP()

private:
    // The contract as it stands in the controls, for the numeric edits.
    class Contract final : public INumericContext {
    public:
        explicit Contract(const CEmendoMatch& dialog) : m_dialog(dialog) {}
        CommodityKey Commodity() const override;
        TradeData Trade() const override;
        std::string FormatPrice(double price) const override;

    private:
        const CEmendoMatch& m_dialog;
    };

    // The steps of the start-up.
    void SetUpControls();
    void SetUpMode();
    void ShowLoadedRecord();
    void ShowDefaults();

    void ShowLists();
    void ShowAccounts();
    // The commodities of the exchange that is shown. The commodity stays as long as the exchange does.
    void ShowCommodities();
    // False while the account of the loaded record may not be traded: then the lists are empty.
    bool MayList() const;

    // The form with exchange, commodity and contract as the controls show them now.
    FillForm ChosenForm() const;

    void SelectDefaultExchange();
    void ShowCommodity(const FillForm& form);
    void ShowOpenDirection();
    // Shows, enables and moves the controls for the chosen source, exchange and commodity. Nothing happens
    // while exchange or commodity are not chosen.
    void Refresh();
    void ChangeLayout(FillLayout target);
    void MoveDown(int controlId, int pixels);
    void Finish(FillOutcome outcome);

    FillForm m_form;
    HWND m_parent;
    FillLayout m_layout = FillLayout::Full;
    std::string m_listedExchange;  // whose commodities are listed
    std::string m_listedTypes;     // of the commodities, line by line
    bool m_started = false;  // the controls are set up: their notifications mean the operator or a selection
    bool m_confirming = false;  // a confirmed entry is on its way

    CxComboBox m_upper;
    CxComboBox m_account;
    CxComboBox m_fillSource;
    CxComboBox m_exchange;
    CxComboBox m_commodity;
    CxComboBox m_direction;
    CxComboBox m_currency;
    CComboBox m_openDirection;
    Contract m_contract{*this};
    NumericEntry m_numbers;
};

// The one open fill dialog; null when there is none.
inline CEmendoMatch* g_pFillDialog = nullptr;
