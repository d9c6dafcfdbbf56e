#include "app/desk_window.h"

#include <iterator>
#include <stdexcept>

namespace {

constexpr char kClassName[] = "EmendoHostDesk";

// What a command opens, and what it opens it on.
enum class Subject { kNone, kOrder, kFilledOrder, kFill };
struct Command {
    const char* text;
    bool fillDialog;
    int mode;
    Subject subject;
};
constexpr Command kCommands[] = {
    {"Input &order", false, 0, Subject::kNone},       {"&Carry", false, 1, Subject::kNone},
    {"&Modify order", false, 2, Subject::kOrder},     {"&Remove filled", false, 3, Subject::kFilledOrder},
    {"Mo&ve order", false, 4, Subject::kFilledOrder}, {"Input &exercise", false, 5, Subject::kNone},
    {"Input &fill", true, 0, Subject::kOrder},        {"Remove fi&ll", true, 3, Subject::kFill},
};
constexpr unsigned kFirstCommand = 100;

HMENU MakeMenu() {
    HMENU dialogs = CreatePopupMenu();
    for (unsigned i = 0; i < std::size(kCommands); ++i) {
        AppendMenuA(dialogs, MF_STRING, kFirstCommand + i, kCommands[i].text);
    }
    HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(dialogs), "&Dialogs");
    return bar;
}

OrderRecord* FirstOrder(const Ledger& ledger, bool filled) {
    for (const OrderEntry& order : ledger.Orders()) {
        const OrderRecord& record = order.record;
        if (filled ? record.fillQty > 0 : record.fillQty < record.orderQty) {
            return &ledger.FindOrder(record.orderNo)->record;
        }
    }
    return nullptr;
}

}  // namespace

DeskWindow::DeskWindow(HostApp& host) : m_host(host) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, reinterpret_cast<const char*>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    windowClass.lpszClassName = kClassName;
    RegisterClassA(&windowClass);  // fails quietly when it is already there
    m_window =
        CreateWindowExA(0, kClassName, "Emendo desk", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                        CW_USEDEFAULT, 1000, 700, nullptr, MakeMenu(), windowClass.hInstance, this);
    if (!m_window) {
        throw std::runtime_error("the desk cannot be opened (error " + std::to_string(GetLastError()) + ")");
    }
}

DeskWindow::~DeskWindow() {
    if (m_window) {
        DestroyWindow(m_window);
    }
}

LRESULT CALLBACK DeskWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* create = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    }
    auto* self = reinterpret_cast<DeskWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self && message == WM_COMMAND && lParam == 0) {
        self->OnCommand(LOWORD(wParam));
        return 0;
    }
    if (self && message == WM_NCDESTROY) {
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        self->m_window = nullptr;
        PostQuitMessage(0);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void DeskWindow::OnCommand(unsigned id) {
    if (id < kFirstCommand || id - kFirstCommand >= std::size(kCommands)) {
        return;
    }
    const Command& command = kCommands[id - kFirstCommand];
    Ledger& ledger = m_host.TheBook().ledger;
    if (command.subject == Subject::kFill) {
        const std::vector<FillEntry*> fills = ledger.Fills();
        if (fills.empty()) {
            MessageBoxA(m_window, "The book holds no fill.", "Emendo desk", MB_OK);
        } else {
            m_host.OpenFillDialog(command.mode, &fills.front()->record, kRecordKindFill, m_window);
        }
        return;
    }
    OrderRecord* order = nullptr;
    if (command.subject != Subject::kNone) {
        order = FirstOrder(ledger, command.subject == Subject::kFilledOrder);
        if (!order) {
            MessageBoxA(m_window, "The book holds no such order.", "Emendo desk", MB_OK);
            return;
        }
    }
    if (command.fillDialog) {
        m_host.OpenFillDialog(command.mode, order, kRecordKindOrder, m_window);
    } else {
        m_host.OpenOrderDialog(command.mode, order, m_window);
    }
}
