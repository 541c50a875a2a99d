#include "OSGMatrixUtility.h"

#include <limits>

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;

TEST(MatrixLookAt, DownTheNegativeZAxisIsATranslation)
{
    Matrix m;
    EXPECT_FALSE(MatrixLookAt(m, Pnt3f(1, 2, 3), Pnt3f(1, 2, -5), Vec3f(0, 9, 0)));
    Matrix expected;
    expected.setTranslate(1, 2, 3);
    EXPECT_EQ(m, expected);
}

TEST(MatrixLookAt, AxesAreOrthonormalAndZPointsBackFromAt)
{
    OSG::Test::RandomNumbers random(6);
    for(int i = 0; i < 500; ++i)
    {
        Pnt3f const from = random.point(-10, 10);
        Pnt3f const at = random.point(-10, 10);
        Vec3f const up = random.vector();
        Matrix m;
        ASSERT_FALSE(MatrixLookAt(m, from, at, up));
        Vec3f const x(m[0].values()), y(m[1].values()), z(m[2].values());
        ASSERT_TRUE(x.cross(y).equals(z, 1e-5f));
        ASSERT_NEAR(x.length(), 1.f, 1e-5f);
        ASSERT_NEAR(y.length(), 1.f, 1e-5f);
        ASSERT_NEAR(x.dot(up), 0.f, 1e-5f);
        ASSERT_GT(y.dot(up), 0.f);
        Vec3f back = from - at;
        back.normalize();
        ASSERT_EQ(z, back);
        ASSERT_EQ(m[3], Vec4f(from[0], from[1], from[2], 1));
    }
}

TEST(MatrixLookAt, TakesVectorsWhoseSquareOverflows)
{
    OSG::Test::RandomNumbers random(7);
    for(Real32 const length : {1e18f, 1e20f, 3e38f})
    {
        for(int i = 0; i < 100; ++i)
        {
            Pnt3f const from = random.point(-10, 10);
            Pnt3f const at = random.point(-10, 10);
            Vec3f const up(random.real(-1, 1), random.real(-1, 1), random.real(-1, 1));
            Matrix m, expected;
            ASSERT_FALSE(MatrixLookAt(expected, from, at, up));
            ASSERT_FALSE(MatrixLookAt(m, from, at, up * length)) << length;
            EXPECT_TRUE(m.equals(expected, 1e-4f)) << length;
        }
        Matrix m;
        ASSERT_FALSE(MatrixLookAt(m, Pnt3f(), Pnt3f(0, 0, -length), Vec3f(0, length, 0)));
        EXPECT_EQ(m, Matrix()) << length;
    }
}

TEST(MatrixLookAt, FailsAndLeavesTheMatrixWhereThereIsNoView)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Real32 const infinity = std::numeric_limits<Real32>::infinity();
    struct Case
    {
        char const *name;
        Pnt3f from, at;
        Vec3f up;
    };
    Case const cases[] = {
        {"from is at", {1, 1, 1}, {1, 1, 1}, {0, 1, 0}},
        {"from nearly at", {1, 1, 0}, {1, 1, 9e-7f}, {0, 1, 0}},
        {"up parallel", {0, 0, 0}, {0, 5, 0}, {0, 1, 0}},
        {"up zero", {0, 0, 0}, {0, 0, 1}, {0, 0, 0}},
        {"from not a number", {nan, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {"up not a number", {0, 0, 0}, {0, 0, 1}, {0, nan, 0}},
        {"up long and parallel", {0, 0, 0}, {0, 5, 0}, {0, 3e38f, 0}},
        {"up infinite", {0, 0, 0}, {0, 0, 1}, {0, infinity, 0}},
        {"from beyond numbers from at", {0, 0, 3e38f}, {0, 0, -3e38f}, {0, 1, 0}},
        {"from infinite", {infinity, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    };
    Matrix before;
    before.setScale(3);
    for(Case const &c : cases)
    {
        Matrix m = before;
        EXPECT_TRUE(MatrixLookAt(m, c.from, c.at, c.up)) << c.name;
        EXPECT_EQ(m, before) << c.name;
    }
}
} // namespace
