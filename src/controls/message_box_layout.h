#pragma once

#include <windows.h>

#include <string>
#include <vector>

// What the layout of a message box depends on, in pixels.
struct MessageBoxMetrics {
    SIZE baseUnits;  // of dialogs: 4 units across and 8 down are this many pixels
    int screenWidth;
    bool atLeastVersion6;  // of Windows
};

MessageBoxMetrics SystemMessageBoxMetrics();

// The greatest width that the message may take before it is wrapped.
int MessageWidthLimit(const MessageBoxMetrics& metrics);

// Pixels of the client area. The buttons stand centred in a row of their own below the message area.
struct MessageBoxLayout {
    SIZE client;
    RECT message;
    int messageAreaHeight;
    std::vector<RECT> buttons;
};

// `captionWidths`: the pixels of each button's caption.
MessageBoxLayout LayOutMessageBox(const MessageBoxMetrics& metrics, SIZE measuredMessage,
                                  const std::vector<int>& captionWidths);
