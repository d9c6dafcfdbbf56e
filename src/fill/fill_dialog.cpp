#include "fill/fill_dialog.h"

#include "controls/dialog_exchange.h"
#include "controls/dialog_keys.h"
#include "controls/dialog_prompt.h"
#include "controls/dialog_setup.h"
#include "controls/window_placement.h"
#include "fill/fill_population.h"
#include "fill/fill_request.h"
#include "framework/guard.h"
#include "framework/scoped_value.h"
#include "res/dialog_creation.h"
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

BEGIN_MESSAGE_MAP(CEmendoMatch, CSelfOwnedDialog)
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_BN_CLICKED(IDC_CONFIRM, &CEmendoMatch::OnConfirm)
ON_BN_CLICKED(IDC_CANCEL, &CEmendoMatch::OnCancelClicked)
ON_CBN_SELCHANGE(IDC_FILL_SOURCE, &CEmendoMatch::OnSourceSelected)
ON_CBN_SELCHANGE(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_KILLFOCUS(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_SELCHANGE(IDC_EXCHANGE, &CEmendoMatch::OnExchangeChanged)
ON_CBN_KILLFOCUS(IDC_EXCHANGE, &CEmendoMatch::OnExchangeChanged)
ON_CBN_SELCHANGE(IDC_DIRECTION, &CEmendoMatch::OnDirectionSelected)
ON_CBN_SETFOCUS(IDC_ACCOUNT, &CEmendoMatch::OnAccountFocus)
ON_CONTROL_RANGE(EN_SETFOCUS, IDC_FILL_QTY, IDC_FILL_PRICE2_NUMERATOR, &CEmendoMatch::OnNumberFocus)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_QTY, IDC_FILL_PRICE2_NUMERATOR, &CEmendoMatch::OnNumberUpdate)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_QTY_SPIN, &CEmendoMatch::OnSpin)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_PRICE_SPIN, &CEmendoMatch::OnSpin)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_PRICE2_SPIN, &CEmendoMatch::OnSpin)
END_MESSAGE_MAP()

CEmendoMatch::CEmendoMatch(int mode, void* record, int recordKind, HWND parent)
    : m_parent(parent), m_numbers(kNumericTable, m_contract) {
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

bool CEmendoMatch::Create() {
    return CreateFromResources(*this, IDD_FILL, m_parent);
}

// --- start-up ---

BOOL CEmendoMatch::OnInitDialog() {
    CDialog::OnInitDialog();
    SetUpControls();
    ShowLists();
    SetUpMode();
    if (LoadRecord(m_form, CurrentTradeData())) {
        ShowLoadedRecord();
    } else {
        ShowDefaults();
    }
    m_started = true;
    Refresh();
    PlaceDialogOverHost(m_hWnd);
    return TRUE;
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
        DDX_Code(&reading, m_direction, kDirections, m_form.direction);
        ShowOpenDirection();
    }
}

void CEmendoMatch::OnAccountFocus() {
    if (m_started && static_cast<int>(CurrentTradeData().Users("").size()) != m_account.GetCount()) {
        ShowAccounts();
    }
}

void CEmendoMatch::OnNumberFocus(UINT controlId) {
    m_numbers.OnFocus(static_cast<int>(controlId));
}

void CEmendoMatch::OnNumberUpdate(UINT controlId) {
    if (m_started) {
        m_numbers.OnTextUpdate(static_cast<int>(controlId));
    }
}

void CEmendoMatch::OnSpin(NMHDR* notification, LRESULT* result) {
    *result = m_numbers.OnSpin(notification);
}

CommodityKey CEmendoMatch::Contract::Commodity() const {
    const FillForm chosen = m_dialog.ChosenForm();
    const CommodityRecord* commodity = FindCommodity(chosen, Trade());
    return commodity ? CommodityOf(*commodity) : CommodityKeyOf(chosen);
}

TradeData CEmendoMatch::Contract::Trade() const {
    return CurrentTradeData();
}

std::string CEmendoMatch::Contract::FormatPrice(double price) const {
    FillRecord fill{};
    fill.key = FirstLegOf(ContractKeyOf(m_dialog.ChosenForm()));
    const CommodityKey commodity = Commodity();
    fill.key.sign = commodity.sign;
    fill.key.exchangeNo = commodity.exchangeNo;
    fill.key.commodityType = commodity.commodityType;
    fill.key.commodityNo = commodity.commodityNo;
    return Trade().FormatPrice(&fill, price);
}

// --- confirming and closing ---

void CEmendoMatch::OnConfirm() {
    if (m_confirming) {
        return;
    }
    const ScopedValue submission(m_confirming, true);
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
    const FillOutcome outcome =
        SubmitFill(entered, {CurrentTradeData(), CurrentTradeRequests(), prompt, SystemClock()});
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

void CEmendoMatch::OnCancelClicked() {
    SendMessage(WM_CLOSE);
}

void CEmendoMatch::OnClose() {
    CDialog::OnClose();
    DestroyWindow();
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

// --- keyboard ---

BOOL CEmendoMatch::PreTranslateMessage(const MSG* message) {
    return Guarded(
        "PreTranslateMessage of the fill dialog",
        [&] {
            const RunningCall call(*this);
            return message && OfferToWindows(*this, *message);
        },
        false);
}

BOOL CEmendoMatch::PreTranslateMessage(MSG* message) {
    switch (TranslateDialogKey(m_hWnd, *message, IDC_CONFIRM, IDC_CANCEL, m_numbers)) {
        case KeyOutcome::Consumed:
            return TRUE;
        case KeyOutcome::DialogKeyboard:
            return CDialog::PreTranslateMessage(message);
        default:
            return FALSE;
    }
}
