#pragma once

#include "controls/entry_dialog.h"
#include "fill/fill_form.h"
#include "fill/fill_layout.h"
#include "fill/fill_submission.h"

#include <string>
#include <vector>

// The fill dialog: inputs a fill for an order, or removes one. It deletes itself when its window is
// destroyed.
class CEmendoMatch : public CEntryDialog {
public:
    // `record` is the host's, kept and not copied: a FillRecord for kRecordKindFill, an OrderRecord for
    // kRecordKindOrder, ignored for any other kind.
    CEmendoMatch(int mode, void* record, int recordKind, HWND parent);
    ~CEmendoMatch() override;

    const OrderRecord* Order() const { return m_form.order; }

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnWindowGone() override;

    void OnDestroy();
    void OnSourceSelected();
    void OnExchangeChanged();
    void OnCommodityChanged();
    void OnDirectionSelected();
    void OnAccountFocus();
    void OnNumberUpdate(UINT controlId);

    DECLARE_MESSAGE_MAP()

private:
    void Confirm() override;
    // The contract as it stands in the controls.
    CommodityKey Commodity() const override;
    std::string FormatPrice(double price) const override;

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
    void Finish(FillOutcome outcome);

    FillForm m_form;
    FillLayout m_layout = FillLayout::Full;
    std::string m_listedExchange;  // whose commodities are listed
    std::string m_listedTypes;     // of the commodities, line by line
    CComboBox m_openDirection;
};

// The one open fill dialog; null when there is none.
inline CEmendoMatch* g_pFillDialog = nullptr;
