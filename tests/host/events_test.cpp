#include "services/event_pump.h"
#include "trade/recording_listener.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

// Counts the changed positions that it hears of; the sanitizer sees a call after its end.
class Listener : public RecordingListener<ITradeSpi> {
public:
    explicit Listener(HWND window = nullptr) : m_window(window) {}
    bool GetNotifyWnd(HWND* window) override {
        *window = m_window;
        return m_window != nullptr;
    }
    void OnTradeNotify11(void* data) override {
        lastQty = static_cast<PositionRecord*>(data)->openQty;
        ++count;
        if (onCall) {
            onCall();
        }
    }

    std::atomic<std::uint32_t> lastQty = 0;
    std::atomic<std::uint64_t> count = 0;

private:
    HWND m_window;
};

// Changes of a position to each quantity from the first to the last.
void Report(EventPump& pump, std::uint32_t first, std::uint32_t last) {
    PositionRecord position{};
    for (position.openQty = first; position.openQty <= last; ++position.openQty) {
        pump.PositionChanged(position);
    }
    pump.Flush();
}

TEST(EventsTest, APostedRecordIsTheOneAtTheChangeAndIsKeptUntilHandled) {
    std::vector<PositionRecord*> posted;
    std::vector<std::uint32_t> marks;
    bool windowAlive = true;
    ListenerRegistry listeners;
    EventPump pump(listeners, {[&](HWND, void* record, std::uint32_t code) {
                                   EXPECT_EQ(code, 0x20000000u);
                                   posted.push_back(static_cast<PositionRecord*>(record));
                                   return windowAlive;
                               },
                               [&](std::uint32_t serial) {
                                   marks.push_back(serial);
                                   return true;
                               }});
    int window = 0;
    Listener byWindow(reinterpret_cast<HWND>(&window));
    Listener direct;
    for (Listener* listener : {&byWindow, &direct, &direct}) {
        listeners.Add(listener);
    }
    Report(pump, 7, 8);
    ASSERT_EQ(posted.size(), 2u);
    EXPECT_EQ(+posted[0]->openQty, 7u);
    EXPECT_EQ(+posted[1]->openQty, 8u);
    EXPECT_EQ(direct.count, 2u) << "registered twice, called once";
    EXPECT_EQ(direct.lastQty, 8u);
    EXPECT_EQ(pump.Count().kept, 2u);
    pump.Handled(marks[0]);
    EXPECT_EQ(pump.Count().kept, 1u);
    pump.Handled(marks[1]);
    EXPECT_EQ(pump.Count().kept, 0u);
    windowAlive = false;
    listeners.Remove(&direct);
    Report(pump, 9, 9);
    EXPECT_EQ(pump.Count().kept, 0u) << "nobody will handle it";
    EXPECT_EQ(direct.count, 2u);
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
    Report(pump, 1, 2);
    EXPECT_EQ(first.count, 1u);
    EXPECT_EQ(second.count, 0u);
    EXPECT_EQ(listeners.Count(), 0u);
}

TEST(EventsTest, NoListenerIsCalledAfterItsRemovalUnderLoad) {
    constexpr int kThreads = 3;
    constexpr int kRounds = 2000;
    ListenerRegistry listeners;
    EventPump pump(listeners, {});
    std::atomic<bool> stop = false;
    std::thread events([&] {
        while (!stop) {
            Report(pump, 1, 64);
        }
    });
    std::atomic<std::uint64_t> called = 0;
    std::vector<std::thread> owners(kThreads);
    for (std::thread& owner : owners) {
        owner = std::thread([&] {
            for (int round = 0; round < kRounds; ++round) {
                const auto listener = std::make_unique<Listener>();
                listeners.Add(listener.get());
                while (round % 4 == 0 && listener->count == 0) {
                    std::this_thread::yield();
                }
                listeners.Remove(listener.get());
                called += listener->count;
            }
        });
    }
    for (std::thread& owner : owners) {
        owner.join();
    }
    stop = true;
    events.join();
    EXPECT_EQ(pump.Count().called, called) << "no call is lost and none is made up";
    EXPECT_EQ(pump.Count().kept, 0u);
    EXPECT_EQ(listeners.Count(), 0u);
}

}  // namespace
