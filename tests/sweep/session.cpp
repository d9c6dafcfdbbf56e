#include "sweep/session.h"

#include "res/resource_ids.h"

#include "support/leak_count.h"
#include "trade/trade_spi.h"

namespace {

constexpr WORD kEnglish = 1033;

struct Collected {
    HWND owner;
    std::vector<HWND> found;
};
BOOL CALLBACK CollectDialog(HWND window, LPARAM collected) {
    auto& [owner, found] = *reinterpret_cast<Collected*>(collected);
    if (GetWindow(window, GW_OWNER) == owner && GetDlgItem(window, IDC_CONFIRM)) {
        found.push_back(window);
    }
    return TRUE;
}

int g_stopped = 0;
// Each exception that the module's guard stops becomes a line for the debugger.
LONG CALLBACK CountStopped(EXCEPTION_POINTERS* raised) {
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    g_stopped += record.ExceptionCode == 0x40010006 && record.NumberParameters >= 2 &&
                 std::strncmp(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                              "Emendo: exception", 17) == 0;
    return EXCEPTION_CONTINUE_SEARCH;
}

DWORD WINAPI PostEvents(void* world) {
    constexpr int kEvents = 40;  // more than there are kinds of them
    auto& host = *static_cast<FaultyWorld*>(world);
    for (ITradeSpi* listener : host.listeners) {
        HWND window = nullptr;
        for (int event = 0; listener->GetNotifyWnd(&window) && event < kEvents; ++event) {
            PostMessageA(window, kWmTradeSpi, reinterpret_cast<WPARAM>(&host.changed), event << 24);
        }
    }
    return 0;
}

}  // namespace

Session::Session(std::string module) : m_path(std::move(module)) {
    m_config.configs.emplace_back().name.Set("Main");
    m_config.count = 1;
    m_tradeServer.address.Set("127.0.0.1");
    m_world.server = &m_tradeServer;
    m_server.api = &m_world;
    m_order.key =
        (*std::find_if(m_world.contracts.begin(), m_world.contracts.end(), [](const auto* contract) {
            return contract->key.sign == "SGA" && contract->key.contractNo == "1509";
        }))->key;
    m_order.accountNo.Set("10001");
    m_order.upperNo.Set("U1");
    m_order.orderType = '2';
    m_order.orderSource = 'E';
    m_order.validType = '0';
    m_order.orderState = '4';
    m_order.direction = 'B';
    m_order.forcedClose = 'N';
    m_order.orderPrice = 97.5;
    m_order.orderQty = 5;
    m_order.orderNo = 77;
    std::memcpy(&m_fill.key, &m_order.key, sizeof m_fill.key);
    m_fill.fillNo.Set("FILL-9");
    m_fill.accountNo = m_order.accountNo;
    m_fill.upperNo = m_order.upperNo;
    m_fill.fillSource = 'E';
    m_fill.direction = 'B';
    m_fill.fillPrice = 97.5;
    m_fill.fillQty = 3;
    m_fill.order = &m_world.order;
    m_manager.raw.services["TradeApi"] = static_cast<ITradeService*>(&m_server);
    m_manager.raw.services["TradeList"] = static_cast<ITradeList*>(&m_lists);
    m_manager.raw.services["SysConfig"] = static_cast<ISysConfig*>(&m_config);
    g_faults.disturb = [this](Kind kind) { Disturb(kind); };
    AddVectoredExceptionHandler(1, &CountStopped);
}

void Session::Load() {
    m_module = std::make_unique<ModuleHandle>(m_path);
    m_system = std::make_unique<SystemFaults>(m_module->Library());
}

unsigned Session::Unload() {
    m_module->freePluginApi(std::exchange(m_api, nullptr));
    m_module->onPluginFree();
    m_module.reset();
    HostLoop().PumpUntilIdle();
    return m_system->Memory().Blocks();
}

Outcome Session::Play(const Scenario& scenario, const Fault* fault, const Outcome* ordinary,
                      const Next& next) {
    Outcome outcome;
    m_failure.clear();
    const int windows = CountWindows();
    const int gdiObjects = CountGdiObjects();
    Load();
    g_stopped = 0;
    g_faults.Begin(fault);
    m_system->Begin(fault);
    PlayOnce(scenario);
    outcome.happened = g_faults.happened + m_system->Memory().Refused();
    g_faults.sites[static_cast<int>(Site::Memory)].assign(m_system->Memory().Asked(), 's');
    m_system->Begin(nullptr);
    std::copy(std::begin(g_faults.sites), std::end(g_faults.sites), outcome.sites);
    outcome.sent = std::exchange(m_server.sent, {});
    Expect(g_stopped == 0 || (fault && fault->site == Site::Memory), "an exception was stopped");

    // The services are asked for once; a module that was given none has to be loaded anew.
    if (fault && fault->site == Site::Call && fault->kind == Kind::Null &&
        ordinary->sites[0][fault->number - 1] == 'p') {
        Expect(Unload() == ordinary->blocks, "memory is left");
        Load();
    }
    g_stopped = 0;
    PlayOnce(next.scenario);
    Expect(g_stopped == 0, "an exception was stopped in the next run");
    Expect(!next.ordinary || m_server.sent == next.ordinary->sent, "the next run sends something else");
    m_server.sent.clear();
    Expect(std::exchange(m_server.unasked, 0) == 0, "sent without a confirm");

    outcome.blocks = Unload();
    outcome.gdiObjects = CountGdiObjects() - gdiObjects;
    Expect(CountWindows() == windows, "a window is left");
    Expect(!ordinary || outcome.gdiObjects == ordinary->gdiObjects, "a GDI object is left");
    Expect(!ordinary || outcome.blocks == ordinary->blocks, "memory is left");
    outcome.failure = m_failure;
    return outcome;
}

IEmendixOper* Session::Open() {
    return m_api ? m_scenario->opening.Open(m_api, m_world, m_parent->Get()) : nullptr;
}

void Session::PlayOnce(const Scenario& scenario) {
    m_scenario = &scenario;
    m_parent = std::make_unique<HostWindow>();
    m_world.Reset(15);
    m_world.order = m_order;
    m_world.fill = m_fill;
    m_world.orders = {&m_world.order};
    m_module->onPluginLoad(kEnglish);
    m_module->onPluginInit(&m_manager);
    if (!m_api) {
        m_api = m_module->createPluginApi("1.0.0.1");
    }
    if (auto* const dialog = Open()) {
        Expect(IsWindow(dialog->GetSafeHwnd()), "the dialog that was opened has no window");
        Enter(dialog);
    } else {
        Expect(Dialogs().empty(), "a dialog stands that was declined");
    }
    CloseAll();
    g_faults.End();  // a host that opens another dialog while its window goes would never end
    m_parent.reset();
    HostLoop().PumpUntilIdle();
    Expect(m_world.listeners.empty(), "a listener is left");
    Expect(!m_lists.lists.windows[0].open && !m_lists.lists.windows[1].open, "a list window is left");
}

void Session::Enter(IEmendixOper* dialog) {
    Hands hands(m_world, m_lists.lists, dialog);
    hands.Pump();
    for (const Step& step : m_scenario->steps) {
        if (hands.Open() && step.act != Step::Confirm) {
            hands.Do(step);
        } else if (hands.Open() && hands.Focus(IDC_CONFIRM)) {
            m_server.confirmed = true;
            hands.Press(IDC_CONFIRM, false);
            m_server.confirmed = false;
        }
    }
}

void Session::CloseAll() {
    for (const HWND dialog : Dialogs()) {
        HostLoop().PumpUntilIdle();
        SendMessageA(dialog, WM_CLOSE, 0, 0);
        HostLoop().PumpUntilIdle();
        Expect(!IsWindow(dialog), "a dialog does not close");
    }
}

std::vector<HWND> Session::Dialogs() const {
    Collected collected{m_parent ? m_parent->Get() : nullptr, {}};
    EnumThreadWindows(GetCurrentThreadId(), &CollectDialog, reinterpret_cast<LPARAM>(&collected));
    return collected.found;
}

void Session::AnswerBox(const OpenBox& box) {
    g_faults.At(Site::Box, 'b', "a box");
    if (!IsWindow(box.window)) {
        return;
    }
    const bool next = box.text.find("next") != std::string::npos;
    if (next || !(box.Press(IDYES) || box.Press(IDOK))) {
        box.Dismiss();
    }
}

void Session::Disturb(Kind kind) {
    switch (kind) {
        case Kind::ParentGone:
            return m_parent->Destroy();
        case Kind::Closed:
            for (const HWND dialog : Dialogs()) {
                SendMessageA(dialog, WM_CLOSE, 0, 0);
            }
            return;
        case Kind::Reopened:
            // Each new dialog asks the host again: for ever, if the host did.
            if (constexpr unsigned kMost = 20; g_faults.happened <= kMost) {
                for (const HWND dialog : Dialogs()) {
                    DestroyWindow(dialog);
                }
                Open();
            }
            return;
        default:
            return PostFromAnotherThread();
    }
}

void Session::PostFromAnotherThread() {
    const HANDLE thread = CreateThread(nullptr, 0, &PostEvents, &m_world, 0, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    for (ITradeSpi* listener : std::vector(m_world.listeners)) {
        listener->OnTradeNotify11(&m_world.changed);
    }
}
