#include "support/guard_heap.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {

// By its number: the compiler would refuse the address of a block that has ended.
bool CanRead(std::uintptr_t address) {
    MEMORY_BASIC_INFORMATION page;
    return VirtualQuery(reinterpret_cast<const void*>(address), &page, sizeof(page)) &&
           page.State == MEM_COMMIT;
}

TEST(GuardHeap, NothingStandsBehindABlockNorWhereItWas) {
    for (const std::size_t size : {1u, 4u, 31u, 4096u, 4100u, 100000u}) {
        auto text = std::make_unique<char[]>(size);
        const volatile auto begin = reinterpret_cast<std::uintptr_t>(text.get());
        EXPECT_TRUE(CanRead(begin + size - 1)) << size;
        EXPECT_FALSE(CanRead(begin + (size + 3) / 4 * 4)) << size;
        text.reset();
        EXPECT_FALSE(CanRead(begin)) << size;
    }
}

TEST(GuardHeap, KeepsWhatABlockHoldsWhenItGrows) {
    auto* text = static_cast<char*>(std::calloc(3, 2));
    EXPECT_EQ(std::memcmp(text, "\0\0\0\0\0", 6), 0);
    std::strcpy(text, "money");
    text = static_cast<char*>(std::realloc(text, 10000));
    EXPECT_STREQ(text, "money");
    text = static_cast<char*>(std::realloc(text, 4));
    EXPECT_EQ(std::memcmp(text, "mone", 4), 0);
    std::free(text);
    std::free(strdup("made by the C library"));
}

TEST(GuardHeap, RefusesTheNamedAllocationsOfTheWatchedImage) {
    GuardHeap& heap = *FindGuardHeap();
    // Whether each of four allocations was answered.
    const auto answers = [&](std::uint32_t from, std::uint32_t to) {
        char text[5] = "";
        heap.Refuse(from, to);
        for (int number = 0; number < 4; ++number) {
            void* const block = std::malloc(8);
            text[number] = block ? '+' : '-';
            std::free(block);
        }
        EXPECT_EQ(heap.allocations, 4u);
        heap.Refuse(0, 0);
        return std::string(text);
    };
    heap.Watch(GetModuleHandleA(nullptr));
    EXPECT_EQ(answers(0, 0), "++++");
    EXPECT_EQ(answers(2, 2), "+-++");
    EXPECT_EQ(answers(3, UINT32_MAX), "++--");
    heap.Refuse(1, 1);
    EXPECT_THROW(::operator delete(::operator new(8)), std::bad_alloc);
    EXPECT_EQ(heap.refused, 1u);
    heap.Refuse(1, 1);
    EXPECT_EQ(::operator new(8, std::nothrow), nullptr);

    heap.Watch(GetModuleHandleA("kernel32.dll"));
    heap.Refuse(1, UINT32_MAX);
    ::operator delete(::operator new(8));
    EXPECT_EQ(heap.allocations, 0u);
    heap.Watch(nullptr);
}

}  // namespace
