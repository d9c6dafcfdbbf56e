#pragma once

// How a type-ahead combo box of a dialog is set up.
struct ComboSettings {
    int id;
    bool showFullText;
    bool wholeItemIsCode;  // no separator: words and contracts may hold blanks
    bool noContextMenu;
    bool listOnly;
    int minVisibleItems;  // 0: as it is
};
