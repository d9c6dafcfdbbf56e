// What the order dialog does when the operator changes a control, and when the host reports a position.

#include "controls/dialog_exchange.h"
#include "controls/dialog_setup.h"
#include "framework/guard.h"
#include "framework/trim_blanks.h"
#include "framework/window_helpers.h"
#include "order/carry_check_box.h"
#include "order/carry_positions.h"
#include "order/order_dialog.h"
#include "trade/code_tables.h"
#include "trade/host_services.h"

#include <cstring>

namespace {

// More than any contract text holds; the host's text is not trusted to end.
constexpr std::size_t kMaxContractText = 256;

}  // namespace

void CEmendoOrder::OnAccountSelected() {
    const CxComboBox& combo = Combo(IDC_ACCOUNT);
    TakeAccountRow(combo.GetSelectedIndex(), combo.GetText());
    UpdateCarry();
}

void CEmendoOrder::OnAccountFocusLost() {
    TakeShownAccount();
    UpdateCarry();
}

void CEmendoOrder::TakeShownAccount() {
    const CxComboBox& combo = Combo(IDC_ACCOUNT);
    const std::string text = combo.GetText();
    const std::string_view accountNo = TrimBlanks(text);
    const int selected = combo.GetSelectedIndex();
    TakeAccountRow(selected >= 0 ? selected : FindAccountRow(m_form, accountNo), accountNo);
}

// Under another sign the commodity may be quoted in other fractions.
void CEmendoOrder::TakeAccountRow(int index, std::string_view accountNo) {
    const std::string formerSign = m_form.sign;
    TakeAccount(m_form, index, accountNo);
    if (m_started && m_form.sign != formerSign && !CorrectsOrder(m_form.mode)) {
        FollowCommodity();
    }
}

void CEmendoOrder::OnAccountFocus() {
    const std::size_t listed = static_cast<std::size_t>(Combo(IDC_ACCOUNT).GetCount());
    if (m_started && Trade().Users("").size() != listed) {
        ShowAccounts();
    }
}

char CEmendoOrder::ShownCode(int comboId) {
    const WordList& words = WordListOf(comboId);
    CDataExchange exchange(*this, true);
    DDX_Code(&exchange, Combo(comboId), words.list, m_form.*words.code);
    return m_form.*words.code;
}

void CEmendoOrder::OnDirectionSelected() {
    const char direction = m_showing ? m_form.direction : ShownCode(IDC_DIRECTION);
    if (m_started) {
        SetDlgItemText(IDC_CONFIRM, ConfirmTextForDirection(m_form.mode, direction));
    }
    const auto opposite = WordListOf(IDC_DIRECTION).list.codes.find(OppositeDirection(direction));
    Combo(IDC_FORWARD_DIRECTION)
        .SetCurSel(opposite == std::string_view::npos ? -1 : static_cast<int>(opposite));
    UpdateCarry();
}

void CEmendoOrder::OnValidTypeSelected() {
    const char validType = m_showing ? m_form.validType : ShownCode(IDC_VALID_TYPE);
    ApplyControlStates(m_hWnd, ValidDateStates(validType));
}

void CEmendoOrder::OnSourceSelected() {
    Refresh();
    UpdateCarry();
}

void CEmendoOrder::OnTypeOrStateSelected() {
    Refresh();
}

void CEmendoOrder::OnCarryChoice() {
    UpdateCarry();
}

void CEmendoOrder::OnForwardChosen() {
    m_forwardChosen = true;
    UpdateCarry();
}

void CEmendoOrder::OnPriceFocusLost(UINT controlId) {
    const auto isOf = [id = static_cast<int>(controlId)](PriceRowKind kind) {
        return id == kPriceRows[kind].whole || id == kPriceRows[kind].numerator;
    };
    if (isOf(kNearPositionPriceRow) || isOf(kForwardPositionPriceRow)) {
        UpdateCarry();
    } else if (IsCarryReady() && (isOf(kFillPriceRow) || isOf(kFillPrice2Row))) {
        UpdateQuantities(nullptr);
        SetDlgItemText(IDC_CARRY_FEE_TEXT, CarryFeeText(m_form));
    }
}

void CEmendoOrder::OnOrderQtyChanged() {
    CDataExchange exchange(*this, true);
    std::int32_t orderQty = 0;
    DDX_Number(&exchange, IDC_ORDER_QTY, orderQty);
    if (const auto fillQty = FillQtyOfOrderQty(m_form.mode, ShownCode(IDC_ORDER_STATE), orderQty)) {
        SetDlgItemText(IDC_FILL_QTY, std::to_string(*fillQty));
    }
}

void CEmendoOrder::OnFillQtyChanged() {
    if (ForwardQtyFollows(m_form.mode, ShownCode(IDC_ORDER_STATE))) {
        SetDlgItemText(IDC_FORWARD_FILL_QTY, GetDlgItemText(IDC_FILL_QTY));
    }
}

void CEmendoOrder::OnFeeClicked() {
    ::EnableWindow(GetDlgItem(IDC_FEE), IsDlgButtonChecked(m_hWnd, IDC_FEE_GIVEN) == BST_CHECKED);
}

BOOL CEmendoOrder::OnDrawChosenPosition(NMHDR* notification, LRESULT* result) {
    *result = DrawChosenPositionLabel(*reinterpret_cast<const NMCUSTOMDRAW*>(notification));
    return TRUE;
}

void CEmendoOrder::OnChosenPositionClicked() {
    if (m_form.mode == OrderMode::Carry) {
        Refresh();
    }
}

void CEmendoOrder::OnContractFocusLost() {
    TakeShownContract();
}

// A text that was taken over already changes nothing, the forward or underlying contract least of all.
void CEmendoOrder::TakeShownContract() {
    const std::string text = GetDlgItemText(IDC_CONTRACT);
    const CommodityKey former = CommodityKeyOf(m_form);
    if (text == m_takenContract || !TakeContract(m_form, text, Trade())) {
        return;
    }
    m_takenContract = text;
    ShowForwardContracts();
    const CommodityKey taken = CommodityKeyOf(m_form);
    if (std::memcmp(&former, &taken, sizeof(taken)) != 0) {
        FollowCommodity();
    }
    UpdateCarry();
}

void CEmendoOrder::OnPickContract() {
    if (PreparePicker()) {
        m_picker->Toggle();
    }
}

void CEmendoOrder::OnPickContractByKey() {
    if (PreparePicker()) {
        m_picker->ToggleOn(GetDlgItemText(IDC_CONTRACT));
    }
}

bool CEmendoOrder::PreparePicker() {
    if (!m_picker) {
        m_picker.reset(new CSeleCodeWnd);
    }
    if (!m_picker->m_hWnd) {
        if (!m_picker->CreatePopup(m_hWnd)) {
            return false;
        }
        m_picker->SetNotifyWnd(m_hWnd);
        m_picker->SetKeyboardHome(GetDlgItem(IDC_CONTRACT));
    }
    m_picker->SetExchangeFilter(m_form.mode == OrderMode::Carry);
    m_picker->Refresh("");
    m_picker->PlaceUnder(GetDlgItem(IDC_CONTRACT_PICK));
    return true;
}

// The sign that comes with the choice belongs to the contract's data; the dialog keeps the account's. An
// empty cell of the popup gives a text that ends in a blank, and is no choice.
LRESULT CEmendoOrder::OnSelectCode(WPARAM text, LPARAM) {
    const auto* chosen = reinterpret_cast<const char*>(text);
    const std::string contract =
        chosen ? std::string(chosen, strnlen(chosen, kMaxContractText)) : std::string();
    if (!contract.ends_with(' ') && TakeContract(m_form, contract, Trade())) {
        ShowContract();
        Refresh();
        UpdateCarry();
    }
    return 0;
}

void CEmendoOrder::UpdateCarry() {
    if (IsCarryReady()) {
        UpdateQuantities(nullptr);
        UpdateFilters();
    }
}

void CEmendoOrder::UpdateFilters() {
    if (m_form.mode == OrderMode::Carry && m_carryLists.Complete()) {
        ReadForm();
        m_carryLists.SetFilters(FiltersOf(m_form, Trade()));
    }
}

void CEmendoOrder::UpdateQuantities(const PositionRecord* changed) {
    ReadForm();
    const PositionQuantities quantities = QuantitiesOf(m_form, Trade(), changed);
    if (quantities.near) {
        SetDlgItemText(IDC_NEAR_POSITION_QTY, std::to_string(*quantities.near));
    }
    if (quantities.forward) {
        SetDlgItemText(IDC_FORWARD_POSITION_QTY, std::to_string(*quantities.forward));
    }
}

void CEmendoOrder::OnTradeNotify11(void* position) {
    Guarded("OnTradeNotify11", [&] {
        const RunningCall call(*this);
        if (m_form.mode == OrderMode::Carry && m_started && m_hWnd) {
            UpdateQuantities(static_cast<const PositionRecord*>(position));
        }
    });
}

void CEmendoOrder::OnSelectData(ITradeListWindow* list, int, PositionRecord* position) {
    Guarded("OnSelectData", [&] {
        const RunningCall call(*this);
        const PriceRowControls* row = m_carryLists.IsNear(list)      ? &kPriceRows[kNearPositionPriceRow]
                                      : m_carryLists.IsForward(list) ? &kPriceRows[kForwardPositionPriceRow]
                                                                     : nullptr;
        const HWND edit = row && m_hWnd ? GetDlgItem(row->whole) : nullptr;
        if (position && edit && ::IsWindowEnabled(edit)) {
            const PriceRow price = PickedPrice(*position, m_form.denominator, Trade());
            {
                const auto ownTexts = m_numbers.OwnTexts();
                SetTextIfChanged(edit, price.whole);
                SetTextIfChanged(GetDlgItem(row->numerator), std::to_string(price.numerator));
            }
            UpdateQuantities(nullptr);
        }
    });
}
