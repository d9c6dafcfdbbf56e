#include "support/leak_count.h"

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ostream>
#include <vector>

namespace {

// The process's table of GDI handles, which the system keeps in readable memory.
int CountGdiObjects() {
    struct Entry {
        std::uint8_t unused1[14];
        std::uint8_t type;
        std::uint8_t unused2[9];
    };
    static_assert(sizeof(Entry) == 24);
    constexpr int entryCount = 65536;
    const char* block = nullptr;
    __asm__("movl %%fs:0x30, %0" : "=r"(block));
    const Entry* table = nullptr;
    std::memcpy(&table, block + 0x94, sizeof(table));
    int live = 0;
    for (int index = 0; table && index < entryCount; ++index) {
        live += table[index].type != 0;
    }
    return live;
}

BOOL CALLBACK CountWindow(HWND, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM counter) {
    CountWindow(window, counter);
    EnumChildWindows(window, CountWindow, counter);
    return TRUE;
}

int CountWindows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&count));
    for (HWND window = FindWindowExA(HWND_MESSAGE, nullptr, nullptr, nullptr); window;
         window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) {
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
    }
    return count;
}

long long BytesInUse(HANDLE heap) {
    PROCESS_HEAP_ENTRY entry{};
    long long bytes = 0;
    HeapLock(heap);
    while (HeapWalk(heap, &entry)) {
        bytes += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? static_cast<long long>(entry.cbData) : 0;
    }
    HeapUnlock(heap);
    return bytes;
}

}  // namespace

ResourceCount CountResources() {
    ResourceCount count;
    count.gdiObjects = CountGdiObjects();
    count.windows = CountWindows();
    std::vector<HANDLE> heaps(64);
    const DWORD heapCount = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    for (DWORD index = 0; index < heapCount && index < heaps.size(); ++index) {
        count.heapBytes += BytesInUse(heaps[index]);
    }
    return count;
}

bool SaveScreenshot(HWND window, const std::string& path) {
    RECT place{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (window && !GetWindowRect(window, &place)) {
        return false;
    }
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    const LONG rowBytes = (width * 3 + 3) / 4 * 4;

    BITMAPINFOHEADER info{};
    info.biSize = sizeof(info);
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biSizeImage = static_cast<DWORD>(rowBytes * height);
    std::vector<char> pixels(info.biSizeImage);

    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    SelectObject(memory, former);
    const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(height), pixels.data(),
                               reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);

    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;  // "BM"
    file.bfOffBits = sizeof(file) + sizeof(info);
    file.bfSize = file.bfOffBits + info.biSizeImage;
    std::FILE* out = rows == height ? std::fopen(path.c_str(), "wb") : nullptr;
    if (!out) {
        return false;
    }
    std::fwrite(&file, sizeof(file), 1, out);
    std::fwrite(&info, sizeof(info), 1, out);
    std::fwrite(pixels.data(), 1, pixels.size(), out);
    return std::fclose(out) == 0;
}
