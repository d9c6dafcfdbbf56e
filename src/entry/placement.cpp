#include "entry/placement.h"

namespace {

// The smaller part of the golden section, at which a dialog's middle stands.
constexpr double kUpperPart = 0.382;

// The popup's list begins about there, so that it opens with the list under the button.
constexpr int kPopupLeftOfButton = 213;
constexpr int kPopupAboveScreenEnd = 100;

}  // namespace

PixelPoint PlaceOverHost(const PixelRect& host, const PixelSize& dialog) {
    const int hostWidth = host.right - host.left;
    const int hostHeight = host.bottom - host.top;
    const int left = host.left + (hostWidth - dialog.width) / 2;
    int top = host.top + static_cast<int>(hostHeight * kUpperPart - dialog.height / 2);
    if (top <= host.top) {
        top = host.top + static_cast<int>((hostHeight - dialog.height) * kUpperPart);
    }
    return {left, top};
}

PixelPoint PlaceUnderButton(const PixelRect& button, const PixelSize& popup, const PixelSize& screen) {
    int left = button.left - kPopupLeftOfButton;
    int top = button.bottom + 1;
    if (top + popup.height > screen.height) {
        top = screen.height - kPopupAboveScreenEnd - popup.height;
    }
    if (left + popup.width > screen.width) {
        left = button.right - popup.width;
    }
    if (button.left > 0 && left < 0) {
        left = 0;
    }
    return {left, top};
}
