#include "book/host_text.h"

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
