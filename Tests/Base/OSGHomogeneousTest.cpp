#include "OSGHomogeneous.h"

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;

Matrix4d random_matrix(OSG::Test::RandomNumbers &random)
{
    Matrix4d matrix;
    for(UInt32 i = 0; i < 16; ++i)
        matrix[i / 4][i % 4] = random.real(-1, 1);
    return matrix;
}

Pnt3d random_point(OSG::Test::RandomNumbers &random)
{
    return Pnt3d(random.real(-1, 1), random.real(-1, 1), random.real(-1, 1));
}

TEST(Homogeneous, ImagesDividedByWAreThoseOfTheMatrix)
{
    OSG::Test::RandomNumbers random(8);
    for(int i = 0; i < 300; ++i)
    {
        Matrix4d const matrix = random_matrix(random);
        Pnt3d const point = random_point(random);
        Vec4d const image = homogeneous_image(matrix, point);
        Pnt3d divided;
        matrix.multFull(point, divided);
        for(UInt32 c = 0; c < 3; ++c)
            EXPECT_NEAR(image[c], divided[c] * image[3], 1e-12);
    }
}

TEST(Homogeneous, WayIsTheDifferenceOfTheDividedPoints)
{
    OSG::Test::RandomNumbers random(9);
    for(int i = 0; i < 300; ++i)
    {
        Pnt3d const from = random_point(random);
        Pnt3d const to = random_point(random);
        Real64 const v = random.real(0.1f, 3);
        Real64 const w = random.real(0.1f, 3);
        Vec3d const way = homogeneous_way(Vec4d(from[0] * v, from[1] * v, from[2] * v, v),
                                          Vec4d(to[0] * w, to[1] * w, to[2] * w, w));
        for(UInt32 c = 0; c < 3; ++c)
            EXPECT_NEAR(way[c], (to[c] - from[c]) * v * w, 1e-12);
    }
}

TEST(Homogeneous, WayToAPointAtInfinityIsItsDirection)
{
    Vec3d const way = homogeneous_way(Vec4d(5, 6, 7, 2), Vec4d(1, -2, 3, 0));
    EXPECT_EQ(way, Vec3d(2, -4, 6));
}
} // namespace
