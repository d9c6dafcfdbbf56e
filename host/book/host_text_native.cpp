#include "book/host_text.h"

std::string AnsiFromUtf8(std::string_view text) {
    return std::string(text);
}

std::string Utf8FromAnsi(std::string_view text) {
    return std::string(text);
}
