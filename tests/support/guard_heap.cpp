#include "support/guard_heap.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kLargestArena = 768u << 20;
constexpr std::size_t kSmallestArena = 96u << 20;
constexpr int kFresh = 0xCD;
constexpr char kSlack = '\xFD';

struct Block {
    std::uint32_t pages;  // with the missing one behind it; 0: no block begins on this page
    std::uint32_t size;
    HMODULE image;
};

// The head of the arena. A Block for each page of it follows.
struct Arena : GuardHeap {
    CRITICAL_SECTION lock;
    char* base;
    std::size_t pages;
    std::size_t
        next;  // where the search for free pages goes on: round the arena, so that freed ones rest long

    Block& At(std::size_t page) { return reinterpret_cast<Block*>(this + 1)[page]; }
    char* Page(std::size_t page) const { return base + page * kPage; }
    bool Holds(const void* address) const { return address >= base && address < base + pages * kPage; }
};

class Locked {
public:
    explicit Locked(Arena& arena) : m_arena(arena) { EnterCriticalSection(&arena.lock); }
    ~Locked() { LeaveCriticalSection(&m_arena.lock); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;

private:
    Arena& m_arena;
};

[[noreturn]] void End(const char* reason, const void* address) {
    char line[120];
    const int length = std::snprintf(line, sizeof(line), "guard heap: %s: %p\n", reason, address);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line, static_cast<DWORD>(length), &written, nullptr);
    OutputDebugStringA(line);
    __builtin_trap();
}

std::size_t PagesFor(std::size_t bytes) {
    return (bytes + kPage - 1) / kPage;
}

Arena* MakeArena() {
    for (std::size_t size = kLargestArena; size >= kSmallestArena; size /= 2) {
        auto* base = static_cast<char*>(VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS));
        if (!base) {
            continue;
        }
        const std::size_t pages = size / kPage;
        const std::size_t head = PagesFor(sizeof(Arena) + pages * sizeof(Block));
        auto* arena = static_cast<Arena*>(VirtualAlloc(base, head * kPage, MEM_COMMIT, PAGE_READWRITE));
        if (!arena) {
            break;
        }
        InitializeCriticalSection(&arena->lock);
        arena->base = base;
        arena->pages = pages;
        arena->next = head;
        arena->At(0).pages = static_cast<std::uint32_t>(head);
        char text[24];
        std::snprintf(text, sizeof(text), "%lx:%x", GetCurrentProcessId(),
                      reinterpret_cast<std::uintptr_t>(base));
        SetEnvironmentVariableA(kGuardHeapVariable, text);
        return arena;
    }
    End("no address space for it", nullptr);
}

// The first call is made while the image is being loaded, when there is one thread that could make it.
Arena& TheArena() {
    static Arena* arena = nullptr;
    if (!arena) {
        GuardHeap* others = FindGuardHeap();
        arena = others ? static_cast<Arena*>(others) : MakeArena();
    }
    return *arena;
}

// The first of so many free pages, searched once round the arena; 0 when there are none.
std::size_t FindPages(Arena& arena, std::size_t wanted) {
    std::size_t free = 0;
    std::size_t at = arena.next;
    for (std::size_t seen = 0; seen < arena.pages + wanted;) {
        if (at == arena.pages) {
            at = free = 0;
        }
        const std::size_t taken = arena.At(at).pages;
        const std::size_t step = taken ? taken : 1;
        free = taken ? 0 : free + 1;
        at += step;
        seen += step;
        if (free == wanted) {
            arena.next = at;
            return at - wanted;
        }
    }
    return 0;
}

bool IsRefused(Arena& arena, HMODULE image) {
    if (arena.image && arena.image != image) {
        return false;
    }
    ++arena.allocations;
    const bool refused = arena.allocations >= arena.refuseFrom && arena.allocations <= arena.refuseTo;
    arena.refused += refused;
    return refused;
}

void CountBlock(Arena& arena, HMODULE image, int change) {
    if (!arena.image || arena.image == image) {
        arena.blocks += static_cast<std::uint32_t>(change);
    }
}

char* Begin(const Arena& arena, std::size_t page, const Block& block) {
    const std::size_t toAlignment = (block.size + 3) & ~std::size_t{3};
    return arena.Page(page + block.pages - 1) - toAlignment;
}

void* Allocate(std::size_t size) {
    Arena& arena = TheArena();
    const Locked locked(arena);
    auto* const image = reinterpret_cast<HMODULE>(&__ImageBase);
    const Block block{static_cast<std::uint32_t>(PagesFor(size ? size : 1) + 1),
                      static_cast<std::uint32_t>(size ? size : 1), image};
    const std::size_t page =
        size < kLargestArena && !IsRefused(arena, image) ? FindPages(arena, block.pages) : 0;
    if (!page || !VirtualAlloc(arena.Page(page), (block.pages - 1) * kPage, MEM_COMMIT, PAGE_READWRITE)) {
        errno = ENOMEM;
        return nullptr;
    }
    arena.At(page) = block;
    CountBlock(arena, image, 1);
    char* begin = Begin(arena, page, block);
    std::memset(begin, kFresh, block.size);
    for (char* slack = begin + block.size; slack < arena.Page(page + block.pages - 1); ++slack) {
        *slack = kSlack;
    }
    return begin;
}

// The block that begins at an address of the arena.
Block& BlockAt(Arena& arena, void* address) {
    const std::size_t page = static_cast<std::size_t>(static_cast<char*>(address) - arena.base) / kPage;
    Block& block = arena.At(page);
    if (!block.pages || Begin(arena, page, block) != address) {
        End("no block begins here", address);
    }
    return block;
}

void Free(Arena& arena, void* address) {
    const Locked locked(arena);
    Block& block = BlockAt(arena, address);
    const std::size_t page = static_cast<std::size_t>(&block - &arena.At(0));
    const char* const end = arena.Page(page + block.pages - 1);
    for (const char* slack = static_cast<char*>(address) + block.size; slack < end; ++slack) {
        if (*slack != kSlack) {
            End("written behind the block", address);
        }
    }
    VirtualFree(arena.Page(page), (block.pages - 1) * kPage, MEM_DECOMMIT);
    CountBlock(arena, block.image, -1);
    block = {};
}

// The C library makes blocks of its own (a copied text, say), which come back here too.
template <typename Function>
Function OfLibrary(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name)));
}

}  // namespace

// In the place of the C library's: new and delete of the C++ library stand on these.
extern "C" {

void* malloc(std::size_t size) {
    return Allocate(size);
}

void* calloc(std::size_t count, std::size_t size) {
    std::size_t bytes = 0;
    void* block = __builtin_mul_overflow(count, size, &bytes) ? nullptr : Allocate(bytes);
    return block ? std::memset(block, 0, bytes) : nullptr;
}

void free(void* address) {
    Arena& arena = TheArena();
    if (arena.Holds(address)) {
        Free(arena, address);
    } else if (address) {
        OfLibrary<void(__cdecl*)(void*)>("free")(address);
    }
}

void* realloc(void* address, std::size_t size) {
    Arena& arena = TheArena();
    if (address && !arena.Holds(address)) {
        return OfLibrary<void*(__cdecl*)(void*, std::size_t)>("realloc")(address, size);
    }
    if (address && !size) {
        Free(arena, address);
        return nullptr;
    }
    void* const moved = Allocate(size);
    if (moved && address) {
        const std::size_t known = BlockAt(arena, address).size;
        std::memcpy(moved, address, known < size ? known : size);
        Free(arena, address);
    }
    return moved;
}
}
