#pragma once

#include "app/host_app.h"

#include <optional>
#include <string>
#include <string_view>

#include <commctrl.h>

struct KeyPress {
    unsigned virtualKey;
    unsigned modifier;  // a virtual key that is held down; 0 for none
};

// An operator at keyboard and mouse: every input is a message in the terminal's queue, which is served until
// it is empty. Functions that can be refused return the reason, empty when it was done.
class Operator {
public:
    // `pause`: milliseconds between two characters and before a list is left, for people who watch.
    Operator(HostApp& host, unsigned pause) : m_host(host), m_pause(pause) {}

    // The virtual key of "Enter", "F4", "Up" ...
    static std::optional<unsigned> KeyNamed(std::string_view name);
    // Likewise "Shift+Tab", "Ctrl+A", "Alt+Down".
    static std::optional<KeyPress> KeyPressNamed(std::string_view name);

    void Focus(HWND control);
    // Into the window that has the focus.
    void Key(KeyPress key);
    void TypeCharacters(const std::string& text);
    // Replaces the control's text; an empty one deletes it.
    void Type(HWND control, const std::string& text);
    void Click(HWND window);
    void ClickAt(HWND window, POINT point);
    // Picks the line that is the text or begins with it and a blank, or else the first that begins with it,
    // from the open list.
    std::string Choose(HWND comboBox, const std::string& text);
    // Clicks the node that begins with the text among the children of the one clicked before; `parent` is
    // that one, null for the first level, and becomes the clicked one.
    std::string ClickNode(HWND tree, HTREEITEM& parent, const std::string& text);
    // Clicks the cell with this text.
    std::string ClickCell(HWND list, const std::string& text);

    void Rest(unsigned milliseconds);

private:
    void PointAt(HWND window, POINT point);

    HostApp& m_host;
    unsigned m_pause;
};

// Why an operator could not use the control; empty when nothing is in the way.
std::string UnusableBecause(HWND control);
