#include "support/swallowed_exceptions.h"
#include "support/window_kit.h"
#include "trade/fake_trade.h"
#include "trade/host_services.h"
#include "trade/recording_listener.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <memory>
#include <mutex>
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

// The host's side as a real one does it: registration and posting under one lock.
class PostingTradeApi : public FakeTradeApi {
public:
    void RegisterSpi(ITradeSpi* listener) override {
        const std::scoped_lock lock(m_mutex);
        FakeTradeApi::RegisterSpi(listener);
    }
    void UnregisterSpi(ITradeSpi* listener) override {
        const std::scoped_lock lock(m_mutex);
        FakeTradeApi::UnregisterSpi(listener);
    }
    int PostToAll(WPARAM data) {
        const std::scoped_lock lock(m_mutex);
        int posted = 0;
        for (ITradeSpi* listener : listeners) {
            HWND window = nullptr;
            if (!listener->GetNotifyWnd(&window)) {
                listener->OnTradeNotify11(reinterpret_cast<void*>(data));
            } else if (window && PostMessageA(window, kWmTradeSpi, data, 32 << 24)) {
                ++posted;
            }
        }
        return posted;
    }

private:
    std::mutex m_mutex;
};

// The worker may post more than each dialog waits for, so it is at work while dialogs come and go.
TEST(HiddenWindowUnderLoad, NoEventReachesADestroyedDialog) {
    constexpr int kRounds = 100;
    PostingTradeApi api;
    g_pTradeApi = &api;
    PositionRecord position{};
    std::atomic<bool> running = true;
    std::atomic<int> allowance = 0;
    std::atomic<int> posted = 0;
    std::thread worker([&] {
        while (running) {
            if (allowance > 0 && api.PostToAll(reinterpret_cast<WPARAM>(&position)) > 0) {
                --allowance;
                ++posted;
            } else {
                Sleep(0);
            }
        }
    });
    int received = 0;
    for (int round = 0; round < kRounds; ++round) {
        Dialog dialog;
        dialog.onCall = [&] { ++received; };
        allowance += 8;
        const int wanted = received + round % 5;
        MSG message;
        while (received < wanted && GetMessageA(&message, nullptr, 0, 0)) {
            DispatchMessageA(&message);
        }
    }
    running = false;
    worker.join();
    g_pTradeApi = nullptr;
    EXPECT_GE(received, 2 * kRounds);
    EXPECT_LE(received, posted.load());
    EXPECT_EQ(api.unregistrations, kRounds);
    EXPECT_TRUE(api.listeners.empty());
}

}  // namespace
