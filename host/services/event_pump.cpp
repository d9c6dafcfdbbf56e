#include "services/event_pump.h"

EventPump::EventPump(ListenerRegistry& listeners, EventPosting posting)
    : m_listeners(listeners), m_posting(std::move(posting)), m_worker([this] { Work(); }) {}

EventPump::~EventPump() {
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    m_worker.join();
}

void EventPump::PositionChanged(const PositionRecord& position) {
    {
        const std::lock_guard lock(m_mutex);
        m_queue.push_back(std::make_unique<Event>(Event{m_nextSerial++, position}));
        ++m_counters.queued;
    }
    m_changed.notify_all();
}

void EventPump::Handled(std::uint32_t serial) {
    const std::lock_guard lock(m_mutex);
    m_kept.erase(m_kept.begin(), m_kept.upper_bound(serial));
}

void EventPump::Flush() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return m_queue.empty() && !m_busy; });
}

EventPump::Counters EventPump::Count() const {
    const std::lock_guard lock(m_mutex);
    Counters counters = m_counters;
    counters.kept = m_kept.size();
    return counters;
}

void EventPump::Work() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [&] { return m_stop || !m_queue.empty(); });
        if (m_stop) {
            return;
        }
        std::unique_ptr<Event> event = std::move(m_queue.front());
        m_queue.pop_front();
        // Kept before it is posted: it may be handled before this thread goes on.
        Event& kept = *m_kept.emplace(event->serial, std::move(event)).first->second;
        m_busy = true;
        lock.unlock();
        Deliver(kept);
        lock.lock();
        m_busy = false;
        m_changed.notify_all();
    }
}

void EventPump::Deliver(Event& event) {
    const std::uint32_t serial = event.serial;
    Counters now;
    m_listeners.ForEach([&](ITradeSpi& listener) {
        HWND window = nullptr;
        if (!listener.GetNotifyWnd(&window)) {
            listener.OnTradeNotify11(&event.record);
            ++now.called;
        } else if (m_posting.post &&
                   m_posting.post(window, &event.record, PackEvent(kPositionChangedEvent, 0, 0))) {
            ++now.posted;
        } else {
            ++now.undelivered;
        }
    });
    if (now.posted == 0) {
        const std::lock_guard lock(m_mutex);
        m_kept.erase(serial);
    } else if (m_posting.mark) {
        m_posting.mark(serial);
    }
    const std::lock_guard lock(m_mutex);
    m_counters.posted += now.posted;
    m_counters.called += now.called;
    m_counters.undelivered += now.undelivered;
}
