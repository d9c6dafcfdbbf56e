// The desk on 10,000 orders and as many fills: scrolling beside a bare virtual list of that size, sorting
// beside the bare sort, and the start of the whole program.

#include "bench/stopwatch.h"
#include "book/book_file.h"
#include "book/large_book.h"
#include "desk/desk_window.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

constexpr int kOrders = 10000;
constexpr int kRounds = 20;
constexpr char kBookFile[] = "desk_bench_book.json";
constexpr double kAtOnce = 2e8;
constexpr double kStartLimit = 2e9;

std::unique_ptr<Book> MakeBook() {
    std::unique_ptr<Book> book = MakeLargeBook(200, 3, 30, 300);
    std::mt19937 random(7);
    for (int i = 0; i < kOrders; ++i) {
        OrderRecord order{};
        order.key = book->catalogue.contracts[random() % book->catalogue.contracts.size()].record.key;
        order.accountNo =
            book->catalogue.accounts[random() % book->catalogue.accounts.size()].record.accountNo;
        order.orderType = '2';
        order.orderSource = 'M';
        order.validType = '0';
        order.forcedClose = order.flag137 = order.flag138 = 'N';
        order.direction = random() % 2 ? 'B' : 'S';
        order.orderPrice = 1000 + random() % 100;
        order.orderQty = 1 + random() % 20;
        order.systemNo.Set("S_" + std::to_string(i));
        order.upperNo.Set("UP001");
        order.orderState = '4';
        FillRecord fill{};
        fill.key = FirstLegOf(order.key);
        fill.accountNo = order.accountNo;
        fill.fillSource = 'M';
        fill.direction = order.direction;
        fill.flag111 = fill.feeGiven = 'N';
        fill.exchangeFillNo.Set("M_" + std::to_string(i));
        fill.fillPrice = order.orderPrice;
        fill.fillQty = 1;
        fill.currencyNo.Set("USD");
        fill.upperNo = order.upperNo;
        fill.systemNo = order.systemNo;
        const Outcome entered = book->ledger.SendOrder(order);
        const Outcome filled = book->ledger.SendFill(fill);
        if (!entered.Accepted() || !filled.Accepted()) {
            std::printf("refused: %s %s\n", entered.refusal.c_str(), filled.refusal.c_str());
            std::exit(1);
        }
    }
    return book;
}

// From the top to the bottom and back, each page painted.
void ScrollThrough(HWND list) {
    for (const int row : {kOrders - 1, kOrders / 2, 0}) {
        ListView_EnsureVisible(list, row, FALSE);
        UpdateWindow(list);
    }
}

// What the owner of the bare list does: one constant text for every cell.
LRESULT CALLBACK BareOwner(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    static wchar_t text[] = L"a text";
    if (message == WM_NOTIFY &&
        reinterpret_cast<NMHDR*>(lParam)->code == static_cast<UINT>(LVN_GETDISPINFOW)) {
        reinterpret_cast<NMLVDISPINFOW*>(lParam)->item.pszText = text;
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

double StartNanoseconds() {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    std::string command = "\"" + ProgramFolder() + "EmendoHost.exe\" --book " + kBookFile;
    LARGE_INTEGER from, to, frequency;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&from);
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        std::puts("EmendoHost.exe did not start");
        std::exit(1);
    }
    // Usable: shown, and answering a message.
    HWND desk = nullptr;
    DWORD_PTR answer = 0;
    while (!(desk = FindWindowA("EmendoHostDesk", nullptr)) || !IsWindowVisible(desk) ||
           !SendMessageTimeoutA(desk, WM_NULL, 0, 0, SMTO_NORMAL, 5000, &answer)) {
        if (WaitForSingleObject(process.hProcess, 5) == WAIT_OBJECT_0) {
            std::puts("EmendoHost.exe ended");
            std::exit(1);
        }
    }
    QueryPerformanceCounter(&to);
    PostMessageA(desk, WM_CLOSE, 0, 0);
    WaitForSingleObject(process.hProcess, 20000);
    return static_cast<double>(to.QuadPart - from.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
}

}  // namespace

int main() {
    Report report;
    const std::unique_ptr<Book> book = MakeBook();
    HostApp host(*book);
    DeskWindow desk(host, "", {});
    desk.Show(0);
    ListPane& orders = desk.Pane(kOrderList);
    const int columns = static_cast<int>(orders.List().Columns().size());

    RECT place{};
    GetWindowRect(orders.Window(), &place);
    HWND window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 1180, 760, nullptr,
                                nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(BareOwner));
    HWND bareList =
        CreateWindowW(WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, 0, 0,
                      place.right - place.left, place.bottom - place.top, window, nullptr, nullptr, nullptr);
    for (int i = 0; i < columns; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = ListView_GetColumnWidth(orders.Window(), i);
        SendMessageW(bareList, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&column));
    }
    ListView_SetItemCount(bareList, kOrders);
    const double bareScroll = NanosecondsOf([&] { ScrollThrough(bareList); }, 1, kRounds);
    DestroyWindow(window);
    report.Ratio("scrolling 10,000 orders",
                 NanosecondsOf([&] { ScrollThrough(orders.Window()); }, 1, kRounds), bareScroll, 4);

    std::vector<std::string> texts;
    for (const OrderEntry& order : book->ledger.Orders()) {
        texts.push_back(order.record.accountNo.Str());
    }
    const double bareSort = NanosecondsOf(
        [&] {
            std::vector<std::string> copy = texts;
            std::stable_sort(copy.begin(), copy.end());
            Keep(copy);
        },
        1, kRounds);
    bool descending = false;
    report.Ratio("sorting 10,000 orders by account",
                 NanosecondsOf(
                     [&] {
                         descending = !descending;
                         orders.List().SortBy(1, descending);
                     },
                     1, kRounds),
                 bareSort, 6);
    report.Absolute("the same with a click, shown", NanosecondsOf([&] { orders.SortBy(1); }, 1, kRounds),
                    kAtOnce);
    report.Absolute("all five lists read again after a request",
                    NanosecondsOf([&] { SendMessageA(desk.Window(), WM_COMMAND, kRefresh, 0); }, 1, kRounds),
                    kAtOnce);

    WriteBookFile(*book, kBookFile);
    DestroyWindow(desk.Window());
    report.Absolute("reading the book of 10,000 orders",
                    NanosecondsOf([] { Keep(ReadBookFile(kBookFile)); }, 1, 1), kStartLimit);
    report.Absolute("start to usable desk, 10,000 orders", StartNanoseconds(), kStartLimit);
    WriteBookFile(*MakeLargeBook(12, 3, 9, 30), kBookFile);
    report.Absolute("start to usable desk, small book", StartNanoseconds(), kStartLimit);
    std::remove(kBookFile);
    return report.Missed();
}
