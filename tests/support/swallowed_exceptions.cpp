#include "support/swallowed_exceptions.h"

#include "framework/guard.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <cstring>

namespace {

std::atomic<bool> g_expected = false;
std::atomic<int> g_stopped = 0;

void Stopped(const char* what, const char* where, unsigned message) {
    if (g_expected) {
        ++g_stopped;
    } else {
        ADD_FAILURE() << "an exception was stopped: " << what << " in " << where << ", message " << message;
    }
}

void OnLinked(const GuardedPlace& place, const char* what) {
    Stopped(what ? what : "not a std::exception", place.operation, place.message);
}

// A loaded module writes a line for the debugger; the system raises it before it looks for one.
LONG CALLBACK OnLoaded(EXCEPTION_POINTERS* raised) {
    constexpr DWORD kDebuggerLine = 0x40010006;
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    if (record.ExceptionCode == kDebuggerLine && record.NumberParameters >= 2) {
        const auto* line = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        constexpr char kStart[] = "Emendo: exception";
        if (std::strncmp(line, kStart, sizeof kStart - 1) == 0) {
            Stopped(line, "the loaded module", 0);
        }
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

const bool g_installed = [] {
    g_swallowedExceptionHook = &OnLinked;
    return AddVectoredExceptionHandler(1, &OnLoaded) != nullptr;
}();

}  // namespace

ExpectedExceptions::ExpectedExceptions() {
    g_stopped = 0;
    g_expected = true;
}

ExpectedExceptions::~ExpectedExceptions() {
    g_expected = false;
}

int ExpectedExceptions::Take() {
    return g_stopped.exchange(0);
}
