#pragma once

#include "app/host_app.h"

// The terminal's main window: a menu that opens every dialog in every mode on the first order or fill of the
// book that suits it.
class DeskWindow {
public:
    // Throws std::runtime_error when the window cannot be made.
    explicit DeskWindow(HostApp& host);
    ~DeskWindow();
    DeskWindow(const DeskWindow&) = delete;
    DeskWindow& operator=(const DeskWindow&) = delete;

    HWND Window() const { return m_window; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(unsigned id);

    HostApp& m_host;
    HWND m_window = nullptr;
};
