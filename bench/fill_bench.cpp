// Opens the fill dialog on a large book, and beside it, in the same run, does the bare calls that any such
// dialog needs: the template's window, the host's lists, the list messages, the measured texts.

#include "bench/stopwatch.h"
#include "fill/fill_dialog.h"
#include "framework/activation_context.h"
#include "framework/owned_handle.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "res/resource_loader.h"
#include "tests/trade/fake_trade.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <vector>

namespace {

constexpr int kAccounts = 10000;
constexpr int kCommodities = 2000;
constexpr int kRounds = 15;

struct LargeBook : FakeTradeApi {
    GroupRecord group{};
    std::deque<UserRecord> userStore;
    std::deque<CommodityRecord> commodityStore;
    std::deque<ExchangeRecord> exchangeStore;
    std::deque<UpperRecord> upperStore;
    std::deque<CurrencyRecord> currencyStore;
    OrderRecord order{};

    LargeBook() {
        group.tradable = 'Y';
        for (int i = 0; i < kAccounts; ++i) {
            UserRecord& user = userStore.emplace_back();
            user.sign.Set("SG");
            user.accountNo.Set(std::to_string(100000 + i));
            user.accountName.Set("Client number " + std::to_string(i));
            user.group = &group;
            users.push_back(&user);
        }
        for (int i = 0; i < kCommodities; ++i) {
            CommodityRecord& commodity = commodityStore.emplace_back();
            commodity.sign.Set("SG");
            commodity.exchangeNo.Set("EXA");
            commodity.commodityType = 'F';
            commodity.commodityNo.Set("C" + std::to_string(i));
            commodity.commodityName.Set("Commodity number " + std::to_string(i));
            commodity.tickNumerator = commodity.tickDenominator = 1;
            commodities.push_back(&commodity);
        }
        for (int i = 0; i < 20; ++i) {
            ExchangeRecord& exchange = exchangeStore.emplace_back();
            exchange.sign.Set("SG");
            exchange.exchangeNo.Set(std::string("EX") + static_cast<char>('A' + i));
            exchange.exchangeName.Set("Exchange");
            exchanges.push_back(&exchange);
            UpperRecord& upper = upperStore.emplace_back();
            upper.upperNo.Set("UP" + std::to_string(i));
            upper.upperName.Set("Clearing");
            uppers.push_back(&upper);
            CurrencyRecord& currency = currencyStore.emplace_back();
            currency.currencyNo.Set("CU" + std::to_string(i));
            currency.currencyName.Set("Money");
            currencies.push_back(&currency);
        }
        order.key.sign.Set("SG");
        order.key.exchangeNo.Set("EXA");
        order.key.commodityType = 'F';
        order.key.commodityNo.Set("C1000");
        order.key.contractNo.Set("1509");
        order.accountNo.Set("105000");
        order.upperNo.Set("UP3");
        order.orderSource = 'M';
        order.direction = 'B';
        order.orderQty = 5;
        order.fillPrice = 97;
    }
};

void Pump() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void Show(HWND dialog) {
    SetWindowPos(dialog, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW | SWP_NOOWNERZORDER);
    Pump();
}

void OpenDialog(LargeBook& book, HWND host) {
    g_pFillDialog = new CEmendoMatch(0, &book.order, kRecordKindOrder, host);
    if (!g_pFillDialog->Create()) {
        std::puts("the dialog was not created");
        std::exit(1);
    }
    Show(g_pFillDialog->m_hWnd);
    g_pFillDialog->SendMessage(WM_CLOSE);
    Pump();
}

INT_PTR CALLBACK BareDialogProc(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

void FillBare(HWND dialog, int id, const std::vector<std::string>& items) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    const HWND combo = GetDlgItem(dialog, id);
    GetComboBoxInfo(combo, &info);
    SendMessageA(info.hwndList, WM_SETREDRAW, FALSE, 0);
    for (const std::string& item : items) {
        SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    }
    SendMessageA(info.hwndList, WM_SETREDRAW, TRUE, 0);
}

// The lists once, the account texts measured, and the texts, states and moves of the layout.
void BareCalls(LargeBook& book, HWND host) {
    HWND dialog = nullptr;
    {
        const ScopedActivationContext commonControls6;
        dialog = CreateDialogIndirectParamA(
            GetModuleHandleA(nullptr), static_cast<const DLGTEMPLATE*>(LockResource(LoadResDialog(IDD_FILL))),
            host, &BareDialogProc, 0);
    }
    const TradeData trade(&book);
    FillBare(dialog, IDC_CURRENCY, CurrencyItems(trade));
    const std::vector<std::string> accounts = AccountItems("", trade);
    FillBare(dialog, IDC_ACCOUNT, accounts);
    {
        WindowDc dc(GetDlgItem(dialog, IDC_ACCOUNT));
        for (const std::string& account : accounts) {
            SIZE extent{};
            GetTextExtentPoint32A(dc.Get(), account.data(), static_cast<int>(account.size()), &extent);
        }
    }
    FillBare(dialog, IDC_UPPER, UpperItems("", trade));
    FillBare(dialog, IDC_EXCHANGE, ExchangeItems("", trade));
    FillBare(dialog, IDC_COMMODITY, CommodityItems({book.order.key.sign, book.order.key.exchangeNo}, trade));
    for (const auto& [id, text] : {std::pair{IDC_UPPER, "UP3"},
                                   {IDC_ACCOUNT, "105000"},
                                   {IDC_EXCHANGE, "EXA"},
                                   {IDC_COMMODITY, "C1000"}}) {
        SendDlgItemMessageA(dialog, id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(text));
    }
    for (int id :
         {IDC_FILL_NO, IDC_SYSTEM_NO, IDC_FILL_SOURCE, IDC_FILL_QTY, IDC_FILL_CONTRACT, IDC_DIRECTION,
          IDC_FILL_PRICE_WHOLE, IDC_FILL_PRICE_NUMERATOR, IDC_OPEN_CONTRACT, IDC_OPEN_DIRECTION,
          IDC_FILL_PRICE2_WHOLE, IDC_FILL_PRICE2_NUMERATOR, IDC_CURRENCY, IDC_FEE, IDC_CONFIRM}) {
        SetDlgItemTextA(dialog, id, "12");
    }
    SetWindowTextA(dialog, "Input Filled - [OrderNo:0]");
    Show(dialog);
    DestroyWindow(dialog);
    Pump();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main() {
    LargeBook book;
    g_wResLanguage = kEnglish;
    g_pTradeApi = &book;
    const HWND host = CreateWindowExA(0, "Static", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 900, 700,
                                      nullptr, nullptr, nullptr, nullptr);
    std::vector<double> ours, bare;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(NanosecondsOf([&] { BareCalls(book, host); }, 1, 1));
        ours.push_back(NanosecondsOf([&] { OpenDialog(book, host); }, 1, 1));
    }
    Report report;
    report.Ratio("fill dialog, 10,000 accounts and 2,000 commodities", Median(ours), Median(bare), 1.3);
    return report.Missed();
}
