#include "OSGVector.h"

#include <limits>
#include <type_traits>

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;

static_assert(std::is_trivially_copyable_v<Pnt3f> && sizeof(Pnt3f) == 12);
static_assert(std::is_trivially_copyable_v<Vec4f> && sizeof(Vec4f) == 16);
static_assert(std::is_same_v<decltype(Pnt3f() - Pnt3f()), Vec3f>);
static_assert(std::is_same_v<decltype(Pnt3f() + Vec3f()), Pnt3f>);

TEST(Vector, StartsAtZero)
{
    EXPECT_EQ(Pnt3f(), Pnt3f(0, 0, 0));
    EXPECT_EQ(Vec2f(), Vec2f(0, 0));
}

TEST(Vector, ReadsAnArrayAndIndexesItsNumbers)
{
    Real32 const numbers[] = {1.f, 2.f, 3.f, 4.f};
    Vec4f const v(numbers);
    EXPECT_EQ(v, Vec4f(1, 2, 3, 4));
    EXPECT_EQ(v[2], 3.f);
    EXPECT_EQ(v.w(), 4.f);
    EXPECT_EQ(v.values() + 1, &v[1]);
}

TEST(Vector, PointsAndVectorsAddByTheirKind)
{
    Pnt3f p(1, 2, 3);
    EXPECT_EQ(Pnt3f(5, 7, 9) - p, Vec3f(4, 5, 6));
    EXPECT_EQ(p + Vec3f(1, 1, 1), Pnt3f(2, 3, 4));
    EXPECT_EQ(p - Vec3f(1, 1, 1), Pnt3f(0, 1, 2));
    p += Vec3f(1, 0, 0);
    p -= Vec3f(0, 2, 0);
    EXPECT_EQ(p, Pnt3f(2, 0, 3));
    EXPECT_EQ(p.subZero(), Vec3f(2, 0, 3));
}

TEST(Vector, SumsAndScalesGoNumberByNumber)
{
    Vec3f v(1, 2, 4);
    EXPECT_EQ(v + Vec3f(1, 1, 1), Vec3f(2, 3, 5));
    EXPECT_EQ(v - Vec3f(1, 1, 1), Vec3f(0, 1, 3));
    EXPECT_EQ(-v, Vec3f(-1, -2, -4));
    EXPECT_EQ(v * 2.f, Vec3f(2, 4, 8));
    EXPECT_EQ(2.f * v, Vec3f(2, 4, 8));
    EXPECT_EQ(v / 2.f, Vec3f(0.5f, 1, 2));
    v += Vec3f(1, 0, 0);
    v -= Vec3f(0, 1, 0);
    v *= 3.f;
    v /= 2.f;
    EXPECT_EQ(v, Vec3f(3, 1.5f, 6));
}

TEST(Vector, DotAndCrossAreRightHanded)
{
    EXPECT_EQ(Vec3f(1, 2, 3).dot(Vec3f(4, 5, 6)), 32.f);
    EXPECT_EQ(Vec3f(1, 2, 3) * Vec3f(4, 5, 6), 32.f);
    EXPECT_EQ(Vec3f(1, 0, 0).cross(Vec3f(0, 1, 0)), Vec3f(0, 0, 1));
    EXPECT_EQ(Vec3f(1, 2, 3).cross(Vec3f(4, 5, 6)), Vec3f(-3, 6, -3));
}

TEST(Vector, SumOfProductsRoundsFromTheFirstCoordinateOn)
{
    // (1e8 * 1 + 1 * 1) loses the 1; the other order would keep it.
    EXPECT_EQ(Vec3f(1e8f, 1.f, -1e8f).dot(Vec3f(1, 1, 1)), 0.f);
}

TEST(Vector, LengthIsTheRootOfTheSquares)
{
    EXPECT_EQ(Vec3f(2, 3, 6).squareLength(), 49.f);
    EXPECT_EQ(Vec3f(2, 3, 6).length(), 7.f);
    EXPECT_EQ(Pnt3f(1, 1, 1).dist(Pnt3f(1, 4, 5)), 5.f);
}

TEST(Vector, NormalizeMultipliesByTheReciprocal)
{
    OSG::Test::RandomNumbers random(1);
    for(int i = 0; i < 1000; ++i)
    {
        Vec3f v = random.vector() * 10.f;
        Real32 const scale = 1.f / v.length();
        Vec3f const expected(v[0] * scale, v[1] * scale, v[2] * scale);
        v.normalize();
        ASSERT_EQ(v, expected);
        ASSERT_NEAR(v.length(), 1.f, 1e-6f);
    }
}

TEST(Vector, ShortVectorKeepsItsLength)
{
    Vec3f below(9e-7f, 0, 0);
    below.normalize();
    EXPECT_EQ(below, Vec3f(9e-7f, 0, 0));
    Vec3f above(0, 1.1e-6f, 0);
    above.normalize();
    EXPECT_NEAR(above.length(), 1.f, 1e-6f);
    Vec3f zero;
    zero.normalize();
    EXPECT_EQ(zero, Vec3f());
}

TEST(Vector, ComparisonIsExactAndNotANumberEqualsNothing)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_NE(Vec3f(1, 2, 3), Vec3f(1, 2, std::nextafter(3.f, 4.f)));
    EXPECT_NE(Vec3f(nan, 0, 0), Vec3f(nan, 0, 0));
    EXPECT_FALSE(Vec3f(nan, 0, 0).equals(Vec3f(nan, 0, 0), 1.f));
}

TEST(Vector, EqualsTakesTheToleranceIn)
{
    EXPECT_TRUE(Vec3f(1, 2, 3).equals(Vec3f(1.5f, 2, 2.5f), 0.5f));
    EXPECT_FALSE(Vec3f(1, 2, 3).equals(Vec3f(1.5f, 2, 2.5f), 0.25f));
}
} // namespace
