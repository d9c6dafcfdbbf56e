#include "services/event_pump.h"
#include "trade/trade_spi.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// A listener whose other 34 operations nobody calls.
class Listener : public ITradeSpi {
public:
    explicit Listener(HWND window = nullptr) : m_window(window) {}
    ~Listener() { m_alive = false; }
    bool GetNotifyWnd(HWND* window) override {
        Check();
        *window = m_window;
        return m_window != nullptr;
    }
    void OnTradeNotify11(void* data) override {
        Check();
        lastQty = static_cast<PositionRecord*>(data)->openQty;
        ++calls;
        if (onCall) {
            onCall();
        }
    }

    std::atomic<std::uint32_t> lastQty = 0;
    std::atomic<int> calls = 0;
    std::function<void()> onCall;

private:
    void Check() const {
        if (!m_alive) {
            std::abort();  // called after its end: the sanitizer would see it too
        }
    }
    HWND m_window;
    std::atomic<bool> m_alive = true;

    // What nobody calls here.
    // clang-format off
#define IDLE(n) \
    void OnTradeNotify##n(void*) override { ADD_FAILURE(); }
#define IDLE_WITH_CODE(n) \
    void OnTradeNotify##n(std::uint16_t, void*) override { ADD_FAILURE(); }
    IDLE(1) IDLE_WITH_CODE(2) IDLE(3) IDLE_WITH_CODE(4) IDLE(5) IDLE_WITH_CODE(6)
    void OnTradeNotify7(std::uint16_t, std::int8_t, void*) override { ADD_FAILURE(); }
    IDLE(8) IDLE(9) IDLE(10) IDLE(12) IDLE(13) IDLE(14) IDLE(15) IDLE_WITH_CODE(16) IDLE(17) IDLE(18) IDLE(19)
    IDLE(20) IDLE(21) IDLE(22) IDLE(23) IDLE(24) IDLE(25) IDLE(26) IDLE(27) IDLE(28) IDLE(29) IDLE(30) IDLE(31)
    IDLE(32) IDLE(33) IDLE(34) IDLE(35)
#undef IDLE
#undef IDLE_WITH_CODE
    // clang-format on
};

PositionRecord Position(std::uint32_t qty) {
    PositionRecord record{};
    record.openQty = qty;
    return record;
}

TEST(EventsTest, APostedRecordIsTheOneAtTheChangeAndIsKeptUntilHandled) {
    struct Posted {
        PositionRecord* record;
        std::uint32_t code;
    };
    std::vector<Posted> posted;
    std::vector<std::uint32_t> marks;
    bool windowAlive = true;
    ListenerRegistry listeners;
    EventPump pump(listeners, {[&](HWND, void* record, std::uint32_t code) {
                                   posted.push_back({static_cast<PositionRecord*>(record), code});
                                   return windowAlive;
                               },
                               [&](std::uint32_t serial) {
                                   marks.push_back(serial);
                                   return true;
                               }});
    int window = 0;
    Listener byWindow(reinterpret_cast<HWND>(&window));
    Listener direct;
    listeners.Add(&byWindow);
    listeners.Add(&direct);
    listeners.Add(&direct);
    pump.PositionChanged(Position(7));
    pump.PositionChanged(Position(8));
    pump.Flush();
    ASSERT_EQ(posted.size(), 2u);
    EXPECT_EQ(posted[0].code, 0x20000000u);
    EXPECT_EQ(posted[0].record->openQty + 0, 7u);
    EXPECT_EQ(posted[1].record->openQty + 0, 8u);
    EXPECT_EQ(direct.calls, 2) << "registered twice, called once";
    EXPECT_EQ(direct.lastQty, 8u);
    EXPECT_EQ(pump.Count().kept, 2u);
    pump.Handled(marks[0]);
    EXPECT_EQ(pump.Count().kept, 1u);
    pump.Handled(marks[1]);
    EXPECT_EQ(pump.Count().kept, 0u);
    windowAlive = false;
    listeners.Remove(&direct);
    pump.PositionChanged(Position(9));
    pump.Flush();
    EXPECT_EQ(pump.Count().kept, 0u) << "nobody will handle it";
    EXPECT_EQ(pump.Count().undelivered, 1u);
    EXPECT_EQ(direct.calls, 2);
    EXPECT_EQ(PackEvent(8, -1, 5), 0x08FF0005u);
}

TEST(EventsTest, AListenerMayRemoveItselfAndOthersFromInsideItsCall) {
    ListenerRegistry listeners;
    EventPump pump(listeners, {});
    Listener first;
    Listener second;
    first.onCall = [&] {
        listeners.Remove(&first);
        listeners.Remove(&second);
    };
    listeners.Add(&first);
    listeners.Add(&second);
    pump.PositionChanged(Position(1));
    pump.PositionChanged(Position(2));
    pump.Flush();
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
    EXPECT_EQ(listeners.Count(), 0u);
}

TEST(EventsTest, NoListenerIsCalledAfterItsRemovalUnderLoad) {
    constexpr int kThreads = 3;
    constexpr int kRounds = 2000;
    ListenerRegistry listeners;
    EventPump pump(listeners, {});
    std::atomic<bool> stop = false;
    std::thread events([&] {
        for (std::uint32_t qty = 0; !stop; ++qty) {
            pump.PositionChanged(Position(qty));
            if (qty % 64 == 0) {
                pump.Flush();
            }
        }
    });
    std::atomic<std::uint64_t> called = 0;
    std::vector<std::thread> owners;
    for (int i = 0; i < kThreads; ++i) {
        owners.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round) {
                auto listener = std::make_unique<Listener>();
                listeners.Add(listener.get());
                while (round % 4 == 0 && listener->calls == 0) {
                    std::this_thread::yield();
                }
                listeners.Remove(listener.get());
                called += static_cast<std::uint64_t>(listener->calls);
            }
        });
    }
    for (std::thread& owner : owners) {
        owner.join();
    }
    stop = true;
    events.join();
    pump.Flush();
    EXPECT_EQ(pump.Count().called, called) << "no call is lost and none is made up";
    EXPECT_EQ(pump.Count().kept, 0u);
    EXPECT_EQ(listeners.Count(), 0u);
}

}  // namespace
