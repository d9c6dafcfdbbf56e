// The order dialog's values and lists on their way between the form and the controls, and what a layout wants
// of the controls.

#include "controls/dialog_setup.h"
#include "framework/data_exchange.h"
#include "framework/redraw_off.h"
#include "framework/scoped_value.h"
#include "framework/window_helpers.h"
#include "order/order_dialog.h"
#include "trade/code_tables.h"
#include "trade/contract_text.h"
#include "trade/host_services.h"

#include <algorithm>
#include <cstring>

namespace {

SYSTEMTIME ToSystemTime(const std::tm& fields) {
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(fields.tm_year + 1900);
    time.wMonth = static_cast<WORD>(fields.tm_mon + 1);
    time.wDay = static_cast<WORD>(fields.tm_mday);
    time.wHour = static_cast<WORD>(fields.tm_hour);
    time.wMinute = static_cast<WORD>(fields.tm_min);
    time.wSecond = static_cast<WORD>(fields.tm_sec);
    return time;
}

std::tm ToFields(const SYSTEMTIME& time) {
    std::tm fields{};
    fields.tm_year = time.wYear - 1900;
    fields.tm_mon = time.wMonth - 1;
    fields.tm_mday = time.wDay;
    fields.tm_hour = time.wHour;
    fields.tm_min = time.wMinute;
    fields.tm_sec = time.wSecond;
    return fields;
}

// Into the control only the item of this very code is selected: a code without one stands there as a text,
// and account 20 never becomes account 200.
void ExchangeCode(CDataExchange* exchange, int id, std::string& code) {
    std::string shown = code;
    if (!exchange->m_bSaveAndValidate && !code.empty()) {
        const HWND control = exchange->PrepareCtrl(id);
        const std::string item = code + ' ';
        if (::SendMessageA(control, CB_FINDSTRING, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>(item.c_str())) == CB_ERR) {
            ::SendMessageA(control, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
            SetTextIfChanged(control, code);
            return;
        }
        shown = item;
    }
    DDX_CBString(exchange, id, shown);
    if (exchange->m_bSaveAndValidate) {
        code = shown;
    }
}

void ExchangeFlag(CDataExchange* exchange, int id, bool& flag) {
    int value = flag;
    DDX_Check(exchange, id, value);
    flag = value != 0;
}

void ExchangeDate(CDataExchange* exchange, int id, std::tm& fields) {
    SYSTEMTIME time = ToSystemTime(fields);
    DDX_DateTimeCtrl(exchange, id, time);
    if (exchange->m_bSaveAndValidate) {
        fields = ToFields(time);
    }
}

void ExchangeNumber(CDataExchange* exchange, int id, std::int32_t& number) {
    int value = number;
    DDX_Text(exchange, id, value);
    number = value;
}

PixelRect RectInClient(HWND dialog, HWND control) {
    RECT rect{};
    ::GetWindowRect(control, &rect);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right, rect.bottom};
}

}  // namespace

CommodityKey CEmendoOrder::Contract::Commodity() const {
    return CommodityKeyOf(m_form);
}

TradeData CEmendoOrder::Contract::Trade() const {
    return CurrentTradeData();
}

std::string CEmendoOrder::Contract::FormatPrice(double price) const {
    ContractKey key{};
    if (const auto known = ContractKeyOf(m_form)) {
        key = *known;
    } else {
        const CommodityKey commodity = CommodityKeyOf(m_form);
        std::memcpy(&key, &commodity, sizeof(commodity));
    }
    return CurrentTradeData().FormatPrice(&key, price);
}

CxComboBox& CEmendoOrder::Combo(int id) {
    const auto settings = OrderComboSettings();
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [id](const ComboSettings& each) { return each.id == id; });
    return m_combos.at(static_cast<std::size_t>(found - settings.begin()));
}

void CEmendoOrder::BindCombos(CDataExchange* exchange) {
    for (const ComboSettings& settings : OrderComboSettings()) {
        DDX_Control(exchange, settings.id, Combo(settings.id));
    }
}

void CEmendoOrder::DoDataExchange(CDataExchange* exchange) {
    BindCombos(exchange);
    ExchangeCode(exchange, IDC_ACCOUNT, m_accountText);
    ExchangeCode(exchange, IDC_UPPER, m_form.upper);
    DDX_CBString(exchange, IDC_SOURCE, m_form.source);
    DDX_CBString(exchange, IDC_ORDER_TYPE, m_form.orderType);
    DDX_CBString(exchange, IDC_ORDER_STATE, m_form.orderState);
    DDX_CBString(exchange, IDC_VALID_TYPE, m_form.validType);
    ExchangeDate(exchange, IDC_VALID_DATE, m_form.validUntil);
    DDX_CBString(exchange, IDC_DIRECTION, m_form.direction);
    DDX_CBString(exchange, IDC_FORWARD_DIRECTION, m_form.forwardDirection);
    DDX_CBString(exchange, IDC_FORWARD_CONTRACT, m_form.forwardContract);
    ExchangeCode(exchange, IDC_CURRENCY, m_form.currency);
    DDX_Text(exchange, IDC_CONTRACT, m_form.contractText);
    DDX_Text(exchange, IDC_SYSTEM_NO, m_form.systemNo);
    DDX_Text(exchange, IDC_EX_SYSTEM_NO, m_form.exchangeSystemNo);
    DDX_Text(exchange, IDC_FILL_NO, m_form.exchangeFillNo);
    DDX_Text(exchange, IDC_FEE, m_form.fee);
    ExchangeNumber(exchange, IDC_ORDER_QTY, m_form.orderQty);
    ExchangeNumber(exchange, IDC_FILL_QTY, m_form.fillQty);
    for (const PriceRowControls& row : kPriceRows) {
        PriceRow& price = m_form.*row.value;
        DDX_Text(exchange, row.whole, price.whole);
        ExchangeNumber(exchange, row.numerator, price.numerator);
    }
    ExchangeFlag(exchange, IDC_FORCE_CLOSE, m_form.forcedClose);
    ExchangeFlag(exchange, IDC_FEE_GIVEN, m_form.feeGiven);
    ExchangeFlag(exchange, IDC_NEAR_CHOSEN_POSITION, m_form.nearPositionChosen);
    ExchangeFlag(exchange, IDC_FORWARD_CHOSEN_POSITION, m_form.forwardPositionChosen);
}

void CEmendoOrder::ReadForm() {
    UpdateData(true);
}

void CEmendoOrder::ShowForm() {
    const ScopedValue showing(m_showing, true);
    UpdateData(false);
}

void CEmendoOrder::SetUpCombos() {
    for (const ComboSettings& settings : OrderComboSettings()) {
        SetUpCombo(Combo(settings.id), settings);
    }
}

void CEmendoOrder::FillWordLists() {
    for (const ComboSettings& settings : OrderComboSettings()) {
        if (const auto words = WordItems(settings.id); !words.empty()) {
            Combo(settings.id).SetLines(words);
        }
    }
}

// The account that stands in the combo box stays there, selected when it is still listed.
void CEmendoOrder::FillAccounts() {
    CxComboBox& combo = Combo(IDC_ACCOUNT);
    const TradeData trade = CurrentTradeData();
    const std::string former = TextOf(combo.m_hWnd);
    const std::string formerSign = m_form.sign;
    combo.EnableWindow(MayChangeAccount(m_form, trade));  // by the sign of the account that stands there
    const ComboList list = ListAccounts(m_form, trade);
    SetPlainItems(combo, list.items);
    if (former.empty()) {
        return;
    }
    if (const int index = combo.FindItemByCode(former); index >= 0) {
        combo.SetCurSel(index);
    } else {
        m_form.sign = formerSign;
        SetTextIfChanged(combo.m_hWnd, former);
    }
}

void CEmendoOrder::FillForwardContracts() {
    CxComboBox& combo = Combo(IDC_FORWARD_CONTRACT);
    const auto list = ListForwardContracts(m_form, CurrentTradeData());
    if (!list) {
        return;
    }
    combo.SetLines(list->items);
    const bool scrolls = combo.GetCount() > combo.GetMinVisibleItems();
    combo.SetDroppedWidth(combo.WidestItem(combo.GetFont()) + 2 * GetSystemMetrics(SM_CXBORDER) +
                          (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0) + 2);
    if (list->selected >= 0) {
        combo.SetCurSel(list->selected);
    }
}

void CEmendoOrder::ShowContract() {
    if (const auto text = ShownContract(m_form)) {
        m_form.contractText = *text;
        SetDlgItemText(IDC_CONTRACT, *text);
    }
    FillForwardContracts();
}

void CEmendoOrder::ShowNumbers() {
    if (m_form.mode != OrderMode::Modify) {
        SetDlgItemText(IDC_SYSTEM_NO, m_form.systemNo);
    }
    SetDlgItemText(IDC_FILL_NO, m_form.exchangeFillNo);
}

void CEmendoOrder::Apply(const std::vector<ControlChange>& changes) {
    const auto ownTexts = m_numbers.OwnTexts();
    for (const ControlChange& change : changes) {
        ApplyControlStates(m_hWnd, {&change.state, 1});
        const HWND control = GetDlgItem(change.state.id);
        const auto report = [&](WORD notification) {
            SendMessage(WM_COMMAND, MAKEWPARAM(change.state.id, notification),
                        reinterpret_cast<LPARAM>(control));
        };
        switch (change.then) {
            case ControlChange::Then::SelectText:
                ::SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                               reinterpret_cast<LPARAM>(change.text->c_str()));
                continue;
            case ControlChange::Then::TellChanged:
                report(EN_CHANGE);
                break;
            case ControlChange::Then::TellFocusLost:
                report(EN_KILLFOCUS);
                break;
            case ControlChange::Then::Nothing:
                break;
        }
        if (change.text) {
            SetTextIfChanged(control, *change.text);
        }
    }
}

void CEmendoOrder::ApplyMode() {
    const ModeSetup setup = SetUpMode(m_form, CurrentTradeData(), SystemClock().Now());
    if (!setup.title.empty()) {
        SetWindowText(setup.title);
    }
    if (setup.disableAll) {
        for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
            const int id = ::GetDlgCtrlID(child);
            ::EnableWindow(child, id == IDC_CONFIRM || id == IDC_CANCEL);
        }
    }
    Apply(setup.changes);
    if (!setup.confirmText.empty()) {
        SetDlgItemText(IDC_CONFIRM, setup.confirmText);
    }
    if (m_form.mode == OrderMode::Carry && m_hWnd) {
        const auto rect = [this](int id) { return RectInClient(m_hWnd, GetDlgItem(id)); };
        m_carryLists.Create(m_hWnd, this);
        m_carryLists.Place(
            PositionListPlace(rect(IDC_NEAR_POSITION_PRICE_LABEL), rect(IDC_NEAR_POSITION_PRICE_WHOLE),
                              rect(IDC_NEAR_POSITION_QTY), rect(IDC_NEAR_SEPARATOR)),
            PositionListPlace(rect(IDC_FORWARD_POSITION_PRICE_LABEL), rect(IDC_FORWARD_POSITION_PRICE_WHOLE),
                              rect(IDC_FORWARD_POSITION_QTY), rect(IDC_FORWARD_SEPARATOR)));
    }
    if (setup.focusId != 0) {
        ::SetFocus(GetDlgItem(setup.focusId));
    }
}

void CEmendoOrder::Refresh() {
    if (m_started) {
        RefreshControls();
    }
}

void CEmendoOrder::RefreshControls() {
    if (m_refreshing || m_showing || m_form.mode == OrderMode::Exercise) {
        return;
    }
    const ScopedValue refreshing(m_refreshing, true);
    RedrawOff redrawOff(m_hWnd);
    ReadForm();
    const CommodityRecord* commodity = CurrentTradeData().Commodity(CommodityKeyOf(m_form));
    Apply(RefreshChanges(LayoutInputOf(m_form, commodity)));
    ArrangeBottomRow();
}

// A typed contract may be quoted in other fractions than the one before; what has been entered stays.
void CEmendoOrder::FollowCommodity() {
    if (m_form.mode == OrderMode::Exercise) {
        return;
    }
    ReadForm();
    const CommodityRecord* commodity = CurrentTradeData().Commodity(CommodityKeyOf(m_form));
    Apply(FractionChanges(LayoutInputOf(m_form, commodity)));
}

void CEmendoOrder::ArrangeBottomRow() {
    const PixelRect confirm = RectInClient(m_hWnd, GetDlgItem(IDC_CONFIRM));
    const PixelRect anchor = RectInClient(m_hWnd, GetDlgItem(BottomRowAnchor(m_form.mode)));
    const BottomRow row = BottomRowUnder(anchor.bottom, confirm.bottom - confirm.top);
    constexpr UINT kMoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;
    for (const int id : BottomRowControls()) {
        if (const HWND control = GetDlgItem(id)) {
            const PixelRect place = RectInClient(m_hWnd, control);
            if (place.top != row.top) {
                SetWindowPos(control, nullptr, place.left, row.top, 0, 0, kMoveOnly);
            }
        }
    }
    const RECT client = GetClientRect();
    const RECT window = GetWindowRect();
    if (client.bottom != row.clientHeight) {
        SetWindowPos(m_hWnd, nullptr, 0, 0, window.right - window.left,
                     window.bottom - window.top - client.bottom + row.clientHeight,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}
