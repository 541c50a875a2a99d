#include "OSGPointerList.h"

#include <gtest/gtest.h>
#include <new>
#include <vector>

#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using List = PointerList<int>;

std::vector<int *> values_of(List const &list)
{
    return std::vector<int *>(list.begin(), list.end());
}

int numbers[8];

TEST(PointerList, TakesTheRoomOfAPointer)
{
    UInt64 const before = getMemBytes();
    List list;
    EXPECT_EQ(sizeof(list), sizeof(int *));
    EXPECT_TRUE(list.empty());
    list.push_back(numbers);
    EXPECT_EQ(list.size(), 1u);
    EXPECT_EQ(list.front(), numbers);
    EXPECT_EQ(getMemBytes(), before);
    list.push_back(numbers + 1);
    EXPECT_GT(getMemBytes(), before);
    list.clear();
    EXPECT_EQ(getMemBytes(), before);
}

TEST(PointerList, ANullIsAnEntryToo)
{
    List list;
    list.push_back(nullptr);
    EXPECT_EQ(values_of(list), std::vector<int *>{nullptr});
    list.set(0, numbers);
    EXPECT_EQ(values_of(list), std::vector<int *>{numbers});
    List other;
    other.push_back(numbers);
    other.set(0, nullptr);
    EXPECT_EQ(values_of(other), std::vector<int *>{nullptr});
    other.resize(2);
    other.resize(1);
    EXPECT_EQ(other.size(), 1u);
}

TEST(PointerList, MovesAndSwaps)
{
    List one;
    List two;
    one.push_back(numbers);
    two.push_back(numbers + 1);
    two.push_back(numbers + 2);
    one.swap(two);
    EXPECT_EQ(one.size(), 2u);
    List three(std::move(one));
    EXPECT_TRUE(one.empty());
    EXPECT_EQ(three.back(), numbers + 2);
    two = std::move(three);
    EXPECT_EQ(two.size(), 2u);
}

TEST(PointerList, WhatFindsNoMemoryChangesNothing)
{
    List list;
    list.push_back(numbers);
    setMemLimit(1);
    EXPECT_THROW(list.push_back(numbers + 1), std::bad_alloc);
    EXPECT_THROW(list.resize(5), std::bad_alloc);
    EXPECT_THROW(list.set(0, nullptr), std::bad_alloc);
    setMemLimit(0);
    EXPECT_EQ(values_of(list), std::vector<int *>{numbers});
}

TEST(PointerList, DoesWhatAVectorDoes)
{
    RandomNumbers random(20260121);
    for(int round = 0; round < 200; ++round)
    {
        List list;
        std::vector<int *> model;
        for(int step = 0; step < 60; ++step)
        {
            UInt32 const size = list.size();
            int *const value = random.below(4) == 0 ? nullptr : numbers + random.below(8);
            UInt32 const at = size == 0 ? 0 : random.below(size);
            switch(random.below(8))
            {
            case 0:
            case 1:
                list.push_back(value);
                model.push_back(value);
                break;
            case 2:
                list.insert(at, value);
                model.insert(model.begin() + at, value);
                break;
            case 3:
                list.reserve(at);
                break;
            case 4:
            {
                UInt32 const count = random.below(7);
                list.resize(count);
                model.resize(count, nullptr);
                break;
            }
            default:
                if(size == 0)
                    break;
                if(random.below(2) == 0)
                {
                    list.erase(at);
                    model.erase(model.begin() + at);
                }
                else
                {
                    list.set(at, value);
                    model[at] = value;
                }
            }
            ASSERT_EQ(values_of(list), model);
        }
    }
}
} // namespace
} // namespace OSG::Test
