#pragma once

#include <string>
#include <string_view>

#include <windows.h>

// Texts of windows in UTF-8, whatever the system's code page is.
std::string Utf8(std::wstring_view wide);

std::string TextOf(HWND window);
std::string ClassOf(HWND window);
// Empty for an index that does not exist.
std::string ListTextOf(HWND comboBox, int index);
// Of a list view.
std::string CellText(HWND list, int row, int column);

// A text of the module's string table in one language, as it looks after the way through the code page that
// the module takes; empty when the table does not have it.
std::string ModuleString(HMODULE module, unsigned id, WORD language);
