#pragma once

#include <string>

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

// Writes the pixels of a shown window, or of the screen for null, as a 24-bit BMP file.
bool SaveScreenshot(struct HWND__* window, const std::string& path);
