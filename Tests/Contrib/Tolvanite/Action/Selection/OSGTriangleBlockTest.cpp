#include "OSGTriangleBlock.h"

#include <cstring>

#include <gmock/gmock.h>

#include "ClippingCases.h"

namespace OSG::Test
{
namespace
{
constexpr Real32 Margin = 0.125f;

/// What the six planes and the margin say of one triangle.
struct Expected
{
    bool outside = false;
    bool crossing = false;
    bool touching = false;
    UInt32 unclear = 0;
};

Expected expected_of(Pnt3f const *corners, PlaneArray const &planes, UInt32 mask)
{
    Expected result;
    for(UInt32 k = 0; k < 6; ++k)
    {
        if((mask >> k & 1u) == 0)
            continue;
        int out = 0;
        for(int c = 0; c < 3; ++c)
        {
            Real32 const distance = planes[k].distance(corners[c]);
            out += planes[k].isInHalfSpace(corners[c]) ? 0 : 1;
            result.touching = result.touching || (distance >= -Margin && distance <= Margin);
            if(distance <= Margin)
                result.unclear |= 1u << k;
        }
        result.outside = result.outside || out == 3;
        result.crossing = result.crossing || out > 0;
    }
    return result;
}

TEST(TriangleBlock, IsGradedLikeItsTrianglesOneByOne)
{
    RandomNumbers random(501);
    int outside = 0;
    int contained = 0;
    int touching = 0;
    for(int round = 0; round < 3000; ++round)
    {
        PlaneArray const planes = random_polytope(random);
        BoxPlanes boxPlanes;
        for(UInt32 k = 0; k < 6; ++k)
            boxPlanes.set(k, planes[k], Margin);
        boxPlanes.set(6, planes[round % 6]);
        UInt32 const mask = random.below(64);
        Pnt3f corners[4][3];
        TriangleBlock block;
        for(UInt32 t = 0; t < 4; ++t)
        {
            random_triangle(random, corners[t]);
            for(UInt32 c = 0; c < 3; ++c)
                block.set(t, c, corners[t][c]);
        }
        BlockGrades grades;
        grade_block(block, boxPlanes, mask, grades);
        for(UInt32 t = 0; t < 4; ++t)
        {
            Expected const expected = expected_of(corners[t], planes, mask);
            ASSERT_EQ((grades.outside >> t & 1u) != 0, expected.outside);
            ASSERT_EQ((grades.crossing >> t & 1u) != 0, expected.crossing);
            ASSERT_EQ((grades.touching >> t & 1u) != 0, expected.touching);
            for(UInt32 k = 0; k < 6; ++k)
                ASSERT_EQ(grades.unclear[k] >> t & 1u, expected.unclear >> k & 1u);
            for(UInt32 c = 0; c < 3; ++c)
            {
                Real32 const distance = planes[round % 6].distance(corners[t][c]);
                ASSERT_EQ(std::memcmp(&grades.distance[4 * c + t], &distance, sizeof(Real32)), 0);
            }
            outside += expected.outside ? 1 : 0;
            contained += !expected.crossing ? 1 : 0;
            touching += expected.touching ? 1 : 0;
        }
    }
    EXPECT_GT(outside, 1000);
    EXPECT_GT(contained, 500);
    EXPECT_GT(touching, 500);
}
} // namespace
} // namespace OSG::Test
