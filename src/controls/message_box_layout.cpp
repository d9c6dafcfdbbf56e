#include "controls/message_box_layout.h"

#include <algorithm>

namespace {

constexpr int kRowMargin = 10;
constexpr int kLeastMessageArea = 70;

int Across(const MessageBoxMetrics& metrics, int units) {
    return MulDiv(units, metrics.baseUnits.cx, 4);
}

int Down(const MessageBoxMetrics& metrics, int units) {
    return MulDiv(units, metrics.baseUnits.cy, 8);
}

RECT MessageRect(SIZE measured, bool version6) {
    const LONG topMargin = version6 ? 32 : 16;
    const LONG bottomMargin = version6 ? 56 : 24;
    return {16, topMargin, measured.cx + 12 + 16, measured.cy + 5 + bottomMargin};
}

}  // namespace

MessageBoxMetrics SystemMessageBoxMetrics() {
    const LONG units = GetDialogBaseUnits();
    return {{LOWORD(units), HIWORD(units)}, GetSystemMetrics(SM_CXSCREEN), LOBYTE(GetVersion()) >= 6};
}

int MessageWidthLimit(const MessageBoxMetrics& metrics) {
    return metrics.screenWidth / 2 + (metrics.atLeastVersion6 ? -10 : 80);
}

MessageBoxLayout LayOutMessageBox(const MessageBoxMetrics& metrics, SIZE measuredMessage,
                                  const std::vector<int>& captionWidths) {
    const bool version6 = metrics.atLeastVersion6;
    const int leastButtonWidth = Across(metrics, version6 ? 44 : 38);
    const int buttonHeight = Down(metrics, version6 ? 15 : 14);
    const int gap = Across(metrics, 13);

    MessageBoxLayout layout{};
    layout.message = MessageRect(measuredMessage, version6);
    const LONG messageHeight = layout.message.bottom - layout.message.top;
    layout.client.cx = layout.message.right - layout.message.left + 16 + (version6 ? 16 : 0);
    layout.messageAreaHeight = std::max<LONG>({messageHeight + 16, kLeastMessageArea, layout.message.bottom});

    LONG rowWidth = -gap;
    for (const int captionWidth : captionWidths) {
        const int width = std::max(leastButtonWidth, captionWidth + 20);
        layout.buttons.push_back({rowWidth + gap, 0, rowWidth + gap + width, buttonHeight});
        rowWidth += gap + width;
    }
    layout.client.cx = std::max(layout.client.cx, rowWidth + 2 * kRowMargin);
    layout.client.cy = layout.messageAreaHeight + buttonHeight + 2 * kRowMargin;
    for (RECT& button : layout.buttons) {
        OffsetRect(&button, (layout.client.cx - rowWidth) / 2, layout.messageAreaHeight + kRowMargin);
    }
    return layout;
}
