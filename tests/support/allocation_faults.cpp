#include "support/allocation_faults.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<long> g_asked = 0;
std::atomic<long> g_refused = 0;
std::atomic<long> g_from = 0;
std::atomic<long> g_count = 0;

bool IsRefused() {
    const long number = g_asked++;
    const bool refused = number >= g_from && number - g_from < g_count;
    g_refused += refused;
    return refused;
}

void* Malloc(std::size_t size) {
    return IsRefused() ? nullptr : std::malloc(size);
}
void* Calloc(std::size_t count, std::size_t size) {
    return IsRefused() ? nullptr : std::calloc(count, size);
}
void* Realloc(void* block, std::size_t size) {
    return IsRefused() ? nullptr : std::realloc(block, size);
}

struct Replacement {
    const char* name;
    void* ours;
    void* theirs;
};
Replacement g_replacements[] = {{"malloc", reinterpret_cast<void*>(&Malloc), nullptr},
                                {"calloc", reinterpret_cast<void*>(&Calloc), nullptr},
                                {"realloc", reinterpret_cast<void*>(&Realloc), nullptr}};

template <typename Part>
Part* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<Part*>(reinterpret_cast<char*>(module) + offset);
}

void Exchange(void*& place, void* function) {
    DWORD former = 0;
    VirtualProtect(&place, sizeof(place), PAGE_READWRITE, &former);
    place = function;
    VirtualProtect(&place, sizeof(place), former, &former);
}

template <typename Use>
void ForEachImport(HMODULE module, Use use) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(dos->e_lfanew));
    const auto* import = At<IMAGE_IMPORT_DESCRIPTOR>(
        module, headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
    for (; import->Name; ++import) {
        const DWORD* name = At<DWORD>(module, import->OriginalFirstThunk);
        void** address = At<void*>(module, import->FirstThunk);
        for (; *name; ++name, ++address) {
            if ((*name & IMAGE_ORDINAL_FLAG32) == 0) {
                use(reinterpret_cast<const char*>(At<IMAGE_IMPORT_BY_NAME>(module, *name)->Name), *address);
            }
        }
    }
}

}  // namespace

AllocationFaults::AllocationFaults(HMODULE module) : m_module(module) {
    RefuseNone();
    ForEachImport(module, [](const char* name, void*& address) {
        for (Replacement& replacement : g_replacements) {
            if (std::strcmp(name, replacement.name) == 0) {
                replacement.theirs = address;
                Exchange(address, replacement.ours);
            }
        }
    });
}

AllocationFaults::~AllocationFaults() {
    ForEachImport(m_module, [](const char*, void*& address) {
        for (const Replacement& replacement : g_replacements) {
            if (address == replacement.ours) {
                Exchange(address, replacement.theirs);
            }
        }
    });
}

void AllocationFaults::Refuse(long from, long count) {
    g_from = from;
    g_count = count;
    g_asked = g_refused = 0;
}

void AllocationFaults::RefuseNone() {
    Refuse(0, 0);
}

long AllocationFaults::Asked() const {
    return g_asked;
}

long AllocationFaults::Refused() const {
    return g_refused;
}
