// What the order dialog does when the operator changes a control, and when the host reports a position.

#include "controls/dialog_setup.h"
#include "framework/guard.h"
#include "framework/window_helpers.h"
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
    const int index = combo.GetCurSel();
    if (index >= 0) {
        TakeSelectedAccount(m_form, index, combo.GetItemCode(index));
    }
    UpdateCarry();
}

void CEmendoOrder::OnAccountFocusLost() {
    const CxComboBox& combo = Combo(IDC_ACCOUNT);
    const int index = combo.GetCurSel();
    if (index >= 0) {
        TakeSelectedAccount(m_form, index, combo.GetItemCode(index));
    } else {
        TakeTypedAccount(m_form, combo.GetText());
    }
    UpdateCarry();
}

void CEmendoOrder::OnAccountFocus() {
    const std::size_t listed = static_cast<std::size_t>(Combo(IDC_ACCOUNT).GetCount());
    if (m_started && CurrentTradeData().Users("").size() != listed) {
        FillAccounts();
    }
}

void CEmendoOrder::OnDirectionSelected() {
    const char direction = DirectionFromText(TextOf(GetDlgItem(IDC_DIRECTION)));
    if (m_started) {
        SetDlgItemText(IDC_CONFIRM, ConfirmTextForDirection(m_form.mode, direction));
    }
    m_form.forwardDirection = OppositeDirectionText(direction);
    CxComboBox& forward = Combo(IDC_FORWARD_DIRECTION);
    if (m_form.forwardDirection.empty()) {
        forward.SetCurSel(-1);
    } else {
        forward.SelectString(-1, m_form.forwardDirection);
    }
    UpdateCarry();
}

void CEmendoOrder::OnValidTypeSelected() {
    const std::string validType = Combo(IDC_VALID_TYPE).GetText();
    ApplyControlStates(m_hWnd, ValidDateStates(ValidTypeFromText(validType)));
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

void CEmendoOrder::OnFillPriceFocusLost() {
    if (m_form.mode != OrderMode::Carry || m_showing || !m_started) {
        return;
    }
    UpdateQuantities(nullptr);
    SetDlgItemText(IDC_CARRY_FEE_TEXT, CarryFeeText(m_form));
}

void CEmendoOrder::OnOrderQtyChanged() {
    const char state = OrderStateFromText(TextOf(GetDlgItem(IDC_ORDER_STATE)));
    const auto orderQty = static_cast<std::int32_t>(GetDlgItemInt(m_hWnd, IDC_ORDER_QTY, nullptr, TRUE));
    if (const auto fillQty = FillQtyOfOrderQty(m_form.mode, state, orderQty)) {
        SetDlgItemText(IDC_FILL_QTY, std::to_string(*fillQty));
    }
}

void CEmendoOrder::OnFillQtyChanged() {
    const char state = OrderStateFromText(TextOf(GetDlgItem(IDC_ORDER_STATE)));
    if (ForwardQtyFollows(m_form.mode, state)) {
        SetDlgItemText(IDC_FORWARD_FILL_QTY, GetDlgItemText(IDC_FILL_QTY));
    }
}

void CEmendoOrder::OnFeeClicked() {
    ::EnableWindow(GetDlgItem(IDC_FEE), IsDlgButtonChecked(m_hWnd, IDC_FEE_GIVEN) == BST_CHECKED);
}

void CEmendoOrder::OnChosenPositionClicked() {
    if (m_form.mode == OrderMode::Carry) {
        Refresh();
    }
}

void CEmendoOrder::OnContractFocusLost() {
    const CommodityKey former = CommodityKeyOf(m_form);
    if (!TakeContract(m_form, GetDlgItemText(IDC_CONTRACT), CurrentTradeData())) {
        return;
    }
    FillForwardContracts();
    const CommodityKey taken = CommodityKeyOf(m_form);
    if (std::memcmp(&former, &taken, sizeof(taken)) != 0) {
        FollowCommodity();
    }
}

void CEmendoOrder::OnPickContract() {
    if (!m_picker) {
        m_picker.reset(new CSeleCodeWnd);
    }
    if (!m_picker->m_hWnd) {
        if (!m_picker->CreatePopup(m_hWnd)) {
            return;
        }
        m_picker->SetNotifyWnd(m_hWnd);
    }
    m_picker->SetExchangeFilter(m_form.mode == OrderMode::Carry);
    m_picker->Refresh("");
    m_picker->PlaceUnder(GetDlgItem(IDC_CONTRACT_PICK));
    m_picker->Toggle();
}

// The sign that comes with the choice belongs to the contract's data; the dialog keeps the account's.
LRESULT CEmendoOrder::OnSelectCode(WPARAM text, LPARAM) {
    const auto* chosen = reinterpret_cast<const char*>(text);
    if (chosen &&
        TakeContract(m_form, std::string(chosen, strnlen(chosen, kMaxContractText)), CurrentTradeData())) {
        ShowContract();
        Refresh();
    }
    return 0;
}

void CEmendoOrder::UpdateCarry() {
    if (m_form.mode != OrderMode::Carry || m_showing || !m_started) {
        return;
    }
    UpdateQuantities(nullptr);
    UpdateFilters();
}

void CEmendoOrder::UpdateFilters() {
    if (m_form.mode == OrderMode::Carry && m_carryLists.Complete()) {
        ReadForm();
        m_carryLists.SetFilters(FiltersOf(m_form, CurrentTradeData()));
    }
}

void CEmendoOrder::UpdateQuantities(const PositionRecord* changed) {
    ReadForm();
    const PositionQuantities quantities = QuantitiesOf(m_form, CurrentTradeData(), changed);
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
            const PriceRow price = PickedPrice(*position, CurrentTradeData());
            const auto ownTexts = m_numbers.OwnTexts();
            SetTextIfChanged(edit, price.whole);
            SetTextIfChanged(GetDlgItem(row->numerator), std::to_string(price.numerator));
        }
    });
}
