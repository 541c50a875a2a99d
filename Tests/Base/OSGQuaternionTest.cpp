#include "OSGQuaternion.h"

#include <limits>
#include <numbers>

#include <gmock/gmock.h>

#include "MathPrinters.h"
#include "OSGMatrix.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;

constexpr Real32 Quarter = std::numbers::pi_v<Real32> / 2.f;

Matrix rotation(Quaternion const &q)
{
    Matrix m;
    m.setRotate(q);
    return m;
}

TEST(Quaternion, StartsAsTheIdentity) { EXPECT_EQ(Quaternion(), Quaternion(0, 0, 0, 1)); }

TEST(Quaternion, AxisOfAnyLengthTurnsTheSame)
{
    Quaternion const q(Vec3f(0, 0, 8), Quarter);
    EXPECT_EQ(q, Quaternion(Vec3f(0, 0, 1), Quarter));
    EXPECT_NEAR(q.z(), std::sin(Quarter / 2), 1e-7f);
    EXPECT_NEAR(q.w(), std::cos(Quarter / 2), 1e-7f);
}

TEST(Quaternion, AxisWithoutLengthGivesTheIdentity)
{
    EXPECT_EQ(Quaternion(Vec3f(), 1.f), Quaternion());
    EXPECT_EQ(Quaternion(Vec3f(1e-6f, 0, 0), 1.f), Quaternion());
    EXPECT_NE(Quaternion(Vec3f(1.1e-6f, 0, 0), 1.f), Quaternion());
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    EXPECT_EQ(Quaternion(Vec3f(nan, 0, 0), 1.f), Quaternion());
}

TEST(Quaternion, QuarterTurnsCarryAxesIntoAxes)
{
    struct Case
    {
        Vec3f axis, in, out;
    };
    Case const cases[] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                          {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
                          {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}};
    for(Case const &c : cases)
    {
        Vec3f const turned = rotation(Quaternion(c.axis, Quarter)) * c.in;
        EXPECT_TRUE(turned.equals(c.out, 1e-6f)) << testing::PrintToString(turned);
    }
}

TEST(Quaternion, MatrixIsFilledByTheUsualTerms)
{
    Quaternion const q(1, 2, 3, 4);
    Matrix const expected(Vec4f(1 - 2 * (4 + 9), 2 * (12 + 2), 2 * (3 - 8), 0),
                          Vec4f(2 * (2 - 12), 1 - 2 * (1 + 9), 2 * (4 + 6), 0),
                          Vec4f(2 * (8 + 3), 2 * (6 - 4), 1 - 2 * (1 + 4), 0), Vec4f(0, 0, 0, 1));
    EXPECT_EQ(rotation(q), expected);
}

TEST(Quaternion, ProductTurnsLikeTheProductOfTheMatrices)
{
    OSG::Test::RandomNumbers random(2);
    for(int i = 0; i < 500; ++i)
    {
        Quaternion const a(random.vector(), random.real(-4.f, 4.f));
        Quaternion const b(random.vector(), random.real(-4.f, 4.f));
        ASSERT_TRUE(rotation(a * b).equals(rotation(a) * rotation(b), 1e-5f));
        ASSERT_TRUE(rotation(a * a.inverse()).equals(Matrix(), 1e-5f));
    }
}

TEST(Quaternion, TurnKeepsLengthsAndTheAxis)
{
    OSG::Test::RandomNumbers random(3);
    for(int i = 0; i < 500; ++i)
    {
        Vec3f const axis = random.vector();
        Matrix const turn = rotation(Quaternion(axis, random.real(-7.f, 7.f)));
        Vec3f const v = random.vector();
        ASSERT_NEAR((turn * v).length(), v.length(), 1e-5f);
        ASSERT_TRUE((turn * axis).equals(axis, 1e-5f));
    }
}
} // namespace
