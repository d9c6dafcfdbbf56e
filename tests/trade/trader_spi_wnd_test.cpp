#include "services/event_pump.h"
#include "support/swallowed_exceptions.h"
#include "support/window_kit.h"
#include "trade/fake_trade.h"
#include "trade/host_services.h"
#include "trade/recording_listener.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

namespace {

using Dialog = RecordingListener<TradeSpiEx>;

class HiddenWindow : public testing::Test {
protected:
    HiddenWindow() { g_pTradeApi = &api; }
    ~HiddenWindow() override { g_pTradeApi = nullptr; }

    // The window that the host is told to post to.
    HWND NotifyWindow() {
        HWND window = nullptr;
        EXPECT_EQ(api.listeners.size(), 1u);
        EXPECT_TRUE(api.listeners.at(0)->GetNotifyWnd(&window));
        EXPECT_TRUE(IsWindow(window));
        return window;
    }
    WPARAM Data() { return reinterpret_cast<WPARAM>(&position); }

    FakeTradeApi api;
    PositionRecord position{};
};

TEST_F(HiddenWindow, TurnsPostedEventsIntoCallbacksOnItsThread) {
    Dialog dialog;
    DWORD thread = 0;
    dialog.onCall = [&] { thread = GetCurrentThreadId(); };
    const HWND window = NotifyWindow();
    EXPECT_FALSE(IsWindowVisible(window));
    std::thread worker([&] {
        PostMessageA(window, kWmTradeSpi, Data(), 32 << 24);
        PostMessageA(window, kWmTradeSpi, 0, 32 << 24);  // no data: dropped
        PostMessageA(window, kWmTradeSpi, Data(), 0x08FF0005);
        PostMessageA(window, kWmTradeSpi, Data(), 9 << 24);
    });
    worker.join();
    EXPECT_TRUE(dialog.calls.empty());
    HostLoop().PumpUntilIdle();
    EXPECT_EQ(dialog.calls, (std::vector<std::string>{"11 data", "7 data 5 -1"}));
    EXPECT_EQ(thread, GetCurrentThreadId());
    EXPECT_EQ(SendMessageA(window, kWmTradeSpi, Data(), 9 << 24), 1);
}

TEST_F(HiddenWindow, ForwardsDirectCallsAtOnce) {
    Dialog dialog;
    ITradeSpi* listener = api.listeners.at(0);
    ASSERT_NE(listener, static_cast<ITradeSpi*>(&dialog));
    listener->OnTradeNotify5(&position);
    listener->OnTradeNotify16(65535, nullptr);
    listener->OnTradeNotify7(1, -128, &position);
    listener->OnTradeNotify35(&position);
    EXPECT_EQ(dialog.calls,
              (std::vector<std::string>{"5 data", "16 null 65535", "7 data 1 -128", "35 data"}));
    ExpectedExceptions expected;
    dialog.onCall = [] { throw std::runtime_error("in the dialog"); };
    EXPECT_NO_THROW(listener->OnTradeNotify11(&position));
    EXPECT_NO_THROW(SendMessageA(NotifyWindow(), kWmTradeSpi, Data(), 32 << 24));
    EXPECT_EQ(dialog.calls.size(), 6u);
    EXPECT_EQ(expected.Take(), 2);
}

TEST_F(HiddenWindow, GoesWithTheDialogAlsoInTheMiddleOfAnEvent) {
    auto dialog = std::make_unique<Dialog>();
    const HWND window = NotifyWindow();
    PostMessageA(window, kWmTradeSpi, Data(), 32 << 24);
    PostMessageA(window, kWmTradeSpi, Data(), 32 << 24);
    int calls = 0;
    dialog->onCall = [&] {
        ++calls;
        const std::function<void()> keptAlive = std::move(dialog->onCall);
        dialog.reset();
    };
    HostLoop().PumpUntilIdle();
    EXPECT_EQ(calls, 1) << "the event behind it is lost with the window";
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(api.listeners.empty());
    EXPECT_EQ(api.unregistrations, 1);
}

TEST_F(HiddenWindow, NoTradeServiceNoListener) {
    g_pTradeApi = nullptr;
    const Dialog dialog;
    EXPECT_TRUE(api.listeners.empty());
}

LRESULT CALLBACK RefuseWindows(int code, WPARAM wParam, LPARAM lParam) {
    return code == HCBT_CREATEWND ? 1 : CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(HiddenWindow, NoWindowNoListener) {
    const HHOOK hook = SetWindowsHookExA(WH_CBT, RefuseWindows, nullptr, GetCurrentThreadId());
    {
        const Dialog dialog;
        EXPECT_TRUE(api.listeners.empty());
        EXPECT_EQ(api.unregistrations, 1);
    }
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(api.unregistrations, 1);
}

// What a listener answers when it is asked on a thread of the host's, and whether a direct call gets through.
std::string AskedFromAThread(ITradeSpi& listener, const Dialog* dialog = nullptr) {
    std::string answer;
    const std::size_t calls = dialog ? dialog->calls.size() : 0;
    std::thread([&] {
        HWND window = nullptr;
        answer = listener.GetNotifyWnd(&window) ? "post" : "call";
        answer += window ? " window" : " none";
        PositionRecord position{};
        listener.OnTradeNotify11(&position);
    }).join();
    return answer + (dialog && dialog->calls.size() > calls ? " called" : "");
}

class AskingTradeApi : public FakeTradeApi {
public:
    std::string log;
    void RegisterSpi(ITradeSpi* listener) override {
        FakeTradeApi::RegisterSpi(listener);
        log += "registering: " + AskedFromAThread(*listener) + "; ";
    }
    void UnregisterSpi(ITradeSpi* listener) override {
        log += "unregistering: " + AskedFromAThread(*listener) + "; ";
        FakeTradeApi::UnregisterSpi(listener);
    }
};

AskingTradeApi* g_asking = nullptr;

LRESULT CALLBACK AskDuringCreation(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HCBT_CREATEWND || code == HCBT_DESTROYWND) {
        std::string entry = code == HCBT_CREATEWND ? "creating: " : "destroying: ";
        entry += AskedFromAThread(*g_asking->listeners.at(0)) + "; ";
        if (!g_asking->log.ends_with(entry)) {  // the system makes windows of its own with it
            g_asking->log += entry;
        }
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST(HiddenWindowBeforeAndAfter, PostsNowhereAndIgnoresDirectCalls) {
    AskingTradeApi api;
    g_pTradeApi = g_asking = &api;
    const HHOOK hook = SetWindowsHookExA(WH_CBT, AskDuringCreation, nullptr, GetCurrentThreadId());
    {
        const Dialog dialog;
        EXPECT_EQ(AskedFromAThread(*api.listeners.at(0), &dialog), "post window called");
    }
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(api.log,
              "registering: call none; creating: call none; destroying: call none; "
              "unregistering: call none; ");
    g_pTradeApi = nullptr;
}

// Listeners as the substitute host keeps them: a removal waits for the call that another thread is making.
class RegistryTradeApi : public FakeTradeApi {
public:
    ListenerRegistry registry;
    void RegisterSpi(ITradeSpi* listener) override { registry.Add(listener); }
    void UnregisterSpi(ITradeSpi* listener) override { registry.Remove(listener); }
};

// Events are always on their way while dialogs come and go.
TEST(HiddenWindowUnderLoad, NoEventReachesADestroyedDialogOrNoWindow) {
    constexpr int kRounds = 100;
    RegistryTradeApi api;
    g_pTradeApi = &api;
    std::atomic<int> postedNowhere = 0;
    int received = 0;
    EventPump pump(api.registry, {[&](HWND window, void* record, std::uint32_t code) {
                                      postedNowhere += !window;
                                      return PostMessageA(window, kWmTradeSpi,
                                                          reinterpret_cast<WPARAM>(record),
                                                          static_cast<LPARAM>(code)) != FALSE;
                                  },
                                  nullptr});
    const auto change = [&](int events) {
        for (int i = 0; i < events; ++i) {
            pump.PositionChanged(PositionRecord{});
        }
    };
    for (int round = 0; round < kRounds; ++round) {
        change(20);  // some of them are out before the dialog is there
        Dialog dialog;
        dialog.onCall = [&] { ++received; };
        change(8);
        const int wanted = received + round % 5;
        MSG message;
        while (received < wanted && GetMessageA(&message, nullptr, 0, 0)) {
            DispatchMessageA(&message);
        }
    }
    pump.Flush();
    g_pTradeApi = nullptr;
    EXPECT_GE(received, 2 * kRounds);
    EXPECT_LE(static_cast<std::uint64_t>(received), pump.Count().posted);
    EXPECT_EQ(postedNowhere, 0);
    EXPECT_EQ(api.registry.Count(), 0u);
}

}  // namespace
