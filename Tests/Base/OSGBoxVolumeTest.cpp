#include "OSGBoxVolume.h"

#include <algorithm>
#include <limits>

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGFrustumVolume.h"
#include "RandomNumbers.h"

namespace
{
using namespace OSG;
using OSG::Test::RandomNumbers;

Real32 const Nan = std::numeric_limits<Real32>::quiet_NaN();
Real32 const Infinity = std::numeric_limits<Real32>::infinity();

BoxVolume random_box(RandomNumbers &random)
{
    BoxVolume box;
    box.extendBy(random.point(-10, 10));
    box.extendBy(random.point(-10, 10));
    return box;
}

std::array<Pnt3f, 8> corners(BoxVolume const &box)
{
    std::array<Pnt3f, 8> result;
    for(unsigned i = 0; i < 8; ++i)
    {
        result[i] = Pnt3f((i & 1 ? box.getMax() : box.getMin())[0],
                          (i & 2 ? box.getMax() : box.getMin())[1],
                          (i & 4 ? box.getMax() : box.getMin())[2]);
    }
    return result;
}

TEST(BoxVolume, StartsEmptyAndTakesTheFirstPoint)
{
    BoxVolume box;
    EXPECT_TRUE(box.isEmpty());
    box.extendBy(Pnt3f(1, 2, 3));
    EXPECT_FALSE(box.isEmpty());
    EXPECT_EQ(box.getMin(), Pnt3f(1, 2, 3));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 2, 3));
}

TEST(BoxVolume, GrowsByPointsAndTellsItsCenter)
{
    BoxVolume box;
    box.extendBy(Pnt3f(1, 2, 3));
    box.extendBy(Pnt3f(-1, 4, 3));
    EXPECT_EQ(box.getMin(), Pnt3f(-1, 2, 3));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 4, 3));
    Pnt3f center;
    box.getCenter(center);
    EXPECT_EQ(center, Pnt3f(0, 3, 3));
}

TEST(BoxVolume, CenterOfHugeBoundsDoesNotOverflow)
{
    Pnt3f center;
    BoxVolume(Pnt3f(3e38f, 0, 0), Pnt3f(3.2e38f, 0, 0)).getCenter(center);
    EXPECT_NEAR(center[0] / 3.1e38f, 1.f, 1e-6f);
}

TEST(BoxVolume, PointThatIsNotANumberAddsNothing)
{
    BoxVolume box;
    box.extendBy(Pnt3f(0, Nan, 0));
    EXPECT_TRUE(box.isEmpty());
    box.extendBy(Pnt3f(1, 1, 1));
    box.extendBy(Pnt3f(5, 5, Nan));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 1, 1));
    box.extendBy(Pnt3f(Infinity, 1, 1));
    EXPECT_EQ(box.getMax(), Pnt3f(Infinity, 1, 1));
}

TEST(BoxVolume, ExtendJoinsBothBoxes)
{
    BoxVolume box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    extend(box, BoxVolume(Pnt3f(-1, 0.5f, 0), Pnt3f(0, 0.6f, 7)));
    EXPECT_EQ(box.getMin(), Pnt3f(-1, 0, 0));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 1, 7));
}

TEST(BoxVolume, EmptyOrInvalidBoxAddsNothing)
{
    BoxVolume const start(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    BoxVolume box = start;
    extend(box, BoxVolume());
    BoxVolume invalid(Pnt3f(5, 5, 5), Pnt3f(6, 6, 6));
    invalid.setValid(false);
    extend(box, invalid);
    EXPECT_TRUE(box == start);
}

TEST(BoxVolume, EmptyBoxBecomesTheOther)
{
    BoxVolume box;
    extend(box, BoxVolume(Pnt3f(1, 2, 3), Pnt3f(4, 5, 6)));
    EXPECT_TRUE(box == BoxVolume(Pnt3f(1, 2, 3), Pnt3f(4, 5, 6)));
}

TEST(BoxVolume, EmptyBoxTakesCornersInEitherOrder)
{
    BoxVolume box;
    extend(box, BoxVolume(Pnt3f(4, 2, 3), Pnt3f(1, 5, 0)));
    EXPECT_TRUE(box == BoxVolume(Pnt3f(1, 2, 0), Pnt3f(4, 5, 3)));
}

TEST(BoxVolume, InfiniteBoxMakesInfiniteAndStays)
{
    BoxVolume box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    BoxVolume infinite;
    infinite.setInfinite(true);
    extend(box, infinite);
    EXPECT_TRUE(box.isInfinite());
    extend(box, BoxVolume(Pnt3f(0, 0, 0), Pnt3f(9, 9, 9)));
    EXPECT_TRUE(box.isInfinite());
}

TEST(BoxVolume, StaticBoxIsLeftByExtensions)
{
    BoxVolume box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    box.setStatic(true);
    box.extendBy(Pnt3f(5, 5, 5));
    extend(box, BoxVolume(Pnt3f(5, 5, 5), Pnt3f(6, 6, 6)));
    EXPECT_EQ(box.getMax(), Pnt3f(1, 1, 1));
}

TEST(BoxVolume, TransformIsTheBoxOfTheMovedCornersBitForBit)
{
    RandomNumbers random(9);
    for(int i = 0; i < 1000; ++i)
    {
        Matrix m;
        for(UInt32 c = 0; c < 4; ++c)
        {
            for(UInt32 r = 0; r < 4; ++r)
                m[c][r] = random.real(-3, 3);
        }
        BoxVolume box = random_box(random);
        BoxVolume expected;
        for(Pnt3f const &corner : corners(box))
            expected.extendBy(m * corner);
        box.transform(m);
        ASSERT_EQ(box.getMin(), expected.getMin());
        ASSERT_EQ(box.getMax(), expected.getMax());
    }
}

TEST(BoxVolume, TransformLeavesEmptyAndInfinite)
{
    Matrix m;
    m.setTranslate(1, 2, 3);
    BoxVolume box;
    box.transform(m);
    EXPECT_TRUE(box.isEmpty());
    box.setInfinite(true);
    box.transform(m);
    EXPECT_TRUE(box.isInfinite());
}

TEST(BoxVolume, TransformToNotANumberMakesInfinite)
{
    BoxVolume box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    Matrix m;
    m[0][1] = Nan;
    box.transform(m);
    EXPECT_TRUE(box.isInfinite());
    BoxVolume endless(Pnt3f(0, 0, 0), Pnt3f(Infinity, 1, 1));
    m.setScale(0);
    endless.transform(m);
    EXPECT_TRUE(endless.isInfinite());
}

TEST(BoxVolume, TouchingBoxesIntersectAndSeparateOnesDoNot)
{
    BoxVolume const box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    EXPECT_TRUE(box.intersect(BoxVolume(Pnt3f(1, 1, 1), Pnt3f(2, 2, 2))));
    EXPECT_FALSE(box.intersect(BoxVolume(Pnt3f(0, 0, 1.5f), Pnt3f(2, 2, 2))));
    EXPECT_FALSE(box.intersect(BoxVolume(Pnt3f(-2, -2, -2), Pnt3f(2, 2, -1))));
    EXPECT_FALSE(box.intersect(BoxVolume()));
    BoxVolume infinite;
    infinite.setInfinite(true);
    EXPECT_TRUE(box.intersect(infinite));
    EXPECT_FALSE(infinite.intersect(BoxVolume()));
}

TEST(BoxVolume, FrustumTestAsksAllEightCornersOfEveryPlane)
{
    RandomNumbers random(10);
    int kept = 0;
    for(int i = 0; i < 3000; ++i)
    {
        Plane planes[6];
        for(Plane &plane : planes)
            plane = Plane(random.vector(), random.point(-8, 8));
        FrustumVolume const frustum(planes[0], planes[1], planes[2], planes[3], planes[4],
                                    planes[5]);
        BoxVolume const box = random_box(random);
        bool expected = true;
        for(Plane const &plane : planes)
        {
            auto const all = corners(box);
            expected = expected && std::any_of(all.begin(), all.end(),
                                               [&](Pnt3f const &corner)
                                               { return plane.isInHalfSpace(corner); });
        }
        ASSERT_EQ(box.intersect(frustum), expected) << "case " << i;
        kept += expected;
    }
    EXPECT_GT(kept, 100);
    EXPECT_LT(kept, 2900);
}

TEST(BoxVolume, FrustumTestKnowsEmptyInfiniteAndTheDefaultFrustum)
{
    Plane const nowhere(Vec3f(1, 0, 0), Pnt3f(1e30f, 0, 0));
    FrustumVolume const far(nowhere, nowhere, nowhere, nowhere, nowhere, nowhere);
    BoxVolume infinite;
    infinite.setInfinite(true);
    EXPECT_TRUE(infinite.intersect(far));
    EXPECT_FALSE(BoxVolume().intersect(FrustumVolume()));
    EXPECT_TRUE(BoxVolume(Pnt3f(-1e30f, 0, 0), Pnt3f(1, 1, 1)).intersect(FrustumVolume()));
}

TEST(BoxVolume, InfiniteBoundsAreCulledByTheirFiniteCornersOnly)
{
    // The normal of the plane z >= 0 has x = 0. The product 0 times infinity must not cull the box.
    Plane const up(Vec3f(0, 0, 1), Pnt3f());
    FrustumVolume const frustum(up, up, up, up, up, up);
    EXPECT_TRUE(BoxVolume(Pnt3f(0, 0, 0), Pnt3f(Infinity, 1, 1)).intersect(frustum));
    EXPECT_FALSE(BoxVolume(Pnt3f(0, 0, -2), Pnt3f(Infinity, 1, -1)).intersect(frustum));
}

TEST(BoxVolume, RayEntersAndLeaves)
{
    BoxVolume const box(Pnt3f(1, -1, -1), Pnt3f(3, 1, 1));
    Real32 enter, exit;
    EXPECT_TRUE(box.intersect(Line(Pnt3f(0, 0, 0), Vec3f(1, 0, 0)), enter, exit));
    EXPECT_EQ(enter, 1.f);
    EXPECT_NEAR(exit, 3.f, 1e-5f);
    EXPECT_TRUE(box.intersect(Line(Pnt3f(2, 0, 0), Vec3f(1, 0, 0)), enter, exit));
    EXPECT_EQ(enter, 0.f);
    EXPECT_FALSE(box.intersect(Line(Pnt3f(4, 0, 0), Vec3f(1, 0, 0)), enter, exit));
    EXPECT_FALSE(box.intersect(Line(Pnt3f(0, 2, 0), Vec3f(1, 0, 0)), enter, exit));
    EXPECT_TRUE(box.intersect(Line(Pnt3f(0, 1, 0), Vec3f(1, 0, 0)), enter, exit));
}

TEST(BoxVolume, RayThroughAPointOfAFlatBoxIsNeverMissed)
{
    RandomNumbers random(11);
    for(int i = 0; i < 3000; ++i)
    {
        BoxVolume box = random_box(random);
        Pnt3f min = box.getMin(), max = box.getMax();
        UInt32 const axis = random.below(3);
        max[axis] = min[axis];
        box.setBounds(min, max);
        Pnt3f target;
        for(int k = 0; k < 3; ++k)
            target[k] = min[k] + (max[k] - min[k]) * random.real(0.01f, 0.99f);
        Pnt3f const start = random.point(-30, 30);
        Real32 enter, exit;
        ASSERT_TRUE(box.intersect(Line(start, target - start), enter, exit)) << "case " << i;
        ASSERT_NEAR(enter, start.dist(target), 1e-3f);
    }
}

TEST(BoxVolume, PointsInTheClosedBoxLieInIt)
{
    BoxVolume const box(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    EXPECT_TRUE(box.intersect(Pnt3f(1, 0, 0.5f)));
    EXPECT_FALSE(box.intersect(Pnt3f(1.1f, 0, 0.5f)));
    EXPECT_FALSE(box.intersect(Pnt3f(Nan, 0, 0.5f)));
    EXPECT_FALSE(BoxVolume().intersect(Pnt3f()));
}
} // namespace
