#include "support/leak_count.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

BOOL CALLBACK CountWindow(HWND, LPARAM counter) {
    ++*reinterpret_cast<int*>(counter);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM counter) {
    CountWindow(window, counter);
    EnumChildWindows(window, CountWindow, counter);
    return TRUE;
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

long long CountHeapBytes() {
    std::vector<HANDLE> heaps(64);
    heaps.resize(std::min<DWORD>(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()), 64));
    return std::accumulate(heaps.begin(), heaps.end(), 0LL,
                           [](long long bytes, HANDLE heap) { return bytes + BytesInUse(heap); });
}

}  // namespace

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

int CountWindows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&count));
    for (HWND window = FindWindowExA(HWND_MESSAGE, nullptr, nullptr, nullptr); window;
         window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) {
        count += GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
    }
    return count;
}

long long KeptByEach(const std::function<void()>& use, int rounds) {
    if (const char* cycles = std::getenv("EMENDO_CYCLES")) {
        rounds = std::max(std::atoi(cycles), 1);
    }
    for (int warmUp = 0; warmUp < 5; ++warmUp) {
        use();
    }
    const int gdiObjects = CountGdiObjects();
    const int windows = CountWindows();
    const long long bytes = CountHeapBytes();
    for (int round = 0; round < rounds; ++round) {
        use();
    }
    const long long kept = CountHeapBytes() - bytes;
    EXPECT_EQ(CountGdiObjects(), gdiObjects);
    EXPECT_EQ(CountWindows(), windows);
    return kept / rounds;
}
