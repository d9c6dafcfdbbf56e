#include "fill/fill_dialog.h"

#include "controls/dialog_keys.h"
#include "controls/dialog_prompt.h"
#include "controls/dialog_setup.h"
#include "controls/window_placement.h"
#include "fill/fill_population.h"
#include "fill/fill_request.h"
#include "framework/data_exchange.h"
#include "framework/guard.h"
#include "framework/window_helpers.h"
#include "res/dialog_creation.h"
#include "res/resource_ids.h"
#include "trade/code_tables.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

namespace {

// The words of sources and directions are whole items: "Manual Order" is not "Manual".
constexpr ComboSettings kComboSettings[] = {
    //               full   whole  no menu list   rows
    {IDC_EXCHANGE, false, false, true, false, 10},  {IDC_UPPER, false, false, true, false, 10},
    {IDC_COMMODITY, false, false, true, false, 10}, {IDC_FILL_SOURCE, false, true, true, true, 0},
    {IDC_DIRECTION, false, true, true, true, 0},    {IDC_CURRENCY, false, false, true, true, 0},
};

constexpr NumericRow kNumericRows[] = {
    {IDC_FILL_QTY, IDC_FILL_QTY_SPIN},
    {IDC_FILL_PRICE_WHOLE, IDC_FILL_PRICE_SPIN, IDC_FILL_PRICE_NUMERATOR},
    {IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_SPIN, IDC_FILL_PRICE2_NUMERATOR},
};
constexpr NumericTable kNumbers{kNumericRows, IDC_FEE, TextRuleScope::FocusedEdit};

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

// Keeps a second confirmation out while the first runs; the dialog may be gone at its end.
class Submission {
public:
    Submission(const CWnd& dialog, bool& running) : m_watch(&dialog), m_running(running) { m_running = true; }
    ~Submission() {
        if (m_watch.ObjectAlive()) {
            m_running = false;
        }
    }
    Submission(const Submission&) = delete;
    Submission& operator=(const Submission&) = delete;

    bool DialogAlive() const { return m_watch.WindowAlive(); }

private:
    WindowWatch m_watch;
    bool& m_running;
};

}  // namespace

BEGIN_MESSAGE_MAP(CEmendoMatch, CDialog)
ON_WM_CLOSE()
ON_WM_DESTROY()
ON_BN_CLICKED(IDC_CONFIRM, &CEmendoMatch::OnConfirm)
ON_BN_CLICKED(IDC_CANCEL, &CEmendoMatch::OnCancelClicked)
ON_CBN_SELCHANGE(IDC_FILL_SOURCE, &CEmendoMatch::OnFillSourceChanged)
ON_CBN_SELCHANGE(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_KILLFOCUS(IDC_COMMODITY, &CEmendoMatch::OnCommodityChanged)
ON_CBN_SELCHANGE(IDC_EXCHANGE, &CEmendoMatch::OnExchangeChanged)
ON_CBN_KILLFOCUS(IDC_EXCHANGE, &CEmendoMatch::OnExchangeLeft)
ON_CBN_SELCHANGE(IDC_DIRECTION, &CEmendoMatch::OnDirectionChanged)
ON_CBN_SETFOCUS(IDC_ACCOUNT, &CEmendoMatch::OnAccountFocus)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_QTY, IDC_FILL_QTY, &CEmendoMatch::OnNumberUpdate)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_PRICE_WHOLE, IDC_FILL_PRICE_WHOLE, &CEmendoMatch::OnNumberUpdate)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_PRICE_NUMERATOR, IDC_FILL_PRICE_NUMERATOR, &CEmendoMatch::OnNumberUpdate)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_WHOLE, &CEmendoMatch::OnNumberUpdate)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FILL_PRICE2_NUMERATOR, IDC_FILL_PRICE2_NUMERATOR,
                 &CEmendoMatch::OnNumberUpdate)
ON_CONTROL_RANGE(EN_UPDATE, IDC_FEE, IDC_FEE, &CEmendoMatch::OnNumberUpdate)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_QTY_SPIN, &CEmendoMatch::OnSpin)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_PRICE_SPIN, &CEmendoMatch::OnSpin)
ON_NOTIFY(UDN_DELTAPOS, IDC_FILL_PRICE2_SPIN, &CEmendoMatch::OnSpin)
END_MESSAGE_MAP()

CEmendoMatch::CEmendoMatch(int mode, void* record, int recordKind, HWND parent)
    : m_parent(parent), m_numbers(kNumbers, m_chosen) {
    m_form.mode = mode;
    if (recordKind == kRecordKindFill) {
        m_form.fill = static_cast<const FillRecord*>(record);
    } else if (recordKind == kRecordKindOrder) {
        m_form.order = static_cast<const OrderRecord*>(record);
    }
}

CEmendoMatch::~CEmendoMatch() {
    if (g_pFillDialog == this) {
        g_pFillDialog = nullptr;
    }
}

bool CEmendoMatch::Create() {
    return CreateFromResources(*this, IDD_FILL, m_parent);
}

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
    DDX_Text(exchange, IDC_FILL_CONTRACT, m_form.contract);
    DDX_Code(exchange, m_direction, m_form.direction);
    DDX_Text(exchange, IDC_FILL_PRICE_WHOLE, m_form.price.whole);
    DDX_Text(exchange, IDC_FILL_PRICE_NUMERATOR, m_form.price.numerator);
    DDX_Text(exchange, IDC_OPEN_CONTRACT, m_form.openContract);
    DDX_CBString(exchange, IDC_OPEN_DIRECTION, m_form.openDirection);
    DDX_Text(exchange, IDC_FILL_PRICE2_WHOLE, m_form.price2.whole);
    DDX_Text(exchange, IDC_FILL_PRICE2_NUMERATOR, m_form.price2.numerator);
    DDX_Code(exchange, m_currency, m_form.currency);
    DDX_Check(exchange, IDC_FILL_FEE_GIVEN, m_form.feeGiven);
    DDX_Text(exchange, IDC_FEE, m_form.fee);
}

// --- start-up ---

BOOL CEmendoMatch::OnInitDialog() {
    CDialog::OnInitDialog();
    SetUpControls();
    FillCurrencies();
    FillAccounts();
    m_upper.SetItems(ListOfSign(UpperItems), true);
    m_exchange.SetItems(ListOfSign(ExchangeItems), true);
    SetUpMode();
    if (LoadRecord(m_form, CurrentTradeData())) {
        ShowLoadedRecord();
    } else {
        ShowDefaults();
    }
    m_reacting = true;
    Relayout();
    PlaceDialogOverHost(m_hWnd);
    return TRUE;
}

void CEmendoMatch::SetUpControls() {
    SetWindowPos(m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    m_openDirection.EnableWindow(false);
    for (const ComboSettings& settings : kComboSettings) {
        SetUpCombo(static_cast<CxComboBox&>(*FromHandlePermanent(GetDlgItem(settings.id))), settings);
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

void CEmendoMatch::FillCurrencies() {
    const auto everySign = [](const std::string&, const TradeData& trade) { return CurrencyItems(trade); };
    m_currency.SetItems(ListOfSign(everySign), true);
    m_currency.SelectString(-1, kPreferredCurrency);
    m_form.currency = m_currency.GetText();
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

// --- reactions ---

void CEmendoMatch::OnFillSourceChanged() {
    if (m_reacting) {
        Relayout();
    }
}

void CEmendoMatch::OnCommodityChanged() {
    if (m_reacting) {
        Relayout();
    }
}

void CEmendoMatch::OnExchangeChanged() {
    if (m_reacting) {
        FillCommodities();
        Relayout();
    }
}

void CEmendoMatch::OnExchangeLeft() {
    if (!m_reacting) {
        return;
    }
    // The exchange that was only passed by keeps its commodity.
    const bool sameExchange = m_exchange.GetCurrentCode() == m_listedExchange;
    const std::string commodity = sameExchange ? m_commodity.GetText() : std::string();
    FillCommodities();
    m_reacting = false;
    SelectByCode(m_commodity, commodity);
    m_reacting = true;
    Relayout();
}

void CEmendoMatch::OnDirectionChanged() {
    if (m_reacting) {
        m_form.direction = m_direction.GetCurrentCode();
        m_form.openDirection = OpenDirectionOf(m_form.direction);
        m_openDirection.SetWindowText(m_form.openDirection);
    }
}

void CEmendoMatch::OnAccountFocus() {
    if (!m_reacting || static_cast<int>(CurrentTradeData().Users("").size()) == m_account.GetCount()) {
        return;
    }
    // Only the list is new; what was entered stays.
    const std::string account = m_account.GetText();
    FillAccounts();
    m_account.SetWindowText(account);
}

void CEmendoMatch::OnNumberUpdate(UINT controlId) {
    if (m_reacting) {
        m_numbers.OnTextUpdate(static_cast<int>(controlId));
    }
}

void CEmendoMatch::OnSpin(NMHDR* notification, LRESULT* result) {
    *result = m_numbers.OnSpin(notification);
}

CommodityKey CEmendoMatch::ChosenContract::Commodity() const {
    const FillForm chosen = m_dialog.ChosenForm();
    const CommodityRecord* commodity = FindCommodity(chosen, Trade());
    return commodity ? CommodityOf(*commodity) : CommodityKeyOf(chosen);
}

TradeData CEmendoMatch::ChosenContract::Trade() const {
    return CurrentTradeData();
}

std::string CEmendoMatch::ChosenContract::FormatPrice(double price) const {
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
    if (m_submitting) {
        return;
    }
    Submission submission(*this, m_submitting);
    UpdateData(true);
    // A copy: the dialog may go away behind a question or a request.
    const FillForm form = m_form;
    DialogPrompt prompt(*this);
    const FillOutcome outcome =
        SubmitFill(form, {CurrentTradeData(), CurrentTradeRequests(), prompt, SystemClock()});
    if (submission.DialogAlive()) {
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
    m_reacting = false;
    CDialog::OnDestroy();
}

void CEmendoMatch::PostNcDestroy() {
    CDialog::PostNcDestroy();
    delete this;
}

// --- keyboard ---

BOOL CEmendoMatch::PreTranslateMessage(const MSG* message) {
    return Guarded([&] { return message && OfferToWindows(*this, *message); }, false);
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
