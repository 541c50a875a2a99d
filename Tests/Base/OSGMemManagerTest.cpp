#include "OSGMemManager.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace
{
using namespace OSG;

/// Removes the limit at the end of the test.
struct LimitGuard
{
    ~LimitGuard() { set_mem_limit(0); }
};

struct Scenic : MemObject
{
    char bytes[100];
};

TEST(MemManager, BlockOfNoBytesIsABlock)
{
    void *const block = MemMalloc(0);
    EXPECT_NE(block, nullptr);
    MemFree(block);
}

TEST(MemManager, FreeOfNullDoesNothing)
{
    UInt64 const before = get_mem_bytes();
    MemFree(nullptr);
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, BytesRiseByAtLeastTheSizeAndFallBack)
{
    UInt64 const before = get_mem_bytes();
    void *const block = MemMalloc(1000);
    EXPECT_GE(get_mem_bytes(), before + 1000);
    MemFree(block);
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, PeakStaysUntilItIsReset)
{
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    MemFree(MemMalloc(1 << 20));
    EXPECT_GE(get_mem_peak_bytes(), before + (1 << 20));
    reset_mem_peak();
    EXPECT_LT(get_mem_peak_bytes(), before + (1 << 20));
}

TEST(MemManager, LimitRefusesWithNullAndCountsNothing)
{
    LimitGuard const guard;
    reset_mem_peak();
    UInt64 const before = get_mem_bytes();
    set_mem_limit(before + 10000);
    void *const refused = MemMalloc(20000);
    void *const exact = MemMalloc(10000 + 1);
    void *const huge = MemMalloc(static_cast<std::size_t>(-1));
    UInt64 const after = get_mem_bytes();
    set_mem_limit(0);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(exact, nullptr);
    EXPECT_EQ(huge, nullptr);
    EXPECT_EQ(after, before);
    EXPECT_LE(get_mem_peak_bytes(), before + 10000);
}

TEST(MemManager, LimitRefusesTheFirstSmallBlockBeyondIt)
{
    LimitGuard const guard;
    UInt64 const before = get_mem_bytes();
    void *blocks[11] = {MemMalloc(112)};
    UInt64 const bytes = get_mem_bytes() - before;
    set_mem_limit(before + 10 * bytes);
    for(int i = 1; i < 11; ++i)
        blocks[i] = MemMalloc(112);
    set_mem_limit(0);
    EXPECT_NE(blocks[9], nullptr);
    EXPECT_EQ(blocks[10], nullptr);
    EXPECT_EQ(get_mem_bytes(), before + 10 * bytes);
    for(void *block : blocks)
        MemFree(block);
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, BlockLimitCountsSmallBlocksAndLargeOnes)
{
    LimitGuard const guard;
    set_mem_block_limit(2);
    void *const small = MemMalloc(16);
    void *const large = MemMalloc(5000);
    void *const third = MemMalloc(16);
    set_mem_limit(0);
    EXPECT_NE(small, nullptr);
    EXPECT_NE(large, nullptr);
    EXPECT_EQ(third, nullptr);
    MemFree(small);
    MemFree(large);
}

TEST(MemManager, BytesFallBackWhereThreadsFreeTheBlocksOfOneAnother)
{
    UInt64 const before = get_mem_bytes();
    {
        std::vector<void *> taken(20000, nullptr);
        auto const work = [&taken](std::size_t first)
        {
            for(std::size_t i = first; i < taken.size(); i += 2)
                taken[i] = MemMalloc(i % 700);
        };
        std::thread even(work, 0);
        std::thread odd(work, 1);
        even.join();
        odd.join();
        std::thread([&taken] { std::for_each(taken.begin(), taken.end(), &MemFree); }).join();
    }
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, ExhaustionRaisesTheStandardFailure)
{
    LimitGuard const guard;
    bool raised = false;
    set_mem_limit(get_mem_bytes() + 100);
    try
    {
        MemFree(mem_malloc_or_throw(10000));
    }
    catch(std::bad_alloc const &)
    {
        raised = true;
    }
    set_mem_limit(0);
    EXPECT_TRUE(raised);
}

TEST(MemManager, GlobalNewOfThisProgramIsCounted)
{
    UInt64 const before = get_mem_bytes();
    auto *numbers = new std::vector<int>(1000);
    EXPECT_GE(get_mem_bytes(), before + 4000);
    delete numbers;
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, WideAlignmentIsKeptAndCounted)
{
    struct alignas(256) Wide
    {
        char bytes[300];
    };
    UInt64 const before = get_mem_bytes();
    auto *one = new Wide;
    auto *many = new Wide[3];
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(one) % 256, 0u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(many) % 256, 0u);
    std::memset(one, 1, sizeof(Wide));
    std::memset(many, 1, 3 * sizeof(Wide));
    delete one;
    delete[] many;
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemManager, NothrowNewGivesNullAtTheLimit)
{
    LimitGuard const guard;
    set_mem_limit(get_mem_bytes() + 100);
    char *const block = new(std::nothrow) char[10000];
    set_mem_limit(0);
    EXPECT_EQ(block, nullptr);
    delete[] block;
}

TEST(MemManager, BackEndStaysOnceABlockIsOut)
{
    MemFree(MemMalloc(1));
    EXPECT_FALSE(set_mem_back_end({nullptr, nullptr, nullptr}));
    void *const block = MemMalloc(1);
    EXPECT_NE(block, nullptr);
    MemFree(block);
}

TEST(MemObject, ObjectsAreCounted)
{
    UInt64 const before = get_mem_bytes();
    auto *object = new Scenic;
    EXPECT_GE(get_mem_bytes(), before + sizeof(Scenic));
    delete object;
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(MemAllocator, ContainersUseItAndTooManyElementsRaise)
{
    UInt64 const before = get_mem_bytes();
    {
        std::vector<int, MemAllocator<int>> numbers(1000);
        EXPECT_GE(get_mem_bytes(), before + 4000);
    }
    EXPECT_EQ(get_mem_bytes(), before);
    EXPECT_THROW(MemAllocator<double>().allocate(static_cast<std::size_t>(-1) / 4),
                 std::bad_array_new_length);
}
} // namespace
