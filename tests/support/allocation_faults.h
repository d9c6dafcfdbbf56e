#pragma once

#include <windows.h>

#include <limits>

// Counts and refuses the allocations of a loaded module, the built one or the program itself: its imports of
// malloc, calloc and realloc, where operator new and the compiler's run-time library end as well. One at a
// time; what the module gets is put back with the object.
class AllocationFaults {
public:
    explicit AllocationFaults(HMODULE module);
    ~AllocationFaults();
    AllocationFaults(const AllocationFaults&) = delete;
    AllocationFaults& operator=(const AllocationFaults&) = delete;

    static constexpr long kAllFurther = std::numeric_limits<long>::max();

    // From now on `from` more allocations succeed, and the `count` behind them are refused.
    void Refuse(long from, long count = kAllFurther);
    void RefuseNone();
    // Allocations asked for, and refused, since the last call of Refuse or RefuseNone.
    long Asked() const;
    long Refused() const;

private:
    HMODULE m_module;
};
