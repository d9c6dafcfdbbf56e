// What makes an exception of the module safe in a process and at a moment that are not the module's: the
// run-time library trusts that it is alone and that it has memory.

#include "frame/own_exceptions.h"

#include <windows.h>

#include <cxxabi.h>
#include <cstddef>
#include <exception>

namespace {

// The start-up code looks for libgcc_s_dw2-1.dll with GetModuleHandleA and, when another plug-in has brought
// it, registers the module's unwind tables there. What throws here is the unwinder inside the module, which
// would then know none of its own frames and end the process at the first exception, caught or not. The
// start-up code calls through the import's pointer, so a pointer of that name takes its place: only that one
// library is never found.
HMODULE WINAPI FindModule(LPCSTR name) {
    if (name && lstrcmpiA(name, "libgcc_s_dw2-1.dll") == 0) {
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    }
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, name, &module);
    return module;
}

// An exception without memory takes its object from a reserve behind a lock, and the lock takes memory when
// it is first used: out of memory, the failure to lock is an exception, which takes its object from the
// reserve, and so on until the stack ends. An object that is too large for memory and reserve alike gets no
// further than the lock.
void* g_beforeTooLarge[5];

[[gnu::noinline]] void AskForTooLargeException() {
    constexpr std::size_t nearlyAllAddresses = 0xFFFF0000;
    abi::__cxa_allocate_exception(nearlyAllAddresses);
}

void PrepareReserve() {
    // There is no answer but to terminate. Nothing between here and there has anything to undo.
    const auto formerly = std::set_terminate([] { __builtin_longjmp(g_beforeTooLarge, 1); });
    if (__builtin_setjmp(g_beforeTooLarge) == 0) {
        AskForTooLargeException();
    }
    std::set_terminate(formerly);
}

// The lock of the objects that are made at their first use takes memory as well, and ends the process when
// there is none.
void PrepareFirstUses() {
    [[maybe_unused]] static const DWORD madeAtFirstUse = GetCurrentThreadId();
}

}  // namespace

extern "C" {
using GetModuleHandleFunction = HMODULE(WINAPI*)(LPCSTR);
extern const GetModuleHandleFunction g_getModuleHandle __asm__("__imp__GetModuleHandleA@4");
const GetModuleHandleFunction g_getModuleHandle = &FindModule;
}

void PrepareExceptions() noexcept {
    static bool prepared = false;
    if (!prepared) {
        prepared = true;
        PrepareReserve();
        PrepareFirstUses();
    }
    try {
        throw 0;  // the thread's list of exceptions, the order of the unwind tables and their lock
    } catch (int) {
    }
}
