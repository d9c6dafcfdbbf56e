#pragma once

#include <windows.h>

// A loaded module as the bytes that it consists of.

template <typename Part>
const Part* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<const Part*>(reinterpret_cast<const char*>(module) + offset);
}

inline const IMAGE_NT_HEADERS32& Headers(HMODULE module) {
    return *At<IMAGE_NT_HEADERS32>(module, static_cast<DWORD>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
}

inline DWORD Directory(HMODULE module, int index) {
    return Headers(module).OptionalHeader.DataDirectory[index].VirtualAddress;
}

// Where a byte of the image stands in the module's file.
inline DWORD FileOffset(HMODULE module, DWORD imageOffset) {
    const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(&Headers(module));
    while (imageOffset - section->VirtualAddress >= section->Misc.VirtualSize) {
        ++section;
    }
    return imageOffset - section->VirtualAddress + section->PointerToRawData;
}

// The image offset of the entry with this id in a directory of the resource section; 0 when there is none.
// `directory` is relative to the section.
inline DWORD ResourceEntry(HMODULE module, DWORD directory, WORD id) {
    const DWORD resources = Directory(module, IMAGE_DIRECTORY_ENTRY_RESOURCE);
    const auto* head = At<IMAGE_RESOURCE_DIRECTORY>(module, resources + directory);
    DWORD offset = resources + directory + sizeof(*head);
    for (int left = head->NumberOfNamedEntries + head->NumberOfIdEntries; left > 0; --left) {
        if (At<IMAGE_RESOURCE_DIRECTORY_ENTRY>(module, offset)->Name == id) {
            return offset;
        }
        offset += sizeof(IMAGE_RESOURCE_DIRECTORY_ENTRY);
    }
    return 0;
}
