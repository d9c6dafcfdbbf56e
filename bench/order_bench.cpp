// Opens the order dialog on books of growing size, beside the bare calls that any such dialog needs, and
// times what the operator waits for after a choice.

#include "bench/dialog_bench.h"
#include "bench/stopwatch.h"
#include "order/order_dialog.h"
#include "res/language.h"
#include "res/resource_ids.h"
#include "tests/trade/fake_config.h"
#include "trade/coded_lists.h"
#include "trade/host_services.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kRounds = 15;
constexpr double kMillisecond = 1e6;

class Services {
public:
    explicit Services(LargeBook& book) {
        m_config.configs.emplace_back().name.Set("Main");
        m_config.count = 1;
        book.server = &m_server;
        g_pTradeApi = &book;
        g_hostServices.sysConfig = &m_config;
    }

private:
    FakeConfig m_config;
    ServerRecord m_server{};
};

HWND OpenDialog(HWND host) {
    g_pOrderDialog = new CEmendoOrder(IDD_ORDER, 0, nullptr, host);
    if (!g_pOrderDialog->Create()) {
        std::puts("the dialog was not created");
        std::exit(1);
    }
    Show(g_pOrderDialog->m_hWnd);
    return g_pOrderDialog->m_hWnd;
}

void OpenAndClose(HWND host) {
    SendMessageA(OpenDialog(host), WM_CLOSE, 0, 0);
    Pump();
}

// The host's lists once, each account's server, the list messages, the measured accounts, and the texts that
// a new order shows.
void BareCalls(LargeBook& book, HWND host) {
    const HWND dialog = CreateBareDialog(IDD_ORDER, host);
    const TradeData trade(&book, g_hostServices.sysConfig);
    const auto configs = trade.ServerConfigs();
    for (const UserRecord* user : trade.Users("")) {
        Keep(trade.ServerOf(*user, configs));
    }
    const std::vector<std::string> accounts = AccountItems("", trade);
    ListBare(dialog, IDC_ACCOUNT, accounts);
    MeasureBare(GetDlgItem(dialog, IDC_ACCOUNT), accounts);
    ListBare(dialog, IDC_CURRENCY, CurrencyItems(trade));
    ListBare(dialog, IDC_UPPER, UpperItems("", trade));
    for (const int id : {IDC_DIRECTION, IDC_SOURCE, IDC_ORDER_TYPE, IDC_ORDER_STATE, IDC_VALID_TYPE}) {
        ListBare(dialog, id, {"one", "two", "three", "four", "five"});
        SendDlgItemMessageA(dialog, id, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>("two"));
    }
    for (const PriceRowControls& row : kPriceRows) {
        SetDlgItemTextA(dialog, row.whole, "0");
        SetDlgItemTextA(dialog, row.numerator, "0");
        SetDlgItemTextA(dialog, row.denominator, "1");
    }
    for (const int id : {IDC_SYSTEM_NO, IDC_FILL_NO, IDC_ORDER_QTY, IDC_FILL_QTY, IDC_FEE, IDC_CONFIRM}) {
        SetDlgItemTextA(dialog, id, "12");
    }
    SetWindowTextA(dialog, "Input Order");
    Show(dialog);
    DestroyWindow(dialog);
    Pump();
}

struct Opening {
    double ours;
    double bare;
};
Opening MeasureOpening(int accounts, HWND host) {
    LargeBook book(accounts);
    const Services services(book);
    std::vector<double> ours, bare;
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(NanosecondsOf([&] { BareCalls(book, host); }, 1, 1));
        ours.push_back(NanosecondsOf([&] { OpenAndClose(host); }, 1, 1));
    }
    return {Median(ours), Median(bare)};
}

// One choice of an order type: the refresh of all controls, painted.
double MeasureRefresh(HWND host) {
    LargeBook book;
    const Services services(book);
    const HWND dialog = OpenDialog(host);
    std::vector<double> times;
    for (int i = 0; i < 40; ++i) {
        times.push_back(NanosecondsOf(
            [&] {
                SendDlgItemMessageA(dialog, IDC_ORDER_TYPE, CB_SETCURSEL, static_cast<WPARAM>(i % 4), 0);
                UpdateWindow(dialog);
            },
            1, 1));
    }
    SendMessageA(dialog, WM_CLOSE, 0, 0);
    return Median(times);
}

}  // namespace

int main() {
    g_wResLanguage = kEnglish;
    const HWND host = CreateWindowExA(0, "Static", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 900, 700,
                                      nullptr, nullptr, nullptr, nullptr);
    Report report;
    const Opening small = MeasureOpening(1000, host);
    const Opening large = MeasureOpening(10000, host);
    report.Ratio("order dialog, 1,000 accounts", small.ours, small.bare, 1.3);
    report.Ratio("order dialog, 10,000 accounts", large.ours, large.bare, 1.3);
    report.Ratio("ten times the accounts", large.ours, small.ours, 10);
    report.Absolute("choice of an order type", MeasureRefresh(host), 15 * kMillisecond);
    return report.Missed();
}
