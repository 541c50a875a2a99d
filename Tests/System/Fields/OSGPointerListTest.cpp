#include "OSGPointerList.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "OSGMemManager.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
// Addresses alone: the list looks at no object.
FieldContainer *entry(std::size_t number)
{
    return reinterpret_cast<FieldContainer *>(16 * (number + 1));
}

/// A list and the plain array that it stands for, edited alike and compared all over.
class Pair
{
  public:
    std::size_t size() const { return _plain.size(); }

    void append()
    {
        _list.push_back(entry(_next));
        _plain.push_back(entry(_next));
        EXPECT_EQ(_list[_list.size() - 1], entry(_next));
        ++_next;
    }
    void insert(UInt32 index)
    {
        _list.insert(index, entry(_next));
        _plain.insert(_plain.begin() + index, entry(_next));
        ++_next;
    }
    void replace(UInt32 index)
    {
        _list.set(index, entry(_next));
        _plain[index] = entry(_next);
        ++_next;
    }
    void erase(UInt32 index)
    {
        _list.erase(index);
        _plain.erase(_plain.begin() + index);
    }
    void eraseByPointer(UInt32 index, UInt32 slot)
    {
        EXPECT_EQ(_list.findNear(_plain[index], slot), index);
        erase(_list.findNear(_plain[index], slot));
    }
    void reserve(UInt32 count) { _list.reserve(count); }

    void compare() const
    {
        ASSERT_EQ(_list.size(), _plain.size());
        EXPECT_EQ(_list.empty(), _plain.empty());
        for(UInt32 i = 0; i < _list.size(); ++i)
            ASSERT_EQ(_list[i], _plain[i]) << i;
        if(_plain.empty())
            return;
        UInt32 slot = _list.getLastSlot();
        EXPECT_EQ(_list.findNear(_plain.back(), slot), _plain.size() - 1);
        EXPECT_EQ(slot, _list.getLastSlot());
        EXPECT_EQ(_list.find(_plain.back()), _plain.size() - 1);
    }

  private:
    PointerList _list;
    std::vector<FieldContainer *> _plain;
    std::size_t _next = 0;
};

void edit_at_random(Pair &pair, RandomNumbers &random, UInt32 weightOfErasing)
{
    UInt32 const size = static_cast<UInt32>(pair.size());
    UInt32 const what = random.below(6 + weightOfErasing);
    if(size == 0 || what < 3)
        pair.append();
    else if(what == 3)
        pair.insert(random.below(size + 1));
    else if(what == 4)
        pair.replace(random.below(size));
    else if(what == 5)
        pair.reserve(random.below(2 * size));
    else if(what % 2 == 0)
        pair.erase(random.below(size));
    else
        pair.eraseByPointer(random.below(size), random.below(2 * size));
}

TEST(PointerList, IsAPlainArrayUnderRandomEdits)
{
    for(UInt32 seed = 0; seed < 20; ++seed)
    {
        RandomNumbers random(seed);
        Pair pair;
        for(int i = 0; i < 2000; ++i)
        {
            // Growing, then shrinking, again and again; some seeds hold one entry or none for long.
            UInt32 const erasing = seed % 3 == 0 ? 6 : i % 400 < 200 ? 1 : 10;
            edit_at_random(pair, random, erasing);
            pair.compare();
            if(testing::Test::HasFatalFailure())
                FAIL() << "seed " << seed << ", edit " << i;
        }
    }
}

TEST(PointerList, IsAPlainArrayUnderRunsOfErasing)
{
    RandomNumbers random(7);
    Pair pair;
    for(int run = 0; run < 300; ++run)
    {
        while(pair.size() < 60)
            pair.append();
        // From somewhere on, forwards or backwards, some of them passed over.
        UInt32 at = random.below(60);
        bool const forwards = random.below(2) == 0;
        for(UInt32 i = 0; i < 40 && at < pair.size(); ++i)
        {
            bool const passOver = random.below(4) == 0;
            if(!passOver)
                pair.eraseByPointer(at, random.below(100));
            at = forwards ? at + (passOver ? 1 : 0) : at - 1;
            pair.compare();
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << run;
        }
    }
}

TEST(PointerList, WhatIsNotInItIsAtItsSize)
{
    PointerList list;
    UInt32 slot = 0;
    EXPECT_EQ(list.find(entry(0)), 0u);
    EXPECT_EQ(list.findNear(entry(0), slot), 0u);
    for(std::size_t i = 0; i < 5; ++i)
        list.push_back(entry(i));
    list.erase(1);
    slot = 1; // in the gap, where the entry still stands
    EXPECT_EQ(list.find(entry(1)), 4u);
    EXPECT_EQ(list.findNear(entry(1), slot), 4u);
}

TEST(PointerList, FindGivesTheFirstOfSeveral)
{
    PointerList list;
    for(std::size_t const i : {3, 1, 2, 1, 2})
        list.push_back(entry(i));
    list.erase(3);
    EXPECT_EQ(list.find(entry(2)), 2u);
}

TEST(PointerList, ManyGoOneByOneInTimeInAnyDirection)
{
    constexpr UInt32 Count = 2000000;
    for(int const way : {0, 1, 2, 3})
    {
        PointerList list;
        for(std::size_t i = 0; i < Count; ++i)
            list.push_back(entry(i));
        for(UInt32 i = 0; i < Count; ++i)
        {
            UInt32 const inTurn = i % 2 == 0 ? 0 : list.size() - 1;
            UInt32 const index[] = {0, list.size() - 1, list.size() / 2, inTurn};
            list.erase(index[way]);
        }
        EXPECT_TRUE(list.empty());
    }
}

TEST(PointerList, ManyGoByPointerInTimeThoughOthersStay)
{
    constexpr UInt32 Count = 1000000;
    PointerList list;
    std::vector<UInt32> slots(Count);
    for(std::size_t i = 0; i < Count; ++i)
    {
        list.push_back(entry(i));
        slots[i] = list.getLastSlot();
    }
    // Every third entry forwards, then of those that stay every second backwards, then the rest.
    for(UInt32 i = 0; i < Count; i += 3)
        list.erase(list.findNear(entry(i), slots[i]));
    for(UInt32 i = Count - 1; i > 0; --i)
    {
        if(i % 3 == 1)
            list.erase(list.findNear(entry(i), slots[i]));
    }
    for(UInt32 i = 2; i < Count; i += 3)
        list.erase(list.findNear(entry(i), slots[i]));
    EXPECT_TRUE(list.empty());
}

TEST(PointerList, AQueueOfManyTakesTimeAndMemoryByItsLength)
{
    PointerList list;
    for(std::size_t i = 0; i < 100000; ++i)
        list.push_back(entry(i));
    UInt64 const bytes = get_mem_bytes();
    for(std::size_t i = 0; i < 2000000; ++i)
    {
        list.erase(0);
        list.push_back(entry(i));
    }
    EXPECT_EQ(list.size(), 100000u);
    EXPECT_LE(get_mem_bytes(), bytes + 4 * 100000 * sizeof(void *));
}

TEST(PointerList, WithoutMemoryItStaysAsItIs)
{
    PointerList list;
    // As many as its block holds.
    for(std::size_t i = 0; i < 1023; ++i)
        list.push_back(entry(i));
    set_mem_limit(get_mem_bytes() + 1);
    EXPECT_THROW(list.push_back(entry(5000)), std::bad_alloc);
    EXPECT_THROW(list.reserve(2000), std::bad_alloc);
    set_mem_limit(0);
    EXPECT_EQ(list.size(), 1023u);
    EXPECT_EQ(list[1022], entry(1022));
}

TEST(PointerList, TakesTheRoomOfAPointerUntilThereAreTwo)
{
    EXPECT_EQ(sizeof(PointerList), sizeof(void *));
    UInt64 const before = get_mem_bytes();
    PointerList list;
    list.push_back(entry(0));
    list.set(0, nullptr);
    list.reserve(1);
    EXPECT_EQ(get_mem_bytes(), before);
    list.push_back(entry(1));
    EXPECT_GT(get_mem_bytes(), before);
    list.clear();
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(PointerList, ANullIsAnEntryToo)
{
    PointerList list;
    list.push_back(nullptr);
    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0], nullptr);
    EXPECT_EQ(list.find(nullptr), 0u);
    list.set(0, entry(3));
    EXPECT_EQ(list[0], entry(3));
    list.push_back(nullptr);
    list.insert(0, nullptr);
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0], nullptr);
    EXPECT_EQ(list[1], entry(3));
    EXPECT_EQ(list[2], nullptr);
}

TEST(PointerList, ShortAndLongOnesSwap)
{
    PointerList one;
    PointerList two;
    one.push_back(entry(0));
    two.push_back(entry(1));
    two.push_back(entry(2));
    one.swap(two);
    ASSERT_EQ(one.size(), 2u);
    EXPECT_EQ(one[1], entry(2));
    ASSERT_EQ(two.size(), 1u);
    EXPECT_EQ(two[0], entry(0));
}

// --- few entries in use ---

TEST(PointerList, NullsBetweenEntriesThatArePutTakeNoRoom)
{
    PointerList list;
    UInt64 const before = get_mem_bytes();
    list.putAt(8, entry(1));
    list.putAt(2, entry(2));
    list.putAt(0, entry(3));
    EXPECT_LE(get_mem_bytes() - before, 40u); // eight bytes and three pointers
    ASSERT_EQ(list.size(), 9u);
    for(UInt32 i = 0; i < 9; ++i)
        EXPECT_EQ(list[i], i == 8 ? entry(1) : i == 2 ? entry(2) : i == 0 ? entry(3) : nullptr);
    list.clear();
    EXPECT_EQ(get_mem_bytes(), before);
}

TEST(PointerList, APointerThatIsPutTwiceTakesNoMoreRoom)
{
    PointerList list;
    UInt64 const before = get_mem_bytes();
    for(UInt32 const index : {8u, 2u, 0u})
        list.putAt(index, entry(1));
    EXPECT_LE(get_mem_bytes() - before, 24u);
    list.putAt(2, entry(2));
    EXPECT_EQ(list[0], entry(1));
    EXPECT_EQ(list[2], entry(2));
    EXPECT_EQ(list[8], entry(1));
}

TEST(PointerList, IsAPlainArrayHoweverItIsFilled)
{
    RandomNumbers random(3);
    for(int round = 0; round < 3000; ++round)
    {
        PointerList list;
        std::vector<FieldContainer *> plain;
        for(UInt32 step = 0; step < 12; ++step)
        {
            FieldContainer *const value = random.below(4) == 0 ? nullptr : entry(random.below(6));
            UInt32 const index = random.below(random.below(8) == 0 ? 40 : 17);
            switch(random.below(step < 6 ? 2 : 6))
            {
            case 0:
            case 1:
                list.putAt(index, value);
                plain.resize(std::max<std::size_t>(plain.size(), index + 1));
                plain[index] = value;
                break;
            case 2:
                list.push_back(value);
                plain.push_back(value);
                break;
            case 3:
                if(index < plain.size())
                {
                    list.erase(index);
                    plain.erase(plain.begin() + index);
                }
                break;
            case 4:
                if(index <= plain.size())
                {
                    list.insert(index, value);
                    plain.insert(plain.begin() + index, value);
                }
                break;
            default:
                if(index < plain.size())
                {
                    list.set(index, value);
                    plain[index] = value;
                }
                list.reserve(random.below(30));
            }
            ASSERT_EQ(list.size(), plain.size()) << round;
            for(UInt32 i = 0; i < list.size(); ++i)
                ASSERT_EQ(list[i], plain[i]) << round;
        }
    }
}
} // namespace
} // namespace OSG::Test
