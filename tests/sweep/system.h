#pragma once

#include "border/memory_refusal.h"
#include "sweep/faults.h"

// What a loaded module asks of the system: memory, and the functions that it imports to make something.
class SystemFaults {
public:
    explicit SystemFaults(HMODULE module);

    // From now on memory is refused as the fault says, when it is one of that.
    void Begin(const Fault* fault) {
        if (!fault || fault->site != Site::Memory) {
            m_memory.RefuseNone();
        } else if (fault->forEver) {
            m_memory.RefuseFrom(fault->number);
        } else {
            m_memory.RefuseOnly(fault->number);
        }
    }
    const MemoryRefusal& Memory() const { return m_memory; }

private:
    MemoryRefusal m_memory;
};
