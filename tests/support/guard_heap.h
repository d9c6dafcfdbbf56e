#pragma once

#include <windows.h>

#include <cstdint>

// A heap that catches a byte too far or too late. Each block ends where a page ends, with nothing behind it,
// and the pages of a freed block are gone: touching either is an access violation at once, in the line that
// does it. A program or library that is linked with it takes all of its malloc and new from there; freeing
// what is no block, or after writing into the up to three bytes between a block and the end of its page, ends
// the process with a line on the error output. Fresh memory holds 0xCD.
//
// One heap serves every such image of a process, also one that is unloaded and loaded again.

// What a test may read and ask for; the heap's own state lies behind it.
struct GuardHeap {
    // The image whose allocations are counted and refused; null for those of all. The other numbers are of
    // it.
    HMODULE image;
    std::uint32_t allocations;  // since the test last set it to 0
    // The allocations by number, counting from 1, that are answered with no memory: malloc gives null, new
    // throws std::bad_alloc. Both 0: none; equal: this one alone; up to UINT32_MAX: all from the first.
    std::uint32_t refuseFrom;
    std::uint32_t refuseTo;
    std::uint32_t refused;
    std::uint32_t blocks;  // now in use; of the image as far as it was set when they were made

    // Begins to count the image's allocations, none refused.
    void Watch(HMODULE counted) {
        image = counted;
        allocations = refuseFrom = refuseTo = refused = blocks = 0;
    }
    void Refuse(std::uint32_t from, std::uint32_t to) {
        allocations = refused = 0;
        refuseFrom = from;
        refuseTo = to;
    }
};

// The environment variable that tells where the heap of a process is: its process id and the address,
// "1a4:10000".
inline constexpr const char* kGuardHeapVariable = "EMENDO_GUARD_HEAP";

// The heap of this process; null when no image has one.
inline GuardHeap* FindGuardHeap() {
    char text[24];
    const DWORD length = GetEnvironmentVariableA(kGuardHeapVariable, text, sizeof(text));
    if (length == 0 || length >= sizeof(text)) {
        return nullptr;
    }
    std::uintptr_t numbers[2] = {};
    int number = 0;
    for (const char* at = text; *at && number < 2; ++at) {
        if (*at == ':') {
            ++number;
        } else {
            numbers[number] =
                numbers[number] * 16 + static_cast<unsigned>(*at <= '9' ? *at - '0' : *at - 'a' + 10);
        }
    }
    // A process that this one was started by hands its variables down.
    return numbers[0] == GetCurrentProcessId() ? reinterpret_cast<GuardHeap*>(numbers[1]) : nullptr;
}
