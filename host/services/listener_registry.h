#pragma once

#include "trade/trade_spi.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

// The registered listeners. Any thread may call any operation. A listener is never called after Remove has
// returned: Remove waits for a call that another thread is making, and only for that listener's. A listener
// may remove itself, or any other, from inside its own call.
class ListenerRegistry {
public:
    // A null listener and one that is already there are ignored.
    void Add(ITradeSpi* listener);
    void Remove(ITradeSpi* listener);
    std::size_t Count() const;

    // Calls `visit` for each listener that is registered when its turn comes, one after the other.
    void ForEach(const std::function<void(ITradeSpi& listener)>& visit);

private:
    struct Slot {
        ITradeSpi* listener;
        bool removed = false;
        std::vector<std::thread::id> callers;  // threads that are inside a call of it
    };

    mutable std::mutex m_mutex;
    std::condition_variable m_callEnded;
    std::vector<std::shared_ptr<Slot>> m_slots;
};
