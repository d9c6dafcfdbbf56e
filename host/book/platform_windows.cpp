#include "book/host_text.h"

#include <algorithm>

#include <windows.h>

namespace {

std::string Convert(std::string_view text, UINT from, UINT to) {
    // Most texts are plain, and those are the same in every code page.
    if (std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; })) {
        return std::string(text);
    }
    const int length = static_cast<int>(text.size());
    std::wstring wide(MultiByteToWideChar(from, 0, text.data(), length, nullptr, 0), L'\0');
    MultiByteToWideChar(from, 0, text.data(), length, wide.data(), static_cast<int>(wide.size()));
    const int wideLength = static_cast<int>(wide.size());
    std::string result(WideCharToMultiByte(to, 0, wide.data(), wideLength, nullptr, 0, nullptr, nullptr),
                       '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideLength, result.data(), static_cast<int>(result.size()),
                        nullptr, nullptr);
    return result;
}

}  // namespace

std::string AnsiFromUtf8(std::string_view text) {
    return Convert(text, CP_UTF8, CP_ACP);
}

std::string Utf8FromAnsi(std::string_view text) {
    return Convert(text, CP_ACP, CP_UTF8);
}

bool ReplaceFileWith(const std::string& draft, const std::string& file) {
    return MoveFileExA(draft.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) !=
           FALSE;
}
