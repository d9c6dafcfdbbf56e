#include "scenario/picture.h"

#include <cstdint>
#include <fstream>
#include <vector>

namespace {

struct Extent {
    HWND window;
    RECT place;
};

bool BelongsTo(HWND window, HWND owner) {
    for (; window; window = GetWindow(window, GW_OWNER)) {
        if (window == owner) {
            return true;
        }
    }
    return false;
}

BOOL CALLBACK Extend(HWND window, LPARAM data) {
    auto* extent = reinterpret_cast<Extent*>(data);
    RECT place;
    if (IsWindowVisible(window) && BelongsTo(window, extent->window) && GetWindowRect(window, &place)) {
        UnionRect(&extent->place, &extent->place, &place);
    }
    return TRUE;
}

RECT PlaceOf(HWND window) {
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (!window) {
        return screen;
    }
    Extent extent{window, {}};
    EnumThreadWindows(GetCurrentThreadId(), Extend, reinterpret_cast<LPARAM>(&extent));
    RECT place;
    IntersectRect(&place, &extent.place, &screen);
    return place;
}

class ScreenCopy {
public:
    explicit ScreenCopy(const RECT& place)
        : m_screen(GetDC(nullptr)),
          m_memory(CreateCompatibleDC(m_screen)),
          m_bitmap(CreateCompatibleBitmap(m_screen, place.right - place.left, place.bottom - place.top)) {
        const HGDIOBJ former = SelectObject(m_memory, m_bitmap);
        BitBlt(m_memory, 0, 0, place.right - place.left, place.bottom - place.top, m_screen, place.left,
               place.top, SRCCOPY);
        SelectObject(m_memory, former);
    }
    ~ScreenCopy() {
        DeleteObject(m_bitmap);
        DeleteDC(m_memory);
        ReleaseDC(nullptr, m_screen);
    }
    ScreenCopy(const ScreenCopy&) = delete;
    ScreenCopy& operator=(const ScreenCopy&) = delete;

    bool Read(BITMAPINFOHEADER& header, std::vector<char>& pixels) const {
        return GetDIBits(m_memory, m_bitmap, 0, static_cast<UINT>(header.biHeight), pixels.data(),
                         reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS) == header.biHeight;
    }

private:
    HDC m_screen;
    HDC m_memory;
    HBITMAP m_bitmap;
};

}  // namespace

bool SavePicture(HWND window, const std::string& path) {
    const RECT place = PlaceOf(window);
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = place.right - place.left;
    header.biHeight = place.bottom - place.top;
    header.biPlanes = 1;
    header.biBitCount = 24;
    const LONG rowBytes = (header.biWidth * 3 + 3) / 4 * 4;
    std::vector<char> pixels(static_cast<std::size_t>(rowBytes * header.biHeight));
    if (pixels.empty() || !ScreenCopy(place).Read(header, pixels)) {
        return false;
    }
    BITMAPFILEHEADER fileHeader{};
    fileHeader.bfType = 0x4D42;  // "BM"
    fileHeader.bfOffBits = sizeof fileHeader + sizeof header;
    fileHeader.bfSize = fileHeader.bfOffBits + static_cast<DWORD>(pixels.size());
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&fileHeader), sizeof fileHeader);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(pixels.data(), static_cast<std::streamsize>(pixels.size()));
    return static_cast<bool>(file.flush());
}
