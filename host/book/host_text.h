#pragma once

#include "trade/fixed_text.h"

#include <optional>
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

// None when the file cannot be read.
std::optional<std::string> ReadWholeFile(const std::string& path);
// Writes beside the file and puts the result in its place in one step, so that a reader finds the old content
// or the new one, whole. The reason when that cannot be done, which leaves the old content; otherwise empty.
std::string WriteWholeFile(const std::string& path, std::string_view content);
// The last of these steps; false when it cannot be done.
bool PutInPlace(const std::string& draft, const std::string& file);
