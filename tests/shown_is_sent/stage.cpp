#include "shown_is_sent/stage.h"

#include <atomic>

namespace {

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
    m_server.api = &m_world;
    m_services.services["TradeApi"] = &m_server;
    m_services.services["TradeList"] = static_cast<ITradeList*>(&m_lists);
    m_services.services["SysConfig"] = static_cast<ISysConfig*>(&m_config);
    m_module.onPluginLoad(m_language);
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

// The host's window stands from now on.
void Stage::Raise() {
    if (!m_host || !IsWindow(m_host->Get())) {
        m_host = std::make_unique<HostWindow>();
    }
}

// The plan's dialog on its record; null when it does not open. Should the process end or stand still for a
// minute, the plan is told.
IEmendixOper* Stage::Open(const Plan& plan) {
    g_playing = plan.Words();
    ++g_plays;
    Raise();
    m_world.Reset(plan.world);
    std::mt19937 random(plan.record);
    plan.recordKind == kRecordKindFill ? MakeFill(m_world, random) : MakeOrder(m_world, random);
    return plan.Open(m_api, m_world, m_host->Get());
}

std::unique_ptr<Reader> Stage::ReaderOf(const Plan& plan, const View& view) {
    const Surroundings around{m_world, m_module.Library(), m_language};
    const OrderRecord* order = plan.recordKind == kRecordKindOrder ? &m_world.order : nullptr;
    const FillRecord* fill = plan.recordKind == kRecordKindFill ? &m_world.fill : nullptr;
    return plan.fillDialog ? FillReader(view, plan.mode, order, fill, around)
                           : OrderReader(view, plan.mode, order, around);
}

std::string Stage::Complaints(bool closed) {
    std::string complaints;
    if (m_unasked + m_server.unasked > 0) {
        complaints += "a box or a request came without a confirm\n";
        m_unasked = m_server.unasked = 0;
    }
    if (closed && (!m_world.listeners.empty() || m_lists.windows[0].open || m_lists.windows[1].open)) {
        complaints += "a listener or a list is left\n";
    }
    int shown = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountShown, reinterpret_cast<LPARAM>(&shown));
    if (closed && shown != IsWindow(m_host->Get())) {
        complaints += "windows are left\n";
    }
    return complaints;
}

std::string Stage::Play(const Plan& plan) {
    IEmendixOper* dialog = Open(plan);
    if (!dialog) {
        return "the dialog does not open\n";
    }
    Hands hands(m_world, m_lists, dialog);
    hands.Pump();
    Opened(plan, hands);
    std::string failure;
    for (auto step = plan.steps.begin(); step != plan.steps.end() && failure.empty() && hands.Open();
         ++step) {
        failure = Do(*step, hands);
    }
    if (hands.Open()) {
        SendMessageA(hands.view.dialog, WM_CLOSE, 0, 0);
    }
    hands.Pump();
    return failure + Complaints(true);
}

// A shorter plan that still fails. Returns what it fails with.
std::string Stage::Shrink(Plan& plan) {
    std::string failure = Play(plan);
    for (std::size_t size = plan.steps.size() / 2; size > 0; size /= 2) {
        for (std::size_t at = 0; at < plan.steps.size();) {
            Plan shorter = plan;
            const auto from = shorter.steps.begin() + static_cast<int>(at);
            shorter.steps.erase(from, from + static_cast<int>(std::min(size, plan.steps.size() - at)));
            const std::string rest = Play(shorter);
            if (rest.empty()) {
                at += size;
            } else {
                plan = shorter;
                failure = rest;
            }
        }
    }
    return failure;
}

void Stage::PlayPlan(int place) {
    const int seed = m_firstSeed + place;
    Plan plan = Make(static_cast<unsigned>(seed));
    const std::string first = m_failures > 0 ? Play(plan) : "";
    if (!first.empty()) {
        --m_failures;
        explaining = true;
        std::string failure = Shrink(plan);
        explaining = false;
        failure = failure.empty() ? "once: " + first : failure;
        ADD_FAILURE() << "EMENDO_PLAN=" << seed << ", shortened: " << plan.Words() << failure;
    }
    Raise();
}

int Stage::PlayPlans(const std::function<bool()>& more) {
    int plans = 0;
    do {
        PlayPlan(plans++);
    } while (!m_onlySeed && m_failures > 0 && more());
    return plans;
}
