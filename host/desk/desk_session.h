#pragma once

#include "desk/desk_window.h"

#include <functional>
#include <string>

struct DeskOptions {
    std::string modulePath;
    std::string bookPath;      // empty: the book is not saved
    std::string settingsPath;  // empty: the layout is not kept
    WORD language = 0;         // 0: the module chooses
};

// A whole session at the desk: window, module, message loop; at the end the module is ended, the layout kept
// and the book saved, which the user is asked about when it fails. `ready` is called when the desk is shown.
// Throws when the desk cannot start (std::runtime_error) and when the user gave up saving (BookFileError).
void RunDesk(HostApp& host, const DeskOptions& options,
             const std::function<void(DeskWindow& desk)>& ready = {});

// Where the layout is kept: Emendo\desk.json in the user's application data. Empty when there is no such
// place.
std::string DeskSettingsPath();
