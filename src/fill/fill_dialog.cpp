#include "fill/fill_dialog.h"

#include "controls/dialog_exchange.h"
#include "controls/dialog_prompt.h"
#include "controls/window_placement.h"
#include "fill/fill_population.h"
#include "fill/fill_request.h"
#include "res/resource_ids.h"
#include "trade/host_services.h"

namespace {

constexpr NumericRow kNumericRows[] = {
    {IDC_FILL_QTY, IDC_FILL_QTY_SPIN},
    {IDC_FILL_PRICE_WHOLE, IDC_FILL_PRICE_SPIN, IDC_FILL_PRICE_NUMERATOR},
    {IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN, IDC_FILL_PRICE2_NUMERATOR},
};
constexpr NumericTable kNumericTable{kNumericRows, IDC_FEE, TextRuleScope::FocusedEdit};

}  // namespace

BEGIN_MESSAGE_MAP(CEmendoMatch, CEntryDialog)
ON_WM_DESTROY()
ON_CBN_SELCHANGE(IDC_FILL_SOURCE, &CEmendoMatch::OnSourceSelected)
ON_CBN_SELCHANGE(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_KILLFOCUS(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_SELCHANGE(IDC_EXCHANGE, &CEmendoMatch::OnExchangeChanged)
ON_CBN_KILLFOCUS(IDC_EXCHANGE, &CEmendoMatch::OnExchangeChanged)
ON_CBN_SELCHANGE(IDC_DIRECTION, &CEmendoMatch::OnDirectionSelected)
ON_CBN_SETFOCUS(IDC_ACCOUNT, &CEmendoMatch::OnAccountFocus)
ON_CONTROL_RANGE(EN_SETFOCUS, IDC_FILL_QTY, IDC_FILL_PRICE2_NUMERATOR, &CEmendoMatch::OnNumberFocus)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_QTY, IDC_FILL_PRICE2_NUMERATOR, &CEmendoMatch::OnNumberUpdate)
ON_NOTIFY_RANGE(UDN_DELTAPOS, IDC_FILL_QTY_SPIN, IDC_FILL_PRICE2_SPIN, &CEmendoMatch::OnSpin)
END_MESSAGE_MAP()

CEmendoMatch::CEmendoMatch(int mode, void* record, int recordKind, HWND parent)
    : CEntryDialog(IDD_FILL, parent, FillComboSettings(), kNumericTable) {
    m_form.mode = FillMode{mode};
    if (recordKind == kRecordKindFill) {
        m_form.fill = static_cast<const FillRecord*>(record);
    } else if (recordKind == kRecordKindOrder) {
        m_form.order = static_cast<const OrderRecord*>(record);
    }
}

CEmendoMatch::~CEmendoMatch() {
    OnWindowGone();
}

// --- start-up ---

BOOL CEmendoMatch::OnInitDialog() {
    CDialog::OnInitDialog();
    SetUpControls();
    ShowLists();
    SetUpMode();
    if (LoadRecord(m_form, Trade())) {
        ShowLoadedRecord();
    } else {
        ShowDefaults();
    }
    m_started = true;
    Refresh();
    PlaceDialogOverHost(m_hWnd);
    return TRUE;
}

CommodityKey CEmendoMatch::Commodity() const {
    const FillForm chosen = ChosenForm();
    const CommodityRecord* commodity = FindCommodity(chosen, Trade());
    return commodity ? CommodityOf(*commodity) : CommodityKeyOf(chosen);
}

std::string CEmendoMatch::FormatPrice(double price) const {
    FillRecord fill{};
    fill.key = FirstLegOf(ContractKeyOf(ChosenForm()));
    const CommodityKey commodity = Commodity();
    fill.key.sign = commodity.sign;
    fill.key.exchangeNo = commodity.exchangeNo;
    fill.key.commodityType = commodity.commodityType;
    fill.key.commodityNo = commodity.commodityNo;
    return Trade().FormatPrice(&fill, price);
}

// --- confirming and closing ---

void CEmendoMatch::Confirm() {
    // What was typed and not left yet.
    if (ChosenForm().exchangeNo != m_listedExchange) {
        ShowCommodities();
    }
    Refresh();
    UpdateData(true);
    if (!m_hWnd) {
        return;
    }
    const FillForm entered = m_form;
    DialogPrompt prompt(*this);
    const FillOutcome outcome = SubmitFill(entered, {Trade(), CurrentTradeRequests(), prompt, SystemClock()});
    if (prompt.DialogExists()) {
        Finish(outcome);
    }
}

void CEmendoMatch::Finish(FillOutcome outcome) {
    switch (outcome) {
        case FillOutcome::Close:
            SendMessage(WM_CLOSE);
            break;
        case FillOutcome::StayWithPrice:
            ::SetFocus(GetDlgItem(IDC_FILL_PRICE_WHOLE));
            break;
        case FillOutcome::Stay:
        case FillOutcome::Gone:
            break;
    }
}

void CEmendoMatch::OnDestroy() {
    m_started = false;
    CDialog::OnDestroy();
}

void CEmendoMatch::OnWindowGone() {
    if (g_pFillDialog == this) {
        g_pFillDialog = nullptr;
    }
}

// --- reactions ---

void CEmendoMatch::OnSourceSelected() {
    if (m_started) {
        Refresh();
    }
}

void CEmendoMatch::OnCommodityChanged() {
    if (m_started) {
        Refresh();
    }
}

void CEmendoMatch::OnExchangeChanged() {
    if (m_started) {
        ShowCommodities();
        Refresh();
    }
}

void CEmendoMatch::OnDirectionSelected() {
    if (m_started) {
        CDataExchange reading(*this, true);
        DDX_Code(&reading, Combo(IDC_DIRECTION), kDirections, m_form.direction);
        ShowOpenDirection();
    }
}

void CEmendoMatch::OnAccountFocus() {
    if (m_started && static_cast<int>(Trade().Users("").size()) != Combo(IDC_ACCOUNT).GetCount()) {
        ShowAccounts();
    }
}

void CEmendoMatch::OnNumberUpdate(UINT controlId) {
    if (m_started) {
        CEntryDialog::OnNumberUpdate(controlId);
    }
}
