#include "OSGSpaceOrder.h"

#include <algorithm>
#include <vector>

#include <gmock/gmock.h>

#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
TEST(SpaceOrder, PutsNeighboursInSpaceSideBySide)
{
    RandomNumbers random(304);
    constexpr UInt32 Count = 4096;
    std::vector<Pnt3f> points;
    SpaceOrder order(Count, Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1));
    for(UInt32 i = 0; i < Count; ++i)
    {
        points.push_back(random.point(-1.f, 1.f));
        order.add(i, points.back());
    }
    MemArray<UInt32> const sorted = order.finish();
    std::vector<UInt32> numbers(sorted.data(), sorted.data() + Count);
    double steps = 0;
    for(UInt32 i = 1; i < Count; ++i)
        steps += (points[numbers[i]] - points[numbers[i - 1]]).length();
    // Random neighbours are 1.3 apart, those in a grid of 16 by 16 by 16 cells 0.125.
    EXPECT_LT(steps / Count, 0.25);
    std::sort(numbers.begin(), numbers.end());
    for(UInt32 i = 0; i < Count; ++i)
        ASSERT_EQ(numbers[i], i);
}

TEST(SpaceOrder, KeepsTheOrderOfPointsAtOnePlace)
{
    SpaceOrder order(5, Pnt3f(2, 2, 2), Pnt3f(2, 2, 2));
    for(UInt32 i = 0; i < 5; ++i)
        order.add(i, Pnt3f(2, 2, 2));
    MemArray<UInt32> const numbers = order.finish();
    for(UInt32 i = 0; i < 5; ++i)
        EXPECT_EQ(numbers[i], i);
}
} // namespace
} // namespace OSG::Test
