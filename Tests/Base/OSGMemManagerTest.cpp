#include "OSGMemManager.h"

#include <cstring>
#include <new>
#include <vector>

#include <gtest/gtest.h>

namespace
{
using namespace OSG;

/// Lifts the limit again, whatever the test does.
struct LimitGuard
{
    ~LimitGuard() { setMemLimit(0); }
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
    UInt64 const before = getMemBytes();
    MemFree(nullptr);
    EXPECT_EQ(getMemBytes(), before);
}

TEST(MemManager, BytesRiseByAtLeastTheSizeAndFallBack)
{
    UInt64 const before = getMemBytes();
    void *const block = MemMalloc(1000);
    EXPECT_GE(getMemBytes(), before + 1000);
    MemFree(block);
    EXPECT_EQ(getMemBytes(), before);
}

TEST(MemManager, PeakStaysUntilItIsReset)
{
    resetMemPeak();
    UInt64 const before = getMemBytes();
    MemFree(MemMalloc(1 << 20));
    EXPECT_GE(getMemPeakBytes(), before + (1 << 20));
    resetMemPeak();
    EXPECT_LT(getMemPeakBytes(), before + (1 << 20));
}

TEST(MemManager, LimitRefusesWithNullAndCountsNothing)
{
    LimitGuard const guard;
    resetMemPeak();
    UInt64 const before = getMemBytes();
    setMemLimit(before + 10000);
    void *const refused = MemMalloc(20000);
    void *const exact = MemMalloc(10000 + 1);
    void *const huge = MemMalloc(static_cast<std::size_t>(-1));
    UInt64 const after = getMemBytes();
    setMemLimit(0);
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(exact, nullptr);
    EXPECT_EQ(huge, nullptr);
    EXPECT_EQ(after, before);
    EXPECT_LE(getMemPeakBytes(), before + 10000);
}

TEST(MemManager, ExhaustionRaisesTheStandardFailure)
{
    LimitGuard const guard;
    bool raised = false;
    setMemLimit(getMemBytes() + 100);
    try
    {
        MemFree(MemMallocOrThrow(10000));
    }
    catch(std::bad_alloc const &)
    {
        raised = true;
    }
    setMemLimit(0);
    EXPECT_TRUE(raised);
}

TEST(MemManager, GlobalNewOfThisProgramIsCounted)
{
    UInt64 const before = getMemBytes();
    auto *numbers = new std::vector<int>(1000);
    EXPECT_GE(getMemBytes(), before + 4000);
    delete numbers;
    EXPECT_EQ(getMemBytes(), before);
}

TEST(MemManager, WideAlignmentIsKeptAndCounted)
{
    struct alignas(256) Wide
    {
        char bytes[300];
    };
    UInt64 const before = getMemBytes();
    auto *one = new Wide;
    auto *many = new Wide[3];
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(one) % 256, 0u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(many) % 256, 0u);
    std::memset(one, 1, sizeof(Wide));
    std::memset(many, 1, 3 * sizeof(Wide));
    delete one;
    delete[] many;
    EXPECT_EQ(getMemBytes(), before);
}

TEST(MemManager, NothrowNewGivesNullAtTheLimit)
{
    LimitGuard const guard;
    setMemLimit(getMemBytes() + 100);
    char *const block = new(std::nothrow) char[10000];
    setMemLimit(0);
    EXPECT_EQ(block, nullptr);
    delete[] block;
}

TEST(MemManager, BackEndStaysOnceABlockIsOut)
{
    MemFree(MemMalloc(1));
    EXPECT_FALSE(setMemBackEnd({nullptr, nullptr, nullptr}));
    void *const block = MemMalloc(1);
    EXPECT_NE(block, nullptr);
    MemFree(block);
}

TEST(MemObject, ObjectsAreCounted)
{
    UInt64 const before = getMemBytes();
    auto *object = new Scenic;
    EXPECT_GE(getMemBytes(), before + sizeof(Scenic));
    delete object;
    EXPECT_EQ(getMemBytes(), before);
}

TEST(MemAllocator, ContainersUseItAndTooManyElementsRaise)
{
    UInt64 const before = getMemBytes();
    {
        std::vector<int, MemAllocator<int>> numbers(1000);
        EXPECT_GE(getMemBytes(), before + 4000);
    }
    EXPECT_EQ(getMemBytes(), before);
    EXPECT_THROW(MemAllocator<double>().allocate(static_cast<std::size_t>(-1) / 4),
                 std::bad_array_new_length);
}
} // namespace
