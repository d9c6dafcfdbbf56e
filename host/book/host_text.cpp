#include "book/host_text.h"

#include <cstdio>
#include <fstream>
#include <sstream>

std::string AnsiCut(std::string_view utf8, std::size_t limit) {
    std::string ansi = AnsiFromUtf8(utf8);
    while (ansi.size() > limit) {
        while (!utf8.empty() && (static_cast<unsigned char>(utf8.back()) & 0xC0) == 0x80) {
            utf8.remove_suffix(1);
        }
        utf8.remove_suffix(utf8.empty() ? 0 : 1);  // the lead byte of the last character, or the character
        ansi = AnsiFromUtf8(utf8);
    }
    return ansi;
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return file ? std::optional(content.str()) : std::nullopt;
}

std::string WriteWholeFile(const std::string& path, std::string_view content) {
    const std::string draft = path + ".new";  // in the same folder, so that taking its place is one step
    std::ofstream file(draft, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    const bool written = static_cast<bool>(file);
    if (written && PutInPlace(draft, path)) {
        return {};
    }
    std::remove(draft.c_str());
    return written ? "cannot be replaced" : "cannot be written";
}
