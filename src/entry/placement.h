#pragma once

// Where the dialogs and the contract popup stand on the screen. All values are screen pixels, y downwards.

struct PixelPoint {
    int x = 0;
    int y = 0;
    friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

struct PixelSize {
    int width = 0;
    int height = 0;
};

struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// A dialog stands in the middle of its host's window and somewhat above its half height.
PixelPoint PlaceOverHost(const PixelRect& host, const PixelSize& dialog);

// A popup hangs under its button and stays on the screen.
PixelPoint PlaceUnderButton(const PixelRect& button, const PixelSize& popup, const PixelSize& screen);
