#pragma once

#include "support/guard_heap.h"
#include "support/import_table.h"

#include <windows.h>

#include <cstring>

// Answers what a loaded module asks of the C library's heap with no memory: through the guard heap when it is
// built with that, else in the place of the functions that it imports.
class MemoryRefusal {
public:
    explicit MemoryRefusal(HMODULE library) : m_guard(FindGuardHeap()) {
        if (m_guard) {
            m_guard->Watch(library);
            return;
        }
        Replace(library, "malloc", &Malloc, s_malloc);
        Replace(library, "calloc", &Calloc, s_calloc);
        Replace(library, "realloc", &Realloc, s_realloc);
    }
    ~MemoryRefusal() { RefuseNone(); }

    // The one of that number, counted from now on, from 1; and all that follow it.
    void RefuseOnly(unsigned number) { Refuse(number, number); }
    void RefuseFrom(unsigned number) { Refuse(number, UINT32_MAX); }
    void RefuseNone() { Refuse(0, 0); }
    // Since one of these was called last.
    unsigned Asked() const { return m_guard ? m_guard->allocations : s_asked; }
    unsigned Refused() const { return m_guard ? m_guard->refused : s_refused; }
    // Of the library, in use; 0 without the guard heap.
    unsigned Blocks() const { return m_guard ? m_guard->blocks : 0; }

private:
    void Refuse(unsigned from, unsigned to) {
        if (m_guard) {
            m_guard->Refuse(from, to);
        }
        s_asked = s_refused = 0;
        s_from = from;
        s_to = to;
    }
    static bool Refuses() {
        ++s_asked;
        const bool refused = s_asked >= s_from && s_asked <= s_to;
        s_refused += refused;
        return refused;
    }
    static void* __cdecl Malloc(std::size_t size) { return Refuses() ? nullptr : s_malloc(size); }
    static void* __cdecl Calloc(std::size_t count, std::size_t size) {
        return Refuses() ? nullptr : s_calloc(count, size);
    }
    static void* __cdecl Realloc(void* block, std::size_t size) {
        return Refuses() ? nullptr : s_realloc(block, size);
    }

    template <typename Function>
    static void Replace(HMODULE library, const char* name, Function replacement, Function& former) {
        ForEachImport(library, [&](const char* imported, void*& address) {
            if (std::strcmp(imported, name) == 0) {
                former = reinterpret_cast<Function>(address);
                ExchangeImport(address, reinterpret_cast<void*>(replacement));
            }
        });
    }

    GuardHeap* m_guard;
    static inline void*(__cdecl* s_malloc)(std::size_t) = nullptr;
    static inline void*(__cdecl* s_calloc)(std::size_t, std::size_t) = nullptr;
    static inline void*(__cdecl* s_realloc)(void*, std::size_t) = nullptr;
    static inline unsigned s_asked = 0;
    static inline unsigned s_refused = 0;
    static inline unsigned s_from = 0;
    static inline unsigned s_to = 0;
};
