#pragma once

#include <cstdarg>
#include <cstdio>

// Where lines for a debugger go. Null, as in a build without windows: nowhere.
inline void (*g_debugSink)(const char* line) = nullptr;

// Tells a debugger, printf-style, what a person at the terminal's support can act on: what is missing, what
// was refused, an answer that cannot be. Accounts, contracts and prices are never named. Allocates nothing.
[[gnu::format(printf, 1, 2)]] inline void TellDebugger(const char* format, ...) {
    if (!g_debugSink) {
        return;
    }
    char text[200];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    char line[220];
    std::snprintf(line, sizeof line, "Emendo: %s\n", text);
    g_debugSink(line);
}
