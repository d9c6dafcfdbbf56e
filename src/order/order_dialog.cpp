#include "order/order_dialog.h"

#include "controls/dialog_prompt.h"
#include "controls/window_placement.h"
#include "framework/window_helpers.h"
#include "order/carry_check_box.h"
#include "order/message_pause.h"
#include "order/order_checks.h"
#include "trade/host_services.h"

#include <array>
#include <cstring>

namespace {

constexpr UINT_PTR kStartTimer = 1;
constexpr UINT kStartTimerPeriod = 10;  // milliseconds

// Which edits take and step numbers. The wheel leaves the second fill price alone, and the order price of a
// spread is stepped by the spread's own tick and may be negative.
constexpr auto NumericRows() {
    std::array<NumericRow, kPriceRows.size() + 2> rows{};
    for (std::size_t i = 0; i < kPriceRows.size(); ++i) {
        const PriceRowControls& row = kPriceRows[i];
        rows[i] = {row.whole,           row.spin,           row.numerator, i != kFillPrice2Row,
                   i != kOrderPriceRow, i == kOrderPriceRow};
    }
    rows[kPriceRows.size()] = {IDC_ORDER_QTY, IDC_ORDER_QTY_SPIN};
    rows[kPriceRows.size() + 1] = {IDC_FILL_QTY, IDC_FILL_QTY_SPIN};
    return rows;
}
constexpr auto kNumericRows = NumericRows();
// The ids of the rows lie close together; each handler knows its own among them.
constexpr UINT kFirstRowId = IDC_ORDER_QTY;
constexpr UINT kLastRowId = IDC_FORWARD_POSITION_PRICE_DENOMINATOR;
constexpr NumericTable kNumericTable{kNumericRows, IDC_FEE, TextRuleScope::ChangedEdit};

}  // namespace

BEGIN_MESSAGE_MAP(CEmendoOrder, CEntryDialog)
ON_WM_TIMER()
ON_MESSAGE(WM_SELECTCODE, &CEmendoOrder::OnSelectCode)
ON_BN_CLICKED(IDC_CONTRACT_PICK, &CEmendoOrder::OnPickContract)
ON_CONTROL(CContractEdit::kPickerAsked, IDC_CONTRACT, &CEmendoOrder::OnPickContractByKey)
ON_EN_KILLFOCUS(IDC_CONTRACT, &CEmendoOrder::OnContractFocusLost)
ON_CBN_SELCHANGE(IDC_ACCOUNT, &CEmendoOrder::OnAccountSelected)
ON_CBN_KILLFOCUS(IDC_ACCOUNT, &CEmendoOrder::OnAccountFocusLost)
ON_CBN_SETFOCUS(IDC_ACCOUNT, &CEmendoOrder::OnAccountFocus)
ON_CBN_SELCHANGE(IDC_DIRECTION, &CEmendoOrder::OnDirectionSelected)
ON_CBN_SELCHANGE(IDC_VALID_TYPE, &CEmendoOrder::OnValidTypeSelected)
ON_CBN_SELCHANGE(IDC_SOURCE, &CEmendoOrder::OnSourceSelected)
ON_CBN_SELCHANGE(IDC_ORDER_TYPE, &CEmendoOrder::OnTypeOrStateSelected)
ON_CBN_SELCHANGE(IDC_ORDER_STATE, &CEmendoOrder::OnTypeOrStateSelected)
ON_CBN_SELCHANGE(IDC_UPPER, &CEmendoOrder::OnCarryChoice)
ON_CBN_KILLFOCUS(IDC_UPPER, &CEmendoOrder::OnCarryChoice)
ON_CBN_SELCHANGE(IDC_FORWARD_CONTRACT, &CEmendoOrder::OnForwardChosen)
ON_CBN_KILLFOCUS(IDC_FORWARD_CONTRACT, &CEmendoOrder::OnCarryChoice)
ON_EN_CHANGE(IDC_ORDER_QTY, &CEmendoOrder::OnOrderQtyChanged)
ON_EN_CHANGE(IDC_FILL_QTY, &CEmendoOrder::OnFillQtyChanged)
ON_BN_CLICKED(IDC_FEE_GIVEN, &CEmendoOrder::OnFeeClicked)
ON_BN_CLICKED(IDC_NEAR_CHOSEN_POSITION, &CEmendoOrder::OnChosenPositionClicked)
ON_BN_CLICKED(IDC_FORWARD_CHOSEN_POSITION, &CEmendoOrder::OnChosenPositionClicked)
ON_NOTIFY(NM_CUSTOMDRAW, IDC_NEAR_CHOSEN_POSITION, &CEmendoOrder::OnDrawChosenPosition)
ON_NOTIFY(NM_CUSTOMDRAW, IDC_FORWARD_CHOSEN_POSITION, &CEmendoOrder::OnDrawChosenPosition)
ON_CONTROL_RANGE(EN_SETFOCUS, kFirstRowId, kLastRowId, &CEmendoOrder::OnNumberFocus)
ON_CONTROL_RANGE(EN_KILLFOCUS, kFirstRowId, kLastRowId, &CEmendoOrder::OnPriceFocusLost)
ON_CONTROL_RANGE(EN_UPDATE, kFirstRowId, kLastRowId, &CEmendoOrder::OnNumberUpdate)
ON_NOTIFY_RANGE(UDN_DELTAPOS, kFirstRowId, kLastRowId, &CEmendoOrder::OnSpin)
END_MESSAGE_MAP()

CEmendoOrder::CEmendoOrder(unsigned templateId, int mode, OrderRecord* record, HWND parent)
    : CEntryDialog(templateId, parent, OrderComboSettings(), kNumericTable) {
    m_form.mode = static_cast<OrderMode>(mode);
    m_form.original = record;
}

CEmendoOrder::~CEmendoOrder() {
    OnWindowGone();
}

// --- start-up ---

BOOL CEmendoOrder::OnInitDialog() {
    CDialog::OnInitDialog();
    SetUpControls();
    ShowLists();
    LoadRecord(m_form, Trade());
    m_accountText = m_form.account;
    ShowForm();
    RefreshControls();
    OnFillQtyChanged();
    ShowContract();
    if (m_form.mode != OrderMode::Move) {
        GenerateNumbers(m_form, SystemClock().Now());
        ShowNumbers();
    }
    m_started = true;
    Refresh();
    SetUpMode();
    UpdateFilters();
    SetTimer(kStartTimer, kStartTimerPeriod);
    return FALSE;
}

void CEmendoOrder::OnTimer(UINT_PTR id) {
    if (id == kStartTimer) {
        KillTimer(kStartTimer);
        ArrangeBottomRow();
        PlaceDialogOverHost(m_hWnd);
    }
    CDialog::OnTimer(id);
}

bool CEmendoOrder::IsOffered(const MSG& message) const {
    return IsNearOwnWindow(message.hwnd);
}

CommodityKey CEmendoOrder::Commodity() const {
    return CommodityKeyOf(m_form);
}

std::string CEmendoOrder::FormatPrice(double price) const {
    ContractKey key{};
    if (const auto known = ContractKeyOf(m_form)) {
        key = *known;
    } else {
        const CommodityKey commodity = CommodityKeyOf(m_form);
        std::memcpy(&key, &commodity, sizeof(commodity));
    }
    return Trade().FormatPrice(&key, price);
}

// --- confirming and closing ---

void CEmendoOrder::Confirm() {
    DialogPrompt prompt(*this);
    if (!ConfirmElectronicOrder(m_form, prompt)) {
        return;
    }
    TakeShownAccount();
    TakeShownContract();
    ReadForm();
    OrderForm entered = m_form;  // an account that is not listed is never the dialog's own
    entered.account = m_accountText;
    MessagePause pause;
    const OrderOutcome outcome =
        SubmitOrder(entered, {Trade(), CurrentTradeRequests(), prompt, pause, SystemClock()});
    if (prompt.DialogExists()) {
        Finish(outcome);
    }
}

void CEmendoOrder::Finish(OrderOutcome outcome) {
    switch (outcome) {
        case OrderOutcome::Close:
            SendMessage(WM_CLOSE);
            break;
        case OrderOutcome::NextOrder:
            PrepareNextOrder(m_form, SystemClock().Now());
            SetDlgItemText(IDC_ORDER_QTY, "0");
            ShowNumbers();
            ::SetFocus(GetDlgItem(IDC_ACCOUNT));
            break;
        case OrderOutcome::StayWithPrice:
            ::SetFocus(GetDlgItem(IDC_FILL_PRICE_WHOLE));
            break;
        case OrderOutcome::Stay:
        case OrderOutcome::Gone:
            break;
    }
}

void CEmendoOrder::OnWindowGone() {
    if (g_pOrderDialog == this) {
        g_pOrderDialog = nullptr;
    }
}
