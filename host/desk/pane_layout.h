#pragma once

#include <array>
#include <string>
#include <vector>

struct PaneBox {
    int left, top, right, bottom;
};
constexpr int kPlainDpi = 96;
// As large to the eye on a screen of another resolution, at the same place.
PaneBox AtDpi(const PaneBox& box, int from, int to);

// The borders between the desk's five panes: orders on top, fills beside positions in the middle, accounts
// beside the journal at the bottom.
enum Divider { kBelowOrders, kBelowFills, kBesideFills, kBesideAccounts, kDividerCount };
constexpr bool IsUpright(int divider) {
    return divider >= kBesideFills;
}

// Where the borders are, as shares of the height or width.
struct PaneLayout {
    std::array<double, kDividerCount> at{0.4, 0.7, 0.58, 0.36};

    // Moves one border, never so far that a pane vanishes.
    void Move(int divider, double share);
    std::array<PaneBox, 5> Panes(int width, int height, int gap) const;
    // The strips that can be dragged.
    std::array<PaneBox, kDividerCount> Dividers(int width, int height, int gap) const;
};

// What the desk keeps between runs. Widths are pixels at 96 dpi.
struct DeskSettings {
    struct List {
        std::vector<int> widths;
        int sortColumn = -1;
        bool descending = false;
    };
    PaneLayout panes;
    bool placed = false;  // window and maximized hold something
    PaneBox window{};     // screen pixels
    bool maximized = false;
    int dpi = kPlainDpi;  // of the screen that `window` was on
    std::array<List, 5> lists;
};

// The default settings for a file that is missing or unreadable: a lost layout is no reason not to start.
DeskSettings ReadDeskSettings(const std::string& path);
// False when the file cannot be written.
bool WriteDeskSettings(const DeskSettings& settings, const std::string& path);
