#include "shown_is_sent/stage.h"

#include <atomic>

namespace {

WORD Language() {
    return static_cast<WORD>(Stage::Setting("EMENDO_LANGUAGE", 1033));
}

// The plan that is played, and how often one was.
std::string g_playing;
std::atomic<unsigned> g_plays = 0;

LONG WINAPI TellPlan(EXCEPTION_POINTERS*) {
    std::fprintf(stderr, "ended while playing: %s", g_playing.c_str());
    std::fflush(stderr);
    return EXCEPTION_CONTINUE_SEARCH;
}

DWORD WINAPI WatchForStandstill(void*) {
    for (;;) {
        const unsigned plays = g_plays;
        Sleep(60000);
        if (plays == g_plays) {
            TellPlan(nullptr);
            TerminateProcess(GetCurrentProcess(), 1);
        }
    }
}

BOOL CALLBACK CountShown(HWND window, LPARAM count) {
    *reinterpret_cast<int*>(count) += IsWindowVisible(window) != FALSE;
    return TRUE;
}

}  // namespace

Stage::Stage() {
    m_config.configs.emplace_back().name.Set("Main");
    m_config.count = 1;
    server.api = &world;
    m_services.services["TradeApi"] = &server;
    m_services.services["TradeList"] = static_cast<ITradeList*>(&lists);
    m_services.services["SysConfig"] = static_cast<ISysConfig*>(&m_config);
    m_module.onPluginLoad(Language());
    m_module.onPluginInit(m_services.Manager());
    m_api = m_module.createPluginApi("1.0.0.1");
    SetUnhandledExceptionFilter(&TellPlan);
    CloseHandle(CreateThread(nullptr, 0, &WatchForStandstill, nullptr, 0, nullptr));
}

void Stage::Answer(const OpenBox& box) {
    const bool yes = GetDlgItem(box.window, IDYES) != nullptr;
    const bool question = GetDlgItem(box.window, IDOK) && GetDlgItem(box.window, IDCANCEL);
    m_unasked += m_sequel == nullptr;
    const bool agreed = m_sequel && m_sequel->Box(box.text, box.caption,
                                                  yes        ? "Yes/No"
                                                  : question ? "OK/Cancel"
                                                             : "OK");
    if (!agreed || !box.Press(yes ? IDYES : IDOK)) {
        box.Dismiss();
    }
}

void Stage::Raise() {
    if (!host || !IsWindow(host->Get())) {
        host = std::make_unique<HostWindow>();
    }
}

IEmendixOper* Stage::Open(const Plan& plan) {
    g_playing = plan.Words();
    ++g_plays;
    Raise();
    world.Reset(plan.world);
    std::mt19937 random(plan.record);
    plan.recordKind == kRecordKindFill ? MakeFill(world, random) : MakeOrder(world, random);
    if (plan.fillDialog) {
        void* record = plan.recordKind == kRecordKindFill ? static_cast<void*>(&world.fill) : &world.order;
        return m_api->OpenFillDialog(plan.mode, record, plan.recordKind, host->Get());
    }
    return m_api->OpenOrderDialog(plan.mode, plan.recordKind == kRecordKindOrder ? &world.order : nullptr,
                                  host->Get());
}

std::unique_ptr<Reader> Stage::ReaderOf(const Plan& plan, const View& view) {
    const Surroundings around{world, m_module.Library(), Language()};
    const OrderRecord* order = plan.recordKind == kRecordKindOrder ? &world.order : nullptr;
    const FillRecord* fill = plan.recordKind == kRecordKindFill ? &world.fill : nullptr;
    return plan.fillDialog ? FillReader(view, plan.mode, order, fill, around)
                           : OrderReader(view, plan.mode, order, around);
}

std::string Stage::Complaints(bool closed) {
    std::string complaints;
    if (m_unasked + server.unasked > 0) {
        complaints += "a box or a request came without a confirm\n";
        m_unasked = server.unasked = 0;
    }
    if (closed && (!world.listeners.empty() || lists.windows[0].open || lists.windows[1].open)) {
        complaints += "a listener or a list is left\n";
    }
    int shown = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountShown, reinterpret_cast<LPARAM>(&shown));
    if (closed && shown != IsWindow(host->Get())) {
        complaints += "windows are left\n";
    }
    return complaints;
}
