#include "framework/guard.h"

#include <windows.h>

#include <cstdio>

void ReportSwallowedException(const GuardedPlace& place, const char* what) noexcept {
    if (g_swallowedExceptionHook) {
        g_swallowedExceptionHook(place, what);
        return;
    }
    char line[256];
    std::snprintf(line, sizeof(line), "Emendo: exception stopped at %.60s, message %#x, word %#x: %.100s\n",
                  place.operation, place.message, place.word, what ? what : "not a std::exception");
    OutputDebugStringA(line);
}
