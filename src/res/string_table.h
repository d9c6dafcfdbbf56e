#pragma once

#include <string>

// The text of string table entry `id` (IDS_...) in the language of the module, in the system's ANSI code page
// (UTF-8 in a native build). Empty when there is no such entry; cut at 4095 bytes. Returns `out`.
std::string& LoadResString(std::string& out, unsigned id);

// The same as a value.
inline std::string ResString(unsigned id) {
    std::string text;
    LoadResString(text, id);
    return text;
}
