// A terminal built by the other compiler for 32-bit Windows, over the module's own headers: loads the module,
// opens its dialogs, enters an order and fills with the keyboard, and compares what is sent byte by byte. All
// of it with the stack at each of the four alignments that such a terminal may have, and with an FPU that is
// set to its least.
//
//     border_host [--beside LIBRARY]... EmendoOrd.dll
//
// --beside loads another library first. Prints what is wrong; ends with the number of those lines.

#include "dialog_driver.h"
#include "memory_refusal.h"
#include "module.h"
#include "res/resource_ids.h"
#include "services.h"

#include <windows.h>

#include <cstddef>

namespace {

template <typename Record>
void CheckBytes(const Record& actual, const Record& expected, const char* what) {
    const char* const sent = reinterpret_cast<const char*>(&actual);
    const char* const wanted = reinterpret_cast<const char*>(&expected);
    for (std::size_t at = 0; at < sizeof(Record); ++at) {
        if (sent[at] != wanted[at]) {
            ++g_wrong;
            std::printf("wrong: %s, byte %u is %02x, not %02x\n", what, static_cast<unsigned>(at),
                        sent[at] & 0xFF, wanted[at] & 0xFF);
            return;
        }
    }
}

// The services of the small terminal, with a look at the arguments that the module gives them.
struct CheckedApi : SmallTradeApi {
    explicit CheckedApi(SmallBook& known) : SmallTradeApi(known), book(known) {}
    ServerRecord* GetUserServer(const char* key, UserRecord* user) override {
        Check(std::strcmp(key, "main") == 0 && user == &book.account, "arguments of GetUserServer");
        return SmallTradeApi::GetUserServer(key, user);
    }
    void FormatPrice(const void* record, double price, char* buffer, int size, int zero,
                     char notation) override {
        Check(record && price == 97.25 && size > 10 && zero == 0 && notation == 'D',
              "arguments of FormatPrice");
        SmallTradeApi::FormatPrice(record, price, buffer, size, zero, notation);
    }
    void GetPositionQty(const char* account, const SingleContractKey* key, std::uint32_t* longQty,
                        std::uint32_t* shortQty, std::uint32_t* further1, std::uint32_t* further2) override {
        Check(std::strcmp(account, "100") == 0 && std::strcmp(key->commodityNo.chars, "CM") == 0,
              "arguments of GetPositionQty");
        SmallTradeApi::GetPositionQty(account, key, longQty, shortQty, further1, further2);
    }
    SmallBook& book;
};

struct KeptRequests : SmallTradeService {
    using SmallTradeService::SmallTradeService;
    int SendOrder(OrderRecord* sent) override {
        order = *sent;
        ++orders;
        return 0;
    }
    int SendFill(FillRecord* sent) override {
        fill = *sent;
        ++fills;
        return 0;
    }
    OrderRecord order{};
    FillRecord fill{};
    int orders = 0;
    int fills = 0;
};

struct CheckedList : SmallListWindow {
    ISelectDataNotify* notify = nullptr;
    int placed = 0;
    void Place(int left, int top, int width, int height, int one) override {
        placed += left >= 0 && top > 0 && width > 100 && height > 20 && one == 1;
    }
    void SetNotify(ISelectDataNotify* listener) override { notify = listener; }
};

struct CheckedLists : SmallTradeList {
    CheckedList windows[2];
    int created = 0;
    int released = 0;
    ITradeListWindow* CreateListWindow(int zero, int four, HWND owner, int one) override {
        Check(zero == 0 && four == 4 && IsWindow(owner) && one == 1 && created < 2,
              "arguments of CreateListWindow");
        return &windows[created++ & 1];
    }
    void ReleaseListWindow(ITradeListWindow* window) override {
        released += window == &windows[0] || window == &windows[1];
    }
};

class Session {
public:
    explicit Session(const char* path)
        : m_owner(CreateWindowExA(0, "Static", "Terminal", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 100,
                                  nullptr, nullptr, nullptr, nullptr)) {
        if (!m_module.Load(path)) {
            std::printf("%s cannot be loaded, error %u\n", path, static_cast<unsigned>(GetLastError()));
            ExitProcess(99);
        }
    }

    void Run() {
        m_module.onPluginLoad(1033);
        m_module.onPluginInit(&m_manager);
        Check(!m_module.createPluginApi("1.0.0.2"), "another version is refused");
        DeclineWithoutMemory();
        m_emendo = m_module.createPluginApi("1.0.0.1");
        EnterFilledOrder();
        EnterFill();
        ShowCarry();
        m_module.freePluginApi(m_emendo);
        m_module.onPluginFree();
        DestroyWindow(m_owner);
        Check(!m_api.listener, "no listener is left");
        FreeLibrary(m_module.dll);
    }

private:
    // What is refused inside the module ends there as an exception that the terminal does not see.
    void DeclineWithoutMemory() {
        MemoryRefusal memory(m_module.dll);
        memory.RefuseFrom(1);
        Check(!m_module.createPluginApi("1.0.0.1") && memory.Refused(), "no interface without memory");
        memory.RefuseNone();
        IEmendix* const emendo = m_module.createPluginApi("1.0.0.1");
        memory.RefuseFrom(1);
        Check(!emendo->OpenOrderDialog(0, nullptr, m_owner) && memory.Refused(),
              "no order dialog without memory");
        memory.RefuseFrom(1);
        Check(!emendo->OpenFillDialog(0, nullptr, -1, m_owner) && memory.Refused(),
              "no fill dialog without memory");
        memory.RefuseOnly(1);
        Check(!emendo->OpenOrderDialog(0, nullptr, m_owner) && memory.Refused(),
              "no order dialog without its memory");
        memory.RefuseNone();
        m_module.freePluginApi(emendo);
    }

    void EnterFilledOrder() {
        const Dialog dialog(m_emendo->OpenOrderDialog(0, nullptr, m_owner));
        SendPositionEvent(dialog);
        dialog.Choose(IDC_ACCOUNT, "100");
        dialog.Choose(IDC_UPPER, "U7");
        dialog.Type(IDC_CONTRACT, "EXA CM 2612");
        dialog.Choose(IDC_DIRECTION, "Buy");
        dialog.Type(IDC_ORDER_QTY, "5");
        dialog.Type(IDC_ORDER_PRICE_WHOLE, "97.25");
        dialog.Choose(IDC_ORDER_STATE, "Filled");
        dialog.Press(IDC_CONFIRM);
        Check(g_boxes == 1 && !dialog.IsOpen(), "the order is entered, and no other");
        Check(m_requests.orders == 1 && m_requests.fills == 1, "one order and its fill are sent");
        CheckBytes(m_requests.order, ExpectedOrder(), "the order");
        CheckBytes(m_requests.fill, ExpectedFill(), "the order's fill");
    }

    void EnterFill() {
        OrderRecord original = m_requests.order;
        original.orderNo = 77;
        original.orderQty = 9;
        original.fillQty = 4;
        const Dialog dialog(m_emendo->OpenFillDialog(0, &original, kRecordKindOrder, m_owner));
        dialog.Type(IDC_FILL_QTY, "5");
        dialog.Type(IDC_FILL_PRICE_WHOLE, "97.25");
        dialog.Press(IDC_CONFIRM);
        Check(m_requests.fills == 2 && !dialog.IsOpen(), "the fill is sent");
        CheckBytes(m_requests.fill, ExpectedFill(), "the fill");
    }

    void ShowCarry() {
        const Dialog dialog(m_emendo->OpenOrderDialog(1, nullptr, m_owner));
        for (CheckedList& list : m_lists.windows) {
            Check(list.placed > 0 && list.notify, "the position lists stand in the carry dialog");
            list.notify->OnSelectData(&list, 0, &m_book.position);
        }
        dialog.Pump();
        DestroyWindow(m_owner);
        Check(!dialog.IsOpen() && m_lists.created == 2 && m_lists.released == 2,
              "the lists go with their dialog");
    }

    // As a terminal's other thread does.
    static DWORD WINAPI AskForWindow(void* session) {
        HWND window = nullptr;
        const bool posted = static_cast<Session*>(session)->m_api.listener->GetNotifyWnd(&window);
        Check(posted && IsWindow(window), "the events are posted to a window");
        PostMessageA(window, kWmTradeSpi,
                     reinterpret_cast<WPARAM>(&static_cast<Session*>(session)->m_book.position),
                     kPositionChangedEvent << 24);
        return 0;
    }
    void SendPositionEvent(const Dialog& dialog) {
        const HANDLE thread = CreateThread(nullptr, 0, &AskForWindow, this, 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
        dialog.Pump();
        m_api.listener->OnTradeNotify2(1, &m_book.position);
        m_api.listener->OnTradeNotify7(2, -3, &m_book.position);
        m_api.listener->OnTradeNotify11(&m_book.position);
        m_api.listener->OnTradeNotify35(nullptr);
    }

    // "2026-11-23 09:14:00"; the clock is the module's own.
    template <typename Text>
    static void TakeTime(Text& expected, const Text& sent) {
        Check(sent.chars[4] == '-' && sent.chars[13] == ':' && sent.chars[16] == ':' && !sent.chars[19],
              "a time");
        expected = sent;
    }
    template <typename Text>
    static void TakeNumber(Text& expected, const Text& sent, char kind) {
        Check(sent.chars[0] == kind && sent.chars[1] == '_' && sent.chars[2], "a number made by the module");
        expected = sent;
    }

    OrderRecord ExpectedOrder() const {
        const OrderRecord& sent = m_requests.order;
        OrderRecord order{};
        order.key = m_book.contract.key;
        order.contract = const_cast<ContractRecord*>(&m_book.contract);
        order.accountNo.Set("100");
        order.upperNo.Set("U7");
        order.orderType = '2';
        order.orderSource = 'E';
        order.validType = '0';
        order.orderState = '6';
        order.direction = 'B';
        order.forcedClose = order.flag137 = order.flag138 = 'N';
        order.orderPrice = order.fillPrice = 97.25;
        order.orderQty = order.fillQty = 5;
        order.inputOperator.Set("OP9");
        order.updateOperator.Set("OP9");
        TakeTime(order.inputTime, sent.inputTime);
        TakeTime(order.updateTime, sent.updateTime);
        TakeNumber(order.systemNo, sent.systemNo, 'S');
        return order;
    }
    FillRecord ExpectedFill() const {
        const FillRecord& sent = m_requests.fill;
        FillRecord fill{};
        std::memcpy(&fill.key, &m_book.contract.key, sizeof(fill.key));
        fill.accountNo.Set("100");
        fill.upperNo.Set("U7");
        fill.currencyNo.Set("USD");
        fill.fillSource = 'E';
        fill.direction = 'B';
        fill.flag111 = fill.feeGiven = 'N';
        fill.fillPrice = 97.25;
        fill.fillQty = 5;
        fill.systemNo = m_requests.order.systemNo;
        TakeTime(fill.fillTime, sent.fillTime);
        TakeNumber(fill.exchangeFillNo, sent.exchangeFillNo, 'M');
        return fill;
    }

    SmallBook m_book;
    CheckedApi m_api{m_book};
    KeptRequests m_requests{m_api};
    SmallSysConfig m_config{m_book};
    CheckedLists m_lists;
    SmallPluginManager m_manager{m_requests, m_lists, m_config};
    Module m_module;
    HWND m_owner;
    IEmendix* m_emendo = nullptr;
};

void __cdecl RunSession(void* path) {
    // Single precision and chopping, as some graphics libraries leave it.
    const unsigned short least = 0x0C7F;
    unsigned short after = 0;
    unsigned before = 0x7F80;  // SSE: round towards zero, flush to zero left off
    unsigned now = 0;
    __asm__ volatile("fldcw %0\n\tldmxcsr %1" : : "m"(least), "m"(before));
    g_boxes = 0;
    Session(static_cast<const char*>(path)).Run();
    __asm__ volatile("fnstcw %0\n\tstmxcsr %1" : "=m"(after), "=m"(now));
    Check(after == least && (now & 0xFFC0) == before, "the state of the FPU is left alone");
}

}  // namespace

// Calls `body` with the stack that many bytes below a multiple of 16.
extern "C" void __cdecl CallWithStackBelow(unsigned bytes, void(__cdecl* body)(void*), void* argument);
__asm__(
    ".globl _CallWithStackBelow\n"
    "_CallWithStackBelow:\n"
    "    pushl %ebp\n"
    "    movl %esp, %ebp\n"
    "    andl $-16, %esp\n"
    "    subl 8(%ebp), %esp\n"
    "    pushl 16(%ebp)\n"
    "    calll *12(%ebp)\n"
    "    movl %ebp, %esp\n"
    "    popl %ebp\n"
    "    retl\n");

int main(int count, char** arguments) {
    int next = 1;
    for (; next + 2 < count && std::strcmp(arguments[next], "--beside") == 0; next += 2) {
        Check(LoadLibraryA(arguments[next + 1]) != nullptr, arguments[next + 1]);
    }
    SetWindowsHookExA(WH_CBT, &AnswerBox, nullptr, GetCurrentThreadId());
    for (const unsigned bytes : {0u, 4u, 8u, 12u}) {
        const int before = g_wrong;
        CallWithStackBelow(bytes, &RunSession, arguments[next]);
        std::printf("stack off by %u: %d wrong\n", bytes, g_wrong - before);
    }
    return g_wrong;
}
