#include "framework/window_helpers.h"

#include <array>
#include <cstring>

std::string TextOf(HWND window) {
    const int length = window ? GetWindowTextLengthA(window) : 0;
    if (length <= 0) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), length + 1)));
    return text;
}

bool SetTextIfChanged(HWND window, const std::string& text) {
    if (!window || TextOf(window) == text) {
        return false;
    }
    return SetWindowTextA(window, text.c_str()) != FALSE;
}

bool HasClass(HWND window, const char* className) {
    std::array<char, 64> name{};
    return GetClassNameA(window, name.data(), static_cast<int>(name.size())) > 0 &&
           _stricmp(name.data(), className) == 0;
}

void MoveCaretToEnd(HWND edit) {
    const int length = GetWindowTextLengthA(edit);
    SendMessageA(edit, EM_SETSEL, static_cast<WPARAM>(length), length);
}
