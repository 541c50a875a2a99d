#include "OSGPointerBag.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "OSGMemManager.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
/// Addresses that look like those of containers; nobody follows them.
FieldContainer *entry(std::size_t number)
{
    return reinterpret_cast<FieldContainer *>(0x10000 + 64 * number);
}

std::vector<FieldContainer *> contents(PointerBag const &bag)
{
    std::vector<FieldContainer *> all;
    for(UInt32 i = 0; i < bag.size(); ++i)
        all.push_back(bag[i]);
    std::sort(all.begin(), all.end());
    return all;
}
} // namespace

TEST(PointerBag, TakesTheRoomOfOnePointer) { EXPECT_EQ(sizeof(PointerBag), sizeof(void *)); }

TEST(PointerBag, HoldsOneEntryWithoutABlock)
{
    UInt64 const before = get_mem_bytes();
    PointerBag bag;
    EXPECT_TRUE(bag.empty());
    bag.insert(entry(1));
    EXPECT_EQ(get_mem_bytes(), before);
    ASSERT_EQ(bag.size(), 1u);
    EXPECT_EQ(bag[0], entry(1));
    EXPECT_FALSE(bag.erase(entry(2)));
    EXPECT_TRUE(bag.erase(entry(1)));
    EXPECT_TRUE(bag.empty());
}

TEST(PointerBag, HoldsWhatASetHoldsThroughManyEdits)
{
    RandomNumbers random(7);
    for(std::size_t most : {3u, 8u, 9u, 40u, 3000u})
    {
        UInt64 const before = get_mem_bytes();
        {
            PointerBag bag;
            std::vector<bool> isIn(most, false);
            std::size_t count = 0;
            for(int step = 0; step < 20000; ++step)
            {
                std::size_t const number = random.below(static_cast<UInt32>(most));
                EXPECT_EQ(bag.contains(entry(number)), isIn[number]);
                EXPECT_EQ(bag.erase(entry(number)), isIn[number]);
                if(isIn[number])
                    --count;
                else
                    bag.insert(entry(number)), ++count;
                isIn[number] = !isIn[number];
                ASSERT_EQ(bag.size(), count);
            }
            std::vector<FieldContainer *> expected;
            for(std::size_t i = 0; i < most; ++i)
            {
                if(isIn[i])
                    expected.push_back(entry(i));
            }
            EXPECT_EQ(contents(bag), expected);
        }
        EXPECT_EQ(get_mem_bytes(), before);
    }
}

TEST(PointerBag, AMillionEntriesLeaveInAnyOrder)
{
    constexpr UInt32 Count = 1000000;
    PointerBag bag;
    for(UInt32 i = 0; i < Count; ++i)
        bag.insert(entry(i));
    // Without a table of places this would take hundreds of billions of steps.
    for(UInt32 i = 0; i < Count; ++i)
        ASSERT_TRUE(bag.erase(entry((UInt64(i) * 7919) % Count)));
    EXPECT_TRUE(bag.empty());
}

TEST(PointerBag, IsAsItWasWhereMemoryRunsOut)
{
    PointerBag bag;
    for(std::size_t i = 0; i < 8; ++i)
        bag.insert(entry(i));
    set_mem_limit(1);
    EXPECT_THROW(bag.insert(entry(8)), std::bad_alloc);
    set_mem_limit(0);
    EXPECT_EQ(bag.size(), 8u);
    EXPECT_FALSE(bag.contains(entry(8)));
    bag.insert(entry(8));
    EXPECT_TRUE(bag.contains(entry(8)));
}
} // namespace OSG::Test
