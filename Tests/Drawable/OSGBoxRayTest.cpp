#include "OSGBoxRay.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "InstructionSets.h"
#include "RandomNumbers.h"
#include "SameBits.h"

namespace OSG::Test
{
namespace
{
void expect_same_times(RandomNumbers &random, int round)
{
    BoxNode node{};
    for(UInt32 box = 0; box < BoxNode::Width; ++box)
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const a = std::round(random.real(-3.f, 3.f) * 4) / 4;
            Real32 const b = std::round(random.real(-3.f, 3.f) * 4) / 4;
            node.bound[axis][box] = std::min(a, b);
            node.bound[axis + 3][box] = std::max(a, b);
        }
    Vec3f direction = random.vector();
    if(round % 3 == 0)
        direction[random.below(3)] = 0.f;
    BoxRay ray;
    ray.set(Line(random.point(-4.f, 4.f), direction), 1e-5f);
    Real32 const limit = random.below(2) == 0 ? random.real(-1.f, 5.f) : INFINITY;
    BoxRayTimes fast;
    BoxRayTimes slow;
    cast_at_boxes(node, ray, limit, fast);
    cast_at_boxes_slowly(node, ray, limit, slow);
    ASSERT_EQ(fast.missed, slow.missed);
    for(UInt32 box = 0; box < BoxNode::Width; ++box)
        ASSERT_TRUE(same_bits(fast.enter[box], slow.enter[box]));
}

TEST(BoxRay, EveryInstructionSetGivesTheSameBits)
{
    for_each_instruction_set(
        []
        {
            RandomNumbers random(603);
            for(int round = 0; round < 2000 && !testing::Test::HasFailure(); ++round)
                expect_same_times(random, round);
        });
}

TEST(BoxRay, MissesAndEntersBoxesWithTheirRoom)
{
    BoxNode node{};
    for(UInt32 axis = 0; axis < 3; ++axis)
        for(UInt32 box = 0; box < BoxNode::Width; ++box)
        {
            node.bound[axis][box] = axis == 2 ? static_cast<Real32>(box) : 0.f;
            node.bound[axis + 3][box] = node.bound[axis][box] + 1.f;
        }
    BoxRayTimes times;
    BoxRay ray;
    ray.set(Line(Pnt3f(0.5f, 1.25f, 3.5f), Vec3f(0, 0, 1)), 0.25f);
    cast_at_boxes(node, ray, INFINITY, times);
    EXPECT_EQ(times.missed, 0x07u); // those behind
    EXPECT_EQ(times.enter[3], 0.f);
    EXPECT_EQ(times.enter[5], 1.25f);
    cast_at_boxes(node, ray, 1.25f, times);
    EXPECT_EQ(times.missed, 0xC7u);
    ray.set(Line(Pnt3f(0.5f, 1.25f, 3.5f), Vec3f(0, 0, 1)), 0.125f);
    cast_at_boxes(node, ray, INFINITY, times);
    EXPECT_EQ(times.missed, 0xFFu);
}
} // namespace
} // namespace OSG::Test
