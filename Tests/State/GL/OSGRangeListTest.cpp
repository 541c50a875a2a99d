#include "OSGRangeList.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace OSG::Test
{
namespace
{
TEST(RangeList, GivesTheFirstPlaceThatHasRoom)
{
    RangeList list(10);
    EXPECT_EQ(list.take(4), 0u);
    EXPECT_EQ(list.take(4), 4u);
    EXPECT_EQ(list.take(4), RangeList::None);
    list.giveBack(0, 4);
    EXPECT_EQ(list.take(3), 0u);
    EXPECT_EQ(list.take(2), 8u);
}

TEST(RangeList, JoinsWhatIsGivenBack)
{
    RangeList list(9);
    for(UInt32 i = 0; i < 3; ++i)
        EXPECT_EQ(list.take(3), 3 * i);
    list.giveBack(0, 3);
    list.giveBack(6, 3);
    list.giveBack(3, 3);
    EXPECT_TRUE(list.isAllFree());
    EXPECT_EQ(list.take(9), 0u);
}

TEST(RangeList, IsCutBehindWhatIsTaken)
{
    RangeList list(100);
    list.take(10);
    EXPECT_EQ(list.takenEnd(), 10u);
    list.cut(12);
    EXPECT_EQ(list.take(3), RangeList::None);
    EXPECT_EQ(list.take(2), 10u);
    EXPECT_EQ(list.takenEnd(), 12u);
}

TEST(RangeList, NeverGivesAnElementTwice)
{
    constexpr UInt32 Size = 200;
    std::mt19937 random(7);
    RangeList list(Size);
    std::vector<bool> isTaken(Size, false);
    std::vector<std::pair<UInt32, UInt32>> given;
    for(int step = 0; step < 20000; ++step)
    {
        if(random() % 2 == 0)
        {
            UInt32 const count = random() % 20;
            UInt32 const first = list.take(count);
            if(first == RangeList::None)
                continue;
            for(UInt32 i = first; i < first + count; ++i)
            {
                ASSERT_FALSE(isTaken[i]);
                isTaken[i] = true;
            }
            given.emplace_back(first, count);
        }
        else if(!given.empty())
        {
            std::swap(given[random() % given.size()], given.back());
            auto const [first, count] = given.back();
            given.pop_back();
            list.giveBack(first, count);
            std::fill_n(isTaken.begin() + first, count, false);
        }
    }
    for(auto const &[first, count] : given)
        list.giveBack(first, count);
    EXPECT_TRUE(list.isAllFree());
    EXPECT_EQ(list.take(Size), 0u);
}
} // namespace
} // namespace OSG::Test
