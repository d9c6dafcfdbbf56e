#include "services/wide_text.h"

#include <windows.h>

namespace {

constexpr int kPlainDpi = 96;

int ScreenDpi() {
    static const int dpi = [] {
        HDC screen = GetDC(nullptr);
        const int found = GetDeviceCaps(screen, LOGPIXELSX);
        ReleaseDC(nullptr, screen);
        return found > 0 ? found : kPlainDpi;
    }();
    return dpi;
}

}  // namespace

std::wstring Wide(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length);
    return wide;
}

int Scaled(int pixels) {
    return MulDiv(pixels, ScreenDpi(), kPlainDpi);
}

int Unscaled(int pixels) {
    return MulDiv(pixels, kPlainDpi, ScreenDpi());
}

void ScaleByOurselves() {
    SetProcessDPIAware();
}
