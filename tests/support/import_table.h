#pragma once

#include <windows.h>

#include <cstddef>

// The functions that a loaded module imports: `use(name, address)` for each, where the address may be
// exchanged with ExchangeImport. Those that are imported by number are left out.
template <typename Use>
void ForEachImport(HMODULE module, Use use) {
    char* const base = reinterpret_cast<char*>(module);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports); from->Name; ++from) {
        const auto* name = reinterpret_cast<const DWORD*>(base + from->OriginalFirstThunk);
        for (auto** address = reinterpret_cast<void**>(base + from->FirstThunk); *name; ++name, ++address) {
            if (!(*name & IMAGE_ORDINAL_FLAG32)) {
                use(static_cast<const char*>(base + *name + offsetof(IMAGE_IMPORT_BY_NAME, Name)), *address);
            }
        }
    }
}

inline void ExchangeImport(void*& address, void* function) {
    DWORD former = 0;
    VirtualProtect(&address, sizeof(address), PAGE_READWRITE, &former);
    address = function;
    VirtualProtect(&address, sizeof(address), former, &former);
}
