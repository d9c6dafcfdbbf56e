#pragma once

#include <type_traits>
#include <utility>

// Tells a debugger that an exception was stopped at the module's edge.
void ReportSwallowedException() noexcept;

// Runs `body` so that no exception leaves it: everything that the host or the system calls goes through here
// (exports, interface operations, window procedures, timers, hooks). The result of a body that threw is
// `fallback`.
template <typename Body, typename Result = std::invoke_result_t<Body&>>
Result Guarded(Body&& body, Result fallback) noexcept {
    try {
        return body();
    } catch (...) {
        ReportSwallowedException();
        return fallback;
    }
}

template <typename Body>
requires std::is_void_v<std::invoke_result_t<Body&>>
void Guarded(Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        ReportSwallowedException();
    }
}
