#include "tools/screenshot.h"

#include <cstdio>
#include <vector>

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
