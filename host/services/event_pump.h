#pragma once

#include "services/listener_registry.h"
#include "trade/host_records.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

// How events reach windows; given by who knows windows. Called on the worker thread.
struct EventPosting {
    // Posts WM_TRADESPI with the record and the packed code; false when the window is gone or its queue full.
    std::function<bool(HWND window, void* record, std::uint32_t code)> post;
    // Posts a mark behind everything that was posted before, so that its arrival (EventPump::Handled) means
    // that all of it has been handled. False when it cannot be posted: a later mark then does.
    std::function<bool(std::uint32_t serial)> mark;
};

// Reports changed positions to the registered listeners from a thread of its own, each as a copy of the
// record as it was at the change. A copy that was posted is kept until it has been handled.
class EventPump {
public:
    struct Counters {
        std::uint64_t queued = 0;       // changes handed in
        std::uint64_t posted = 0;       // messages posted to listener windows
        std::uint64_t called = 0;       // listeners called directly
        std::uint64_t undelivered = 0;  // messages that could not be posted
        std::uint64_t kept = 0;         // copies alive now
    };

    EventPump(ListenerRegistry& listeners, EventPosting posting);
    ~EventPump();  // waits for the worker; events that are still queued are dropped
    EventPump(const EventPump&) = delete;
    EventPump& operator=(const EventPump&) = delete;

    void PositionChanged(const PositionRecord& position);
    // Every event up to this serial has been handled or has been lost with its window.
    void Handled(std::uint32_t serial);
    // Waits until every event that was handed in has gone out.
    void Flush();
    Counters Count() const;

private:
    struct Event {
        std::uint32_t serial;
        PositionRecord record;
    };

    void Work();
    void Deliver(Event& event);

    ListenerRegistry& m_listeners;
    EventPosting m_posting;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::unique_ptr<Event>> m_queue;
    std::map<std::uint32_t, std::unique_ptr<Event>> m_kept;  // by serial
    std::uint32_t m_nextSerial = 1;
    bool m_busy = false;
    bool m_stop = false;
    Counters m_counters;
    std::thread m_worker;
};

// The long parameter of WM_TRADESPI.
constexpr std::uint32_t PackEvent(int type, std::int8_t value, std::uint16_t code) {
    return static_cast<std::uint32_t>(type) << 24 |
           static_cast<std::uint32_t>(static_cast<std::uint8_t>(value)) << 16 | code;
}
