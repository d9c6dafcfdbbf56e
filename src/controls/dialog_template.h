#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

// A control of a dialog that is built in memory. Positions are dialog units, texts in the ANSI code page.
struct CXDialogItem {
    std::string className;
    DWORD style = 0;
    RECT place{};
    WORD id = 0;
    std::string text;
};

// Collects a dialog and its controls and writes them as a standard dialog template.
class CXDialogTemplate {
public:
    CXDialogTemplate(std::string title, DWORD style) : m_title(std::move(title)), m_style(style) {}

    void SetSize(SIZE dialogUnits) { m_size = dialogUnits; }
    void Add(CXDialogItem item) { m_items.push_back(std::move(item)); }
    // Usable as const DLGTEMPLATE* while the result lives.
    std::vector<std::byte> Build() const;

private:
    std::string m_title;
    DWORD m_style;
    SIZE m_size{};
    std::vector<CXDialogItem> m_items;
};
