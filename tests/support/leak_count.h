#pragma once

#include <functional>

// What this process holds of the system at one moment.
struct ResourceCount {
    int gdiObjects = 0;
    int windows = 0;          // top-level and child windows of this thread, message-only ones too
    long long heapBytes = 0;  // in use on the process heap and the C runtime's

    bool operator==(const ResourceCount& other) const {
        return gdiObjects == other.gdiObjects && windows == other.windows;
    }
};

ResourceCount CountResources();

// Repeats a use and expects that neither windows nor GDI objects stay behind. Returns the bytes of heap that
// each round kept. The environment's EMENDO_CYCLES sets another number of rounds.
long long KeptByEach(const std::function<void()>& use, int rounds = 100);
