#pragma once

#include <exception>
#include <type_traits>
#include <utility>

// What the guard was around: an operation of an interface, an export, or a window message with its word
// parameter.
struct GuardedPlace {
    GuardedPlace(const char* guardedOperation, unsigned messageId = 0, unsigned wordParameter = 0)
        : operation(guardedOperation), message(messageId), word(wordParameter) {}
    const char* operation;
    unsigned message;  // 0: no message
    unsigned word;
};

// Told of every exception that was stopped at the module's edge. `what` is null for one that is not a
// std::exception.
using SwallowedExceptionHook = void (*)(const GuardedPlace& place, const char* what);

// Null: one line for the debugger.
inline SwallowedExceptionHook g_swallowedExceptionHook = nullptr;

// Allocates nothing: the exception may be that there is no memory.
void ReportSwallowedException(const GuardedPlace& place, const char* what) noexcept;

// Runs `body` so that no exception leaves it: everything that the host or the system calls goes through here
// (exports, interface operations, window procedures, timers, hooks). The result of a body that threw is
// `fallback`.
template <typename Body, typename Result = std::invoke_result_t<Body&>>
Result Guarded(const GuardedPlace& place, Body&& body, Result fallback) noexcept {
    try {
        return body();
    } catch (const std::exception& error) {
        ReportSwallowedException(place, error.what());
    } catch (...) {
        ReportSwallowedException(place, nullptr);
    }
    return fallback;
}

template <typename Body>
requires std::is_void_v<std::invoke_result_t<Body&>>
void Guarded(const GuardedPlace& place, Body&& body) noexcept {
    const auto done = [&] {
        body();
        return true;
    };
    Guarded(place, done, false);
}
