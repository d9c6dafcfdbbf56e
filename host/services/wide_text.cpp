#include "services/wide_text.h"

#include "book/code_page.h"

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
    return FromCodePage(utf8, CP_UTF8);
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
