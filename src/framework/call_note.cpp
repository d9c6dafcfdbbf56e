#include "framework/call_note.h"

#include <windows.h>

namespace {

struct Entry {
    const void* place;  // of the note on the stack; null when its scope has been left
    void* target;
    CallNote::PutBack putBack;
    std::intptr_t former;
};

// A nested window message makes some eight notes and takes more than a kilobyte of stack: a thread with a
// megabyte of it does not get here.
constexpr std::size_t kCapacity = 8192;
constexpr std::size_t kReserve = 256;
constexpr std::size_t kNotNoted = kCapacity;

Entry g_entries[kCapacity];
std::size_t g_count = 0;

// Takes an entry out before it is put back, since that may run calls that make notes of their own.
Entry Take(std::size_t index) {
    const Entry entry = g_entries[index];
    g_entries[index] = {};
    while (g_count > 0 && !g_entries[g_count - 1].place) {
        --g_count;
    }
    return entry;
}

void RunPutBack(const Entry& entry) {
    if (entry.putBack && entry.target) {
        entry.putBack(entry.target, entry.former);
    }
}

// The stack grows downwards: what lies below the frame of a running function belongs to calls that are over.
// A place outside this stack (of a fiber, of another thread) is left alone.
bool IsAbandoned(const void* place, const void* frame) {
    const NT_TIB* thread = nullptr;  // NtCurrentTeb, which this compiler takes for an access to address 0
    asm("movl %%fs:0x18, %0" : "=r"(thread));
    return place >= thread->StackLimit && place < frame;
}

}  // namespace

// Two notes that hold cannot stand in one place: what stood here, and what was noted after it, is over. The
// host's loop mostly comes by the same way again.
CallNote::CallNote(void* target, PutBack putBack, std::intptr_t former) : m_index(kNotNoted) {
    PutBackAbandoned(__builtin_frame_address(0));
    for (std::size_t i = g_count; i-- > 0;) {
        if (g_entries[i].place == this) {
            while (g_count > i) {
                RunPutBack(Take(g_count - 1));
            }
        }
    }
    if (g_count < kCapacity) {
        m_index = g_count++;
        g_entries[m_index] = {this, target, putBack, former};
    }
}

CallNote::~CallNote() {
    if (m_index != kNotNoted) {
        RunPutBack(Take(m_index));
    }
}

void* CallNote::Target() const {
    return m_index != kNotNoted ? g_entries[m_index].target : nullptr;
}

void CallNote::Drop() {
    if (m_index != kNotNoted) {
        g_entries[m_index].putBack = nullptr;
    }
}

void CallNote::ForgetTarget(const void* target) {
    for (std::size_t i = 0; i < g_count; ++i) {
        if (g_entries[i].target == target) {
            g_entries[i].target = nullptr;
        }
    }
}

void CallNote::PutBackAbandoned(const void* frame) {
    while (g_count > 0 && IsAbandoned(g_entries[g_count - 1].place, frame)) {
        RunPutBack(Take(g_count - 1));
    }
}

void CallNote::PutBackAll() {
    while (g_count > 0) {
        RunPutBack(Take(g_count - 1));
    }
}

bool CallNote::NearlyFull() {
    return g_count > kCapacity - kReserve;
}
