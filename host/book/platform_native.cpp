#include "book/host_text.h"

#include <cstdio>

std::string AnsiFromUtf8(std::string_view text) {
    return std::string(text);
}

std::string Utf8FromAnsi(std::string_view text) {
    return std::string(text);
}

bool PutInPlace(const std::string& draft, const std::string& file) {
    return std::rename(draft.c_str(), file.c_str()) == 0;
}
