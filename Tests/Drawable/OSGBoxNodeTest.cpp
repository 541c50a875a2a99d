#include "OSGBoxNode.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "InstructionSets.h"
#include "RandomNumbers.h"
#include "SameBits.h"

namespace OSG::Test
{
namespace
{
Real32 odd_number(RandomNumbers &random)
{
    Real32 const scales[] = {0.f, 1e-40f, 1e-3f, 1.f, 1e5f, 1e18f};
    return random.real(-1.f, 1.f) * scales[random.below(6)];
}

void fill(RandomNumbers &random, BoxNode &node, BoxPlanes &planes)
{
    for(UInt32 child = 0; child < BoxNode::Width; ++child)
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const a = odd_number(random);
            Real32 const b = odd_number(random);
            node.bound[axis][child] = std::min(a, b);
            node.bound[axis + 3][child] = std::max(a, b);
        }
    for(UInt32 k = 0; k < BoxPlanes::Capacity; ++k)
    {
        Plane plane;
        plane.setValue(random.below(4) == 0 ? Vec3f(0, -0.f, 1) : random.vector(),
                       odd_number(random));
        planes.set(k, plane, random.below(2) == 0 ? 0.f : 0.1f);
    }
}

void expect_same_bits(BoxGrades const &grades, BoxGrades const &expected)
{
    ASSERT_EQ(grades.outside, expected.outside);
    for(UInt32 box = 0; box < BoxNode::Width; ++box)
    {
        ASSERT_EQ(grades.crossed[box], expected.crossed[box]);
        ASSERT_TRUE(same_bits(grades.nearest[box], expected.nearest[box]));
        ASSERT_TRUE(same_bits(grades.farthest[box], expected.farthest[box]));
    }
}

TEST(BoxGrades, HaveTheSameBitsWithEveryInstructionSetOfTheMachine)
{
    int const sets = for_each_instruction_set(
        []
        {
            RandomNumbers random(302);
            for(int round = 0; round < 3000 && !testing::Test::HasFailure(); ++round)
            {
                BoxNode node = {};
                BoxPlanes planes;
                fill(random, node, planes);
                UInt32 const mask = random.below(64);
                BoxGrades grades;
                BoxGrades expected;
                grade_boxes(node, planes, mask, grades);
                grade_boxes_slowly(node, planes, mask, expected);
                expect_same_bits(grades, expected);
            }
        });
    EXPECT_GE(sets, 1);
    RecordProperty("InstructionSets", sets);
}

TEST(BoxGrades, SpeakForEveryPointInABox)
{
    RandomNumbers random(303);
    int outside = 0;
    int inside = 0;
    for(int round = 0; round < 20000; ++round)
    {
        BoxNode node = {};
        BoxPlanes planes;
        fill(random, node, planes);
        BoxGrades grades;
        grade_boxes(node, planes, 1, grades);
        UInt32 const child = random.below(8);
        Pnt3f point;
        for(UInt32 axis = 0; axis < 3; ++axis)
        {
            Real32 const low = node.bound[axis][child];
            Real32 const high = node.bound[axis + 3][child];
            point[axis] = random.below(2) == 0 ? low : std::clamp(odd_number(random), low, high);
        }
        auto const distance = [&](BoxPlanes::Entry const &entry)
        {
            Plane plane;
            plane.setValue(Vec3f(entry.normal[0], entry.normal[1], entry.normal[2]),
                           entry.distance);
            return plane.distance(point);
        };
        ASSERT_LE(grades.nearest[child], distance(planes.planes[6]));
        ASSERT_GE(grades.farthest[child], distance(planes.planes[6]));
        bool const isInside = distance(planes.planes[0]) >= 0.f;
        if((grades.outside >> child & 1u) != 0)
        {
            ASSERT_FALSE(isInside);
            ++outside;
        }
        else if(grades.crossed[child] == 0)
        {
            ASSERT_GE(distance(planes.planes[0]), planes.planes[0].margin);
            ++inside;
        }
    }
    EXPECT_GT(outside, 3000);
    EXPECT_GT(inside, 3000);
}
} // namespace
} // namespace OSG::Test
