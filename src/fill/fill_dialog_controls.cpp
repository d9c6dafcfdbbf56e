#include "controls/dialog_exchange.h"
#include "controls/dialog_setup.h"
#include "controls/window_placement.h"
#include "entry/forward_market.h"
#include "fill/fill_dialog.h"
#include "fill/fill_population.h"
#include "fill/fill_request.h"
#include "framework/data_exchange.h"
#include "framework/redraw_off.h"
#include "framework/trim_blanks.h"
#include "framework/window_helpers.h"
#include "res/resource_ids.h"
#include "trade/code_tables.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

#include <utility>

// The dialog's controls: their values, set-up, lists and places.

namespace {

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

// Without telling the dialog; the code alone when that is not its line.
void ShowLine(CxComboBox& combo, int line, const std::string& code) {
    const bool listed = line >= 0 && combo.GetItemCode(line) == code;
    combo.SelectQuietly(listed ? line : -1);
    if (!listed) {
        combo.SetWindowText(code);
    }
}

}  // namespace

void CEmendoMatch::DoDataExchange(CDataExchange* exchange) {
    BindCombos(exchange);
    DDX_Control(exchange, IDC_OPEN_DIRECTION, m_openDirection);

    DDX_Text(exchange, IDC_FILL_NO, m_form.exchangeFillNo);
    DDX_Text(exchange, IDC_SYSTEM_NO, m_form.systemNo);
    DDX_CodedText(exchange, Combo(IDC_UPPER), m_form.upper);
    DDX_CodedText(exchange, Combo(IDC_ACCOUNT), m_form.account);
    DDX_Code(exchange, Combo(IDC_FILL_SOURCE), SourcesOf(m_form), m_form.source);
    DDX_Number(exchange, IDC_FILL_QTY, m_form.fillQty);
    DDX_Code(exchange, Combo(IDC_DIRECTION), kDirections, m_form.direction);
    DDX_Text(exchange, IDC_FILL_PRICE_WHOLE, m_form.fillPrice.whole);
    DDX_Number(exchange, IDC_FILL_PRICE_NUMERATOR, m_form.fillPrice.numerator);
    DDX_Text(exchange, IDC_OPEN_CONTRACT, m_form.openContract);
    DDX_Text(exchange, IDC_FILL_PRICE2_WHOLE, m_form.fillPrice2.whole);
    DDX_Number(exchange, IDC_FILL_PRICE2_NUMERATOR, m_form.fillPrice2.numerator);
    DDX_Flag(exchange, IDC_FILL_FEE_GIVEN, m_form.feeGiven);
    DDX_Text(exchange, IDC_FEE, m_form.fee);
    if (exchange->m_bSaveAndValidate) {
        m_form = ChosenForm();
        m_form.openContract = TrimBlanks(m_form.openContract);
        m_form.currency = Combo(IDC_CURRENCY).GetCurrentCode();
        return;
    }
    ShowCommodity(m_form);
    SetDlgItemText(IDC_FILL_CONTRACT, m_form.contractNo);
    DDX_Number(exchange, IDC_FILL_PRICE_DENOMINATOR, m_form.denominator);
    DDX_Number(exchange, IDC_FILL_PRICE2_DENOMINATOR, m_form.denominator);
    ShowOpenDirection();
}

// --- set-up ---

void CEmendoMatch::SetUpControls() {
    SetUpEntries();
    m_openDirection.EnableWindow(false);
    for (const TextLimit& limit : kTextLimits) {
        SendDlgItemMessageA(m_hWnd, limit.id, EM_LIMITTEXT, limit.characters, 0);
    }
    m_openDirection.ResetContent();
    for (const std::string& direction : kDirections.Words()) {
        m_openDirection.AddString(direction);
    }
    Combo(IDC_DIRECTION).SetItems(kDirections.Words(), false);
    Combo(IDC_FILL_SOURCE).SetItems(SourcesOf(m_form).Words(), false);
}

void CEmendoMatch::SetUpMode() {
    const std::string title = FillTitle(m_form);
    if (!title.empty()) {
        SetWindowText(title);
    }
    SetDlgItemText(IDC_CONFIRM, ConfirmText(m_form.mode));
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (StartsDisabled(m_form.mode, m_form.order != nullptr, ::GetDlgCtrlID(child))) {
            ::EnableWindow(child, FALSE);
        }
    }
    if (IsInput(m_form.mode)) {
        GenerateNumbers(m_form, SystemClock().Now());
        SetDlgItemText(IDC_FILL_NO, m_form.exchangeFillNo);
        SetDlgItemText(IDC_SYSTEM_NO, m_form.systemNo);
        Combo(IDC_UPPER).SetFocus();
    }
}

void CEmendoMatch::ShowLoadedRecord() {
    // The commodities are those of the exchange, so it has to be there first.
    ShowLine(Combo(IDC_EXCHANGE), Combo(IDC_EXCHANGE).FindCode(m_form.exchangeNo), m_form.exchangeNo);
    ShowCommodities();
    UpdateData(false);
}

void CEmendoMatch::ShowDefaults() {
    SelectDefaultExchange();
    ShowCommodities();
    if (Combo(IDC_COMMODITY).GetCount() > 0) {
        Combo(IDC_COMMODITY).SetCurSel(0);
    }
}

// --- lists ---

bool CEmendoMatch::MayList() const {
    return ListsAreOpen(m_form.accountNo, m_form.sign, Trade());
}

void CEmendoMatch::ShowLists() {
    const TradeData trade = Trade();
    Combo(IDC_CURRENCY).SetItems(CurrencyItems(trade), true);
    Combo(IDC_CURRENCY).SelectString(-1, kPreferredCurrency);
    ShowAccounts();
    Combo(IDC_UPPER).SetItems(UpperItems(m_form.sign, trade), true);
    Combo(IDC_EXCHANGE).SetItems(ExchangeItems(m_form.sign, trade), true);
}

void CEmendoMatch::ShowAccounts() {
    SetPlainItems(Combo(IDC_ACCOUNT),
                  MayList() ? AccountItems(m_form.sign, Trade()) : std::vector<std::string>());
}

void CEmendoMatch::ShowCommodities() {
    const FillForm chosen = ChosenForm();
    std::vector<std::string> items;
    m_listedTypes.clear();
    if (!chosen.exchangeNo.empty() && MayList()) {
        for (const CommodityRecord* commodity : Trade().Commodities(ExchangeKeyOf(chosen))) {
            items.push_back(CodedItem(commodity->commodityNo.View(), commodity->commodityName.View()));
            m_listedTypes += commodity->commodityType;
        }
    }
    Combo(IDC_COMMODITY).SetItems(std::move(items), true);
    if (std::exchange(m_listedExchange, chosen.exchangeNo) == chosen.exchangeNo) {
        ShowCommodity(chosen);
    }
}

void CEmendoMatch::ShowCommodity(const FillForm& form) {
    std::size_t line = 0;
    while (line < m_listedTypes.size() &&
           (m_listedTypes[line] != form.commodityType ||
            Combo(IDC_COMMODITY).GetItemCode(static_cast<int>(line)) != form.commodityNo)) {
        ++line;
    }
    ShowLine(Combo(IDC_COMMODITY), line < m_listedTypes.size() ? static_cast<int>(line) : -1,
             form.commodityNo);
}

// What was loaded need not be listed: without a selection its codes count before the lists', and its type is
// that of every commodity without a line.
FillForm CEmendoMatch::ChosenForm() const {
    FillForm chosen = m_form;
    const ContractKey& loaded = m_form.loadedKey;
    const auto shows = [](const CxComboBox& combo, const std::string& code) {
        return combo.GetSelectedIndex() < 0 && combo.Shows(code);
    };
    chosen.exchangeNo = loaded.exchangeNo.Str();
    if (!shows(Combo(IDC_EXCHANGE), chosen.exchangeNo)) {
        chosen.exchangeNo = Combo(IDC_EXCHANGE).GetCurrentCode();
    }
    chosen.commodityNo = loaded.commodityNo.Str();
    chosen.commodityType = loaded.commodityType;
    if (loaded.exchangeNo != chosen.exchangeNo || !shows(Combo(IDC_COMMODITY), chosen.commodityNo)) {
        const auto line = static_cast<std::size_t>(Combo(IDC_COMMODITY).GetCurrentIndex());
        chosen.commodityNo = Combo(IDC_COMMODITY).GetCurrentCode();
        chosen.commodityType = line < m_listedTypes.size() ? m_listedTypes[line] : loaded.commodityType;
    }
    const std::string contract = GetDlgItemText(IDC_FILL_CONTRACT);
    chosen.contractNo = contract == m_form.loadedContract ? contract : std::string(TrimBlanks(contract));
    return chosen;
}

// --- layout ---

void CEmendoMatch::SelectDefaultExchange() {
    const std::string exchange = ForwardMarket(m_form.sign, Trade());
    if (!exchange.empty() && ChosenForm().exchangeNo != exchange) {
        ShowLine(Combo(IDC_EXCHANGE), Combo(IDC_EXCHANGE).FindCode(exchange), exchange);
        ShowCommodities();
    }
}

void CEmendoMatch::ShowOpenDirection() {
    m_openDirection.SetWindowText(DirectionToText(OppositeDirection(m_form.direction)));
}

void CEmendoMatch::Refresh() {
    const FillForm chosen = ChosenForm();
    if (chosen.commodityNo.empty() || chosen.exchangeNo.empty()) {
        return;
    }
    CDataExchange reading(*this, true);
    DDX_Code(&reading, Combo(IDC_FILL_SOURCE), SourcesOf(m_form), m_form.source);
    const FillView view =
        ViewOf(m_form.mode, m_form.source, FindCommodity(chosen, Trade()), m_form.denominator);
    if (view.source == OrderSource::kCarry) {
        SelectDefaultExchange();
    }
    RedrawOff redrawOff(m_hWnd);
    ApplyControlStates(m_hWnd, RefreshStates(view));
    if (std::exchange(m_form.denominator, view.denominator) != view.denominator || !view.Fractional()) {
        // A numerator belongs to its denominator.
        const auto ownTexts = m_numbers.OwnTexts();
        SetDlgItemText(IDC_FILL_PRICE_NUMERATOR, "0");
        SetDlgItemText(IDC_FILL_PRICE2_NUMERATOR, "0");
    }
    const std::string denominator = std::to_string(view.denominator);
    SetDlgItemText(IDC_FILL_PRICE_DENOMINATOR, denominator);
    SetDlgItemText(IDC_FILL_PRICE2_DENOMINATOR, denominator);
    ChangeLayout(view.Layout());
}

void CEmendoMatch::ChangeLayout(FillLayout target) {
    if (target == m_layout) {
        return;
    }
    // Exchange and upper stand two rows apart and never move.
    const int row = (PlaceOf(IDC_EXCHANGE).top - PlaceOf(IDC_UPPER).top) / 2;
    const FillMove move = MoveBetween(m_layout, target);
    m_layout = target;
    for (int id : SecondPriceControls()) {
        MoveDown(id, move.secondPriceRows * row);
    }
    for (int id : BottomControls()) {
        MoveDown(id, move.bottomRows * row);
    }
    GrowDown(move.bottomRows * row);
    PlaceDialogOverHost(m_hWnd);
}
