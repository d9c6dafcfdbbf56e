#include "services/listener_registry.h"

#include <algorithm>

void ListenerRegistry::Add(ITradeSpi* listener) {
    const std::lock_guard lock(m_mutex);
    const bool known = std::any_of(m_slots.begin(), m_slots.end(),
                                   [&](const auto& slot) { return slot->listener == listener; });
    if (listener && !known) {
        m_slots.push_back(std::make_shared<Slot>(Slot{listener, false, {}}));
    }
}

void ListenerRegistry::Remove(ITradeSpi* listener) {
    std::unique_lock lock(m_mutex);
    const auto found = std::find_if(m_slots.begin(), m_slots.end(),
                                    [&](const auto& slot) { return slot->listener == listener; });
    if (found == m_slots.end()) {
        return;
    }
    const std::shared_ptr<Slot> slot = *found;
    m_slots.erase(found);
    slot->removed = true;
    const std::thread::id self = std::this_thread::get_id();
    m_callEnded.wait(lock, [&] {
        return std::all_of(slot->callers.begin(), slot->callers.end(),
                           [&](std::thread::id caller) { return caller == self; });
    });
}

std::size_t ListenerRegistry::Count() const {
    const std::lock_guard lock(m_mutex);
    return m_slots.size();
}

void ListenerRegistry::ForEach(const std::function<void(ITradeSpi& listener)>& visit) {
    std::unique_lock lock(m_mutex);
    const std::vector<std::shared_ptr<Slot>> slots = m_slots;
    const std::thread::id self = std::this_thread::get_id();
    for (const std::shared_ptr<Slot>& slot : slots) {
        if (slot->removed) {
            continue;
        }
        slot->callers.push_back(self);
        lock.unlock();
        visit(*slot->listener);
        lock.lock();
        slot->callers.erase(std::find(slot->callers.begin(), slot->callers.end(), self));
        m_callEnded.notify_all();
    }
}
