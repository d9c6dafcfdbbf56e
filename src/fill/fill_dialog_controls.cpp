#include "controls/dialog_setup.h"
#include "controls/window_placement.h"
#include "fill/fill_dialog.h"
#include "fill/fill_population.h"
#include "fill/fill_request.h"
#include "framework/data_exchange.h"
#include "framework/redraw_off.h"
#include "framework/window_helpers.h"
#include "res/resource_ids.h"
#include "trade/code_tables.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

// The dialog's controls: their values, set-up, lists and places.

namespace {

// The words of sources and directions are whole items: "Manual Order" is not "Manual".
constexpr ComboSettings kComboSettings[] = {
    //               full   whole  no menu list   rows
    {IDC_EXCHANGE, false, false, true, false, 10},  {IDC_UPPER, false, false, true, false, 10},
    {IDC_COMMODITY, false, false, true, false, 10}, {IDC_FILL_SOURCE, false, true, true, true, 0},
    {IDC_DIRECTION, false, true, true, true, 0},    {IDC_CURRENCY, false, false, true, true, 0},
};

// What the fields of the request take of typed texts; the contract is read as a text of two legs.
struct TextLimit {
    int id;
    int characters;
};
constexpr TextLimit kTextLimits[] = {{IDC_FILL_NO, FixedText<51>::kWidth - 1},
                                     {IDC_SYSTEM_NO, FixedText<51>::kWidth - 1},
                                     {IDC_FILL_CONTRACT, 64},
                                     {IDC_OPEN_CONTRACT, 19}};

constexpr const char* kPreferredCurrency = "USD";

// A combo box of coded lines: shows the code of its field, exactly.
void DDX_Code(CDataExchange* exchange, CxComboBox& combo, std::string& code) {
    if (exchange->m_bSaveAndValidate) {
        code = combo.GetText();
    } else {
        SelectByCode(combo, code);
    }
}

void DDX_Check(CDataExchange* exchange, int id, bool& value) {
    int ticked = value;
    DDX_Check(exchange, id, ticked);
    value = ticked != 0;
}

}  // namespace

void CEmendoMatch::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_UPPER, m_upper);
    DDX_Control(exchange, IDC_ACCOUNT, m_account);
    DDX_Control(exchange, IDC_FILL_SOURCE, m_fillSource);
    DDX_Control(exchange, IDC_EXCHANGE, m_exchange);
    DDX_Control(exchange, IDC_COMMODITY, m_commodity);
    DDX_Control(exchange, IDC_DIRECTION, m_direction);
    DDX_Control(exchange, IDC_CURRENCY, m_currency);
    DDX_Control(exchange, IDC_OPEN_DIRECTION, m_openDirection);

    DDX_Text(exchange, IDC_FILL_NO, m_form.exchangeFillNo);
    DDX_Text(exchange, IDC_SYSTEM_NO, m_form.systemNo);
    DDX_Code(exchange, m_upper, m_form.upper);
    DDX_Code(exchange, m_account, m_form.account);
    DDX_Code(exchange, m_fillSource, m_form.fillSource);
    DDX_Text(exchange, IDC_FILL_QTY, m_form.fillQty);
    DDX_Code(exchange, m_exchange, m_form.exchange);
    DDX_Code(exchange, m_commodity, m_form.commodity);
    if (exchange->m_bSaveAndValidate) {
        m_form.commodityIndex = m_commodity.GetCurSel();
    }
    DDX_Text(exchange, IDC_FILL_CONTRACT, m_form.contract);
    DDX_Code(exchange, m_direction, m_form.direction);
    DDX_Text(exchange, IDC_FILL_PRICE_WHOLE, m_form.price.whole);
    DDX_Text(exchange, IDC_FILL_PRICE_NUMERATOR, m_form.price.numerator);
    DDX_Text(exchange, IDC_OPEN_CONTRACT, m_form.openContract);
    DDX_CBString(exchange, IDC_OPEN_DIRECTION, m_form.openDirection);
    DDX_Text(exchange, IDC_FILL_PRICE2_WHOLE, m_form.price2.whole);
    DDX_Text(exchange, IDC_FILL_PRICE2_NUMERATOR, m_form.price2.numerator);
    DDX_Code(exchange, m_currency, m_form.currency);
    if (!exchange->m_bSaveAndValidate) {
        DDX_Text(exchange, IDC_FILL_PRICE_DENOMINATOR, m_form.denominator);
        DDX_Text(exchange, IDC_FILL_PRICE2_DENOMINATOR, m_form.denominator2);
    }
    DDX_Check(exchange, IDC_FILL_FEE_GIVEN, m_form.feeGiven);
    DDX_Text(exchange, IDC_FEE, m_form.fee);
}

// --- set-up ---

void CEmendoMatch::SetUpControls() {
    SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_openDirection.EnableWindow(false);
    for (const ComboSettings& settings : kComboSettings) {
        if (CWnd* combo = FromHandlePermanent(GetDlgItem(settings.id))) {
            SetUpCombo(static_cast<CxComboBox&>(*combo), settings);
        }
    }
    m_numbers.Attach(m_hWnd);
    for (const TextLimit& limit : kTextLimits) {
        SendDlgItemMessageA(m_hWnd, limit.id, EM_LIMITTEXT, limit.characters, 0);
    }
    m_openDirection.ResetContent();
    for (const std::string& direction : DirectionItems()) {
        m_openDirection.AddString(direction);
    }
    m_direction.SetItems(DirectionItems(), false);
    m_fillSource.SetItems(FillSourceItems(), false);
}

void CEmendoMatch::SetUpMode() {
    const std::string title = FillTitle(m_form);
    if (!title.empty()) {
        SetWindowText(title);
    }
    SetDlgItemText(IDC_CONFIRM, FillConfirmCaption(m_form.mode));
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (StartsDisabled(m_form.mode, m_form.order != nullptr, ::GetDlgCtrlID(child))) {
            ::EnableWindow(child, FALSE);
        }
    }
    if (FillMode::IsInput(m_form.mode)) {
        GenerateNumbers(m_form, SystemClock().Now());
        SetDlgItemText(IDC_FILL_NO, m_form.exchangeFillNo);
        SetDlgItemText(IDC_SYSTEM_NO, m_form.systemNo);
        m_upper.SetFocus();
    }
}

void CEmendoMatch::ShowLoadedRecord() {
    if (!m_form.exchange.empty() && !m_form.commodity.empty() &&
        OrderSourceFromTextWithAll(m_form.fillSource) == kCarrySource) {
        // A carry belongs on the forward market, whatever exchange its record names.
        const std::string exchange = DefaultExchange(m_form, CurrentTradeData());
        if (!exchange.empty()) {
            m_form.exchange = exchange;
        }
    }
    // The commodities are those of the exchange, so it has to be there first.
    SelectByCode(m_exchange, m_form.exchange);
    FillCommodities();
    UpdateData(false);
}

void CEmendoMatch::ShowDefaults() {
    SelectDefaultExchange();
    FillCommodities();
    if (m_commodity.GetCount() > 0) {
        m_commodity.SetCurSel(0);
    }
}

// --- lists ---

std::vector<std::string> CEmendoMatch::ListOfSign(const ItemsOfSign& items) const {
    const TradeData trade = CurrentTradeData();
    return ListsAreOpen(m_form.accountNo, m_form.sign, trade) ? items(m_form.sign, trade)
                                                              : std::vector<std::string>();
}

void CEmendoMatch::FillLists() {
    const auto ofEverySign = [](const std::string&, const TradeData& trade) { return CurrencyItems(trade); };
    m_currency.SetItems(ListOfSign(ofEverySign), true);
    m_currency.SelectString(-1, kPreferredCurrency);
    m_form.currency = m_currency.GetText();
    FillAccounts();
    m_upper.SetItems(ListOfSign(UpperItems), true);
    m_exchange.SetItems(ListOfSign(ExchangeItems), true);
}

void CEmendoMatch::FillAccounts() {
    SetPlainItems(m_account, ListOfSign(AccountItems));
}

void CEmendoMatch::FillCommodities() {
    const ExchangeKey exchange = ExchangeKeyOf(ChosenForm());
    std::vector<std::string> items;
    if (!exchange.exchangeNo.Empty()) {
        items = ListOfSign(
            [&](const std::string&, const TradeData& trade) { return CommodityItems(exchange, trade); });
    }
    m_commodity.SetItems(std::move(items), true);
    m_listedExchange = exchange.exchangeNo.Str();
}

// --- layout ---

FillForm CEmendoMatch::ChosenForm() const {
    FillForm chosen = m_form;
    chosen.exchange = m_exchange.GetCurrentCode();
    chosen.commodity = m_commodity.GetCurrentCode();
    chosen.commodityIndex = m_commodity.GetCurSel();
    chosen.contract = GetDlgItemText(IDC_FILL_CONTRACT);
    return chosen;
}

char CEmendoMatch::ChosenSource() const {
    return OrderSourceFromTextWithAll(m_fillSource.GetCurrentCode());
}

void CEmendoMatch::SelectDefaultExchange() {
    const std::string exchange = DefaultExchange(m_form, CurrentTradeData());
    if (!exchange.empty() && m_exchange.GetCurrentCode() != exchange) {
        SelectByCode(m_exchange, exchange);
    }
}

void CEmendoMatch::Relayout() {
    const FillForm chosen = ChosenForm();
    if (chosen.commodity.empty() || chosen.exchange.empty()) {
        return;
    }
    const FillView view =
        ViewOf(m_form.mode, ChosenSource(), FindCommodity(chosen, CurrentTradeData()), m_form.denominator);
    m_form.denominator = m_form.denominator2 = view.denominator;
    if (view.fillSource == kCarrySource) {
        SelectDefaultExchange();
    }
    RedrawOff redrawOff(m_hWnd);
    ApplyControlStates(m_hWnd, FillControlStates(view));
    const std::string denominator = std::to_string(view.denominator);
    SetDlgItemText(IDC_FILL_PRICE_DENOMINATOR, denominator);
    SetDlgItemText(IDC_FILL_PRICE2_DENOMINATOR, denominator);
    ChangeLayout(view.Layout());
}

void CEmendoMatch::MoveDown(int controlId, int pixels) {
    const HWND control = GetDlgItem(controlId);
    RECT place;
    if (control && ::GetWindowRect(control, &place)) {
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&place), 2);
        ::SetWindowPos(control, nullptr, place.left, place.top + pixels, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void CEmendoMatch::ChangeLayout(FillLayout target) {
    if (target == m_layout) {
        return;
    }
    // Exchange and upper stand two rows apart and never move.
    const int row = (m_exchange.GetWindowRect().top - m_upper.GetWindowRect().top) / 2;
    const FillMove move = MoveBetween(m_layout, target);
    m_layout = target;
    for (int id : SecondPriceControls()) {
        MoveDown(id, move.secondPriceRows * row);
    }
    for (int id : BottomControls()) {
        MoveDown(id, move.bottomRows * row);
    }
    const RECT window = GetWindowRect();
    const VerticalEdges edges = GrownEvenly({window.top, window.bottom}, move.bottomRows * row);
    ::SetWindowPos(m_hWnd, nullptr, window.left, edges.top, window.right - window.left,
                   edges.bottom - edges.top, SWP_NOZORDER | SWP_NOACTIVATE);
    PlaceDialogOverHost(m_hWnd);
}
