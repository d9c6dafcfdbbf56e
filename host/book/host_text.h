#pragma once

#include "trade/fixed_text.h"

#include <string>
#include <string_view>

// Texts are UTF-8 in the host's files and 8-bit text in the system's ANSI code page in host records. The
// native build has no code page: there both are UTF-8.
std::string AnsiFromUtf8(std::string_view text);
std::string Utf8FromAnsi(std::string_view text);

// The longest ANSI text of at most `limit` bytes that ends with a whole character of `utf8`.
std::string AnsiCut(std::string_view utf8, std::size_t limit);

// A name may be longer than its field: it is cut, but never inside a double-byte character.
template <std::size_t Width>
void SetName(FixedText<Width>& field, std::string_view utf8) {
    field.Set(AnsiCut(utf8, Width - 1));
}

// Puts `draft` in the place of `file` in one step; false when that cannot be done.
bool ReplaceFileWith(const std::string& draft, const std::string& file);
