#pragma once

#include "support/guard_heap.h"

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
    unsigned Refused() const { return m_guard ? m_guard->refused : s_refused; }

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

    // The import table: for each library its names and, side by side with them, the addresses that are
    // called.
    template <typename Function>
    static void Replace(HMODULE library, const char* name, Function replacement, Function& former) {
        char* const base = reinterpret_cast<char*>(library);
        const auto* headers =
            reinterpret_cast<IMAGE_NT_HEADERS32*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
        const DWORD imports =
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (auto* from = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); from->Name; ++from) {
            const auto* names = reinterpret_cast<DWORD*>(base + from->OriginalFirstThunk);
            auto* addresses = reinterpret_cast<Function*>(base + from->FirstThunk);
            for (; *names; ++names, ++addresses) {
                if (!(*names & IMAGE_ORDINAL_FLAG32) && std::strcmp(base + *names + 2, name) == 0) {
                    DWORD access = 0;
                    VirtualProtect(addresses, sizeof(*addresses), PAGE_READWRITE, &access);
                    former = *addresses;
                    *addresses = replacement;
                }
            }
        }
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
