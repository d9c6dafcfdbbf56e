#include "book/code_page.h"
#include "book/host_text.h"

#include <algorithm>

#include <windows.h>

std::wstring FromCodePage(std::string_view text, unsigned codePage) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string ToCodePage(std::wstring_view wide, unsigned codePage) {
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

namespace {

std::string Convert(std::string_view text, unsigned from, unsigned to) {
    // Most texts are plain, and those are the same in every code page.
    const bool plain = std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; });
    return plain ? std::string(text) : ToCodePage(FromCodePage(text, from), to);
}

}  // namespace

std::string AnsiFromUtf8(std::string_view text) {
    return Convert(text, CP_UTF8, CP_ACP);
}

std::string Utf8FromAnsi(std::string_view text) {
    return Convert(text, CP_ACP, CP_UTF8);
}

bool PutInPlace(const std::string& draft, const std::string& file) {
    return MoveFileExA(draft.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) !=
           FALSE;
}
