// Opens the fill dialog on a large book, and beside it, in the same run, does the bare calls that any such
// dialog needs: the template's window, the host's lists, the list messages, the measured texts.

#include "bench/dialog_bench.h"
#include "bench/stopwatch.h"
#include "fill/fill_dialog.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kRounds = 15;

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

// The lists once, the account texts measured, and the texts, states and moves of the layout.
void BareCalls(LargeBook& book, HWND host) {
    const HWND dialog = CreateBareDialog(IDD_FILL, host);
    const TradeData trade(&book);
    ListBare(dialog, IDC_CURRENCY, CurrencyItems(trade));
    const std::vector<std::string> accounts = AccountItems("", trade);
    ListBare(dialog, IDC_ACCOUNT, accounts);
    MeasureBare(GetDlgItem(dialog, IDC_ACCOUNT), accounts);
    ListBare(dialog, IDC_UPPER, UpperItems("", trade));
    ListBare(dialog, IDC_EXCHANGE, ExchangeItems("", trade));
    std::vector<std::string> commodities;
    for (const CommodityRecord* commodity :
         trade.Commodities({book.order.key.sign, book.order.key.exchangeNo})) {
        commodities.push_back(CodedItem(commodity->commodityNo.View(), commodity->commodityName.View()));
    }
    ListBare(dialog, IDC_COMMODITY, commodities);
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
