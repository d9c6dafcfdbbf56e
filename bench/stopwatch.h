#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

// Keeps a result, and with it the work that made it, from being optimised away.
template <typename Value>
inline void Keep(const Value& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

// Nanoseconds of one call: the best of many short batches, which other work on the machine disturbs least.
template <typename Work>
double NanosecondsOf(Work work, int callsPerBatch = 2000, int batches = 60) {
    using Clock = std::chrono::steady_clock;
    double best = 1e18;
    for (int batch = 0; batch < batches; ++batch) {
        const auto start = Clock::now();
        for (int call = 0; call < callsPerBatch; ++call) {
            work();
        }
        const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
        best = std::min(best, elapsed.count() / callsPerBatch);
    }
    return best;
}

// One line of a report. A limit that is missed is counted; the program's exit code is the count.
class Report {
public:
    void Ratio(const char* what, double nanoseconds, double yardstick, double limit) {
        Line(what, nanoseconds, nanoseconds / yardstick, limit, "times the yardstick");
    }
    void Absolute(const char* what, double nanoseconds, double limitNanoseconds) {
        Line(what, nanoseconds, nanoseconds / 1000, limitNanoseconds / 1000, "us");
    }
    int Missed() const { return m_missed; }

private:
    void Line(const char* what, double nanoseconds, double value, double limit, const char* unit) {
        const bool kept = value <= limit;
        m_missed += !kept;
        std::printf("%-44s %9.1f ns %8.3f %s (limit %.2f)%s\n", what, nanoseconds, value, unit, limit,
                    kept ? "" : "  MISSED");
    }
    int m_missed = 0;
};
