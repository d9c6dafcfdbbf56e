#include "scenario/text_pattern.h"

#include <algorithm>

bool Matches(std::string_view text, std::string_view pattern) {
    if (pattern.empty()) {
        return text.empty();
    }
    if (pattern[0] != kAnything) {
        return !text.empty() && text[0] == pattern[0] && Matches(text.substr(1), pattern.substr(1));
    }
    for (std::size_t taken = 0; taken <= text.size(); ++taken) {
        if (Matches(text.substr(taken), pattern.substr(1))) {
            return true;
        }
    }
    return false;
}

std::string PatternFromWildcards(std::string_view text) {
    std::string pattern(text);
    std::replace(pattern.begin(), pattern.end(), '*', kAnything);
    return pattern;
}

std::string PatternFromFormat(std::string_view format) {
    std::string pattern;
    while (!format.empty()) {
        if (format[0] != '%') {
            pattern += format[0];
            format.remove_prefix(1);
            continue;
        }
        // A doubled sign is one; otherwise the placeholder ends with its letter.
        const std::size_t end = format.find_first_not_of("0123456789.-+ ", 1);
        const bool sign = end != std::string_view::npos && format[end] == '%';
        pattern += sign ? '%' : kAnything;
        format.remove_prefix(end == std::string_view::npos ? format.size() : end + 1);
    }
    return pattern;
}

std::string ShowPattern(std::string_view pattern) {
    std::string shown(pattern);
    std::replace(shown.begin(), shown.end(), kAnything, '*');
    return shown;
}
