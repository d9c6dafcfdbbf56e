// The order dialog's values and lists on their way between the form and the controls, and what a layout wants
// of the controls.

#include "controls/dialog_exchange.h"
#include "controls/dialog_setup.h"
#include "framework/data_exchange.h"
#include "framework/redraw_off.h"
#include "framework/scoped_value.h"
#include "framework/window_helpers.h"
#include "order/order_dialog.h"
#include "trade/coded_lists.h"
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

void ExchangeDate(CDataExchange* exchange, int id, std::tm& fields) {
    SYSTEMTIME time = ToSystemTime(fields);
    DDX_DateTimeCtrl(exchange, id, time);
    if (exchange->m_bSaveAndValidate) {
        fields = ToFields(time);
    }
}

}  // namespace

void CEmendoOrder::DoDataExchange(CDataExchange* exchange) {
    BindCombos(exchange);
    ExchangeAccount(exchange);
    DDX_CodedText(exchange, Combo(IDC_UPPER), m_form.upper);
    for (const WordList& words : OrderWordLists()) {
        DDX_Code(exchange, Combo(words.comboId), words.list, m_form.*words.code);
    }
    ExchangeDate(exchange, IDC_VALID_DATE, m_form.validUntil);
    DDX_CBString(exchange, IDC_FORWARD_CONTRACT, m_form.forwardContract);
    DDX_CodedText(exchange, Combo(IDC_CURRENCY), m_form.currency);
    DDX_Text(exchange, IDC_CONTRACT, m_form.contractText);
    DDX_Text(exchange, IDC_SYSTEM_NO, m_form.systemNo);
    DDX_Text(exchange, IDC_EX_SYSTEM_NO, m_form.exchangeSystemNo);
    DDX_Text(exchange, IDC_FILL_NO, m_form.exchangeFillNo);
    DDX_Text(exchange, IDC_FEE, m_form.fee);
    DDX_Number(exchange, IDC_ORDER_QTY, m_form.orderQty);
    DDX_Number(exchange, IDC_FILL_QTY, m_form.fillQty);
    for (const PriceRowControls& row : kPriceRows) {
        PriceRow& price = m_form.*row.value;
        DDX_Text(exchange, row.whole, price.whole);
        DDX_Number(exchange, row.numerator, price.numerator);
    }
    DDX_Flag(exchange, IDC_FORCE_CLOSE, m_form.forcedClose);
    DDX_Flag(exchange, IDC_FEE_GIVEN, m_form.feeGiven);
    DDX_Flag(exchange, IDC_NEAR_CHOSEN_POSITION, m_form.nearPositionChosen);
    DDX_Flag(exchange, IDC_FORWARD_CHOSEN_POSITION, m_form.forwardPositionChosen);
}

// Several rows may have one number, each under a sign of its own.
void CEmendoOrder::ExchangeAccount(CDataExchange* exchange) {
    CxComboBox& combo = Combo(IDC_ACCOUNT);
    const int row = exchange->m_bSaveAndValidate ? -1 : FindAccountRow(m_form, m_accountText);
    if (row >= 0 && m_form.accounts[static_cast<std::size_t>(row)].sign == m_form.sign) {
        combo.SetCurSel(row);
    } else if (exchange->m_bSaveAndValidate) {
        DDX_CodedText(exchange, combo, m_accountText);
    } else {
        combo.SetCurSel(-1);
        combo.SetWindowText(m_accountText);
    }
}

void CEmendoOrder::ReadForm() {
    UpdateData(true);
    if (m_form.mode == OrderMode::Carry) {
        m_form.source = OrderSource::kCarry;  // which the hidden list does not offer
    }
}

void CEmendoOrder::ShowForm() {
    const ScopedValue showing(m_showing, true);
    UpdateData(false);
}

void CEmendoOrder::SetUpControls() {
    SetUpEntries();
    m_contractEdit.SubclassDlgItem(IDC_CONTRACT, m_hWnd);
    m_form.validUntil = SystemClock().Now().fields;
}

void CEmendoOrder::ShowLists() {
    for (const WordList& words : OrderWordLists()) {
        Combo(words.comboId).SetLines(words.list.Words());
    }
    Combo(IDC_FORWARD_DIRECTION).SetLines(WordListOf(IDC_DIRECTION).list.Words());
    const auto currencies = ListCurrencies(m_form, Trade());
    Combo(IDC_CURRENCY).SetLines(currencies);
    m_form.currency = PreferredCurrency(currencies);
    ShowAccounts();
    Combo(IDC_UPPER).SetLines(ListUppers(m_form, Trade()));
}

// What stands in the account combo box stays there, selected when it is still listed under its sign.
void CEmendoOrder::ShowAccounts() {
    CxComboBox& combo = Combo(IDC_ACCOUNT);
    const TradeData trade = Trade();
    const std::string former = combo.GetText();
    OrderForm asked = m_form;
    if (former.empty()) {
        asked.account.clear();  // an emptied box is open to every account, whatever the former one allows
    }
    combo.EnableWindow(MayChangeAccount(asked, trade));
    m_form.accounts = ListAccounts(asked, trade);
    if (m_form.account.empty() && !m_form.accounts.empty()) {
        m_form.sign = m_form.accounts.front().sign;
    }
    std::vector<std::string> lines;
    for (const AccountRow& row : m_form.accounts) {
        lines.push_back(CodedItem(row.accountNo, row.accountName));
    }
    SetPlainItems(combo, lines);
    const int row = former.empty() ? -1 : FindAccountRow(m_form, former);
    if (row >= 0 && row != combo.GetSelectedIndex()) {
        combo.SelectQuietly(row);
    }
}

// The forward contract that the operator entered stays while the commodity does; otherwise the contract of
// the dialog itself is offered.
void CEmendoOrder::ShowForwardContracts() {
    CxComboBox& combo = Combo(IDC_FORWARD_CONTRACT);
    const auto lines = ListForwardContracts(m_form, Trade());
    if (!lines) {
        return;
    }
    const CommodityKey commodity = CommodityKeyOf(m_form);
    const std::string former = TextOf(combo.m_hWnd);
    const std::string formerNo = ContractNoOfLine(former);
    const bool keeps = !former.empty() && (m_forwardChosen || formerNo != m_offeredForward) &&
                       std::memcmp(&commodity, &m_forwardCommodity, sizeof(commodity)) == 0;
    m_forwardCommodity = commodity;
    m_forwardChosen = keeps;
    m_offeredForward = keeps ? std::string() : m_form.contractNo;
    combo.SetLines(*lines);
    const bool scrolls = combo.GetCount() > combo.GetMinVisibleItems();
    combo.SetDroppedWidth(combo.WidestItem(combo.GetFont()) + 2 * GetSystemMetrics(SM_CXBORDER) +
                          (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0) + 2);
    const std::string& wanted = keeps ? formerNo : m_offeredForward;
    const auto found = std::find_if(lines->begin(), lines->end(), [&](const std::string& line) {
        return !wanted.empty() && ContractNoOfLine(line) == wanted;
    });
    if (found != lines->end()) {
        combo.SelectQuietly(static_cast<int>(found - lines->begin()));
    } else if (keeps) {
        combo.SetWindowText(former);
    }
}

void CEmendoOrder::ShowContract() {
    if (const auto text = ShownContract(m_form)) {
        m_form.contractText = *text;
        SetDlgItemText(IDC_CONTRACT, *text);
    }
    m_takenContract = GetDlgItemText(IDC_CONTRACT);
    ShowForwardContracts();
}

void CEmendoOrder::ShowNumbers() {
    if (m_form.mode != OrderMode::Modify) {
        SetDlgItemText(IDC_SYSTEM_NO, m_form.systemNo);
    }
    SetDlgItemText(IDC_FILL_NO, m_form.exchangeFillNo);
}

// The report of the selection runs before all of the choice is shown, so the code is the form's once more
// afterwards.
void CEmendoOrder::EnterCode(int comboId, char code) {
    const WordList& words = WordListOf(comboId);
    CDataExchange exchange(*this, false);
    char entered = code;
    DDX_Code(&exchange, Combo(comboId), words.list, entered);
    m_form.*words.code = code;
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
            case ControlChange::Then::EnterCode:
                EnterCode(change.state.id, change.code);
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

void CEmendoOrder::SetUpMode() {
    const ModeSetup setup = ModeSetupOf(m_form, Trade(), SystemClock().Now());
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
        m_carryLists.Create(m_hWnd, this);
        m_carryLists.Place(
            PositionListPlace(PlaceOf(IDC_NEAR_POSITION_PRICE_LABEL), PlaceOf(IDC_NEAR_POSITION_PRICE_WHOLE),
                              PlaceOf(IDC_NEAR_POSITION_QTY), PlaceOf(IDC_NEAR_SEPARATOR)),
            PositionListPlace(PlaceOf(IDC_FORWARD_POSITION_PRICE_LABEL),
                              PlaceOf(IDC_FORWARD_POSITION_PRICE_WHOLE), PlaceOf(IDC_FORWARD_POSITION_QTY),
                              PlaceOf(IDC_FORWARD_SEPARATOR)));
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
    Apply(RefreshChanges(TakeView()));
    ArrangeBottomRow();
}

// A typed contract may be quoted in other fractions than the one before, or be a spread; what has been
// entered stays.
void CEmendoOrder::FollowCommodity() {
    if (m_form.mode != OrderMode::Exercise) {
        Apply(CommodityChanges(TakeView()));
    }
}

OrderView CEmendoOrder::TakeView() {
    ReadForm();
    const OrderView view = ViewOf(m_form, Trade().Commodity(CommodityKeyOf(m_form)));
    m_form.denominator = view.denominator;
    return view;
}

void CEmendoOrder::ArrangeBottomRow() {
    const PixelRect confirm = PlaceOf(IDC_CONFIRM);
    const BottomRow row =
        BottomRowUnder(PlaceOf(BottomRowAnchor(m_form.mode)).bottom, confirm.bottom - confirm.top);
    for (const int id : BottomRowControls()) {
        MoveDown(id, row.top - PlaceOf(id).top);
    }
    GrowDown(row.clientHeight - GetClientRect().bottom);
}
