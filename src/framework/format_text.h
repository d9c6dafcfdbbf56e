#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

// The module's one printf-style formatter. The format may come from the string table; its placeholders are
// the caller's responsibility. A format that cannot be carried out gives an empty text.
#if defined(__MINGW32__)
__attribute__((format(gnu_printf, 1, 2)))
#elif defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
inline std::string
FormatText(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0) {
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}
