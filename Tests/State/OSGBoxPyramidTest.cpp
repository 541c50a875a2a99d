#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "OSGBoxPyramid.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
Matrix4d perspective(RandomNumbers &random)
{
    Real64 const n = 0.1;
    Real64 const f = 500;
    Matrix4d projection;
    projection[0][0] = projection[1][1] = 1.5;
    projection[2][2] = -(f + n) / (f - n);
    projection[2][3] = -1;
    projection[3][2] = -2 * f * n / (f - n);
    projection[3][3] = 0;
    Matrix viewing;
    viewing.setRotate(Quaternion(random.vector(), random.real(0, 3)));
    viewing[3][0] = random.real(-20, 20);
    viewing[3][2] = random.real(-20, 20);
    return projection * Matrix4d(viewing);
}

bool is_drawn(Matrix4d const &toScreen, Pnt3f const &point)
{
    Real64 clip[4];
    for(std::size_t r = 0; r < 4; ++r)
        clip[r] = toScreen[0][r] * point[0] + toScreen[1][r] * point[1] +
                  toScreen[2][r] * point[2] + toScreen[3][r];
    for(int i = 0; i < 3; ++i)
    {
        if(!(std::abs(clip[i]) <= clip[3]))
            return false;
    }
    return true;
}

BoxVolume random_box(RandomNumbers &random, Real32 scale)
{
    Pnt3f const corner = random.point(-40, 40);
    Pnt3f other;
    for(UInt32 i = 0; i < 3; ++i)
        other[i] = corner[i] + random.real(0, 5);
    return BoxVolume(Pnt3f(corner[0] * scale, corner[1] * scale, corner[2] * scale),
                     Pnt3f(other[0] * scale, other[1] * scale, other[2] * scale));
}

bool is_seen(std::vector<UInt64> const &bits, UInt32 i)
{
    return (bits[i / 64] >> i % 64 & 1) != 0;
}

TEST(BoxPyramidTest, ABoxWithAPointInThePictureIsSeenAndOneBehindAPlaneIsNot)
{
    RandomNumbers random(1);
    UInt32 seen = 0;
    UInt32 missed = 0;
    UInt32 spared = 0;
    for(UInt32 const count : {1u, 7u, 8u, 9u, 64u, 65u, 513u, 5000u})
    {
        BoxPyramid pyramid;
        pyramid.resize(count);
        std::vector<BoxVolume> boxes;
        for(UInt32 i = 0; i < count; ++i)
        {
            boxes.push_back(random_box(random, 1));
            pyramid.set(i, boxes.back());
        }
        pyramid.update(0, count);
        for(int view = 0; view < 20; ++view)
        {
            Matrix4d const toScreen = perspective(random);
            ViewPlanes planes(toScreen);
            planes.setReach(pyramid.getReach());
            std::vector<UInt64> bits;
            pyramid.findSeen(planes, bits);
            for(UInt32 i = 0; i < count; ++i)
            {
                Pnt3f centre;
                boxes[i].getCenter(centre);
                bool const isDrawn = is_drawn(toScreen, centre) ||
                                     is_drawn(toScreen, boxes[i].getMin()) ||
                                     is_drawn(toScreen, boxes[i].getMax());
                ASSERT_TRUE(!isDrawn || is_seen(bits, i));
                // One by one the planes miss a little more, as they know how large the box is.
                bool const isMissed = planes.test(boxes[i]) == ViewPlanes::Sight::None;
                ASSERT_TRUE(is_seen(bits, i) || isMissed);
                spared += is_seen(bits, i) && isMissed ? 1u : 0u;
                ++(is_seen(bits, i) ? seen : missed);
            }
        }
    }
    EXPECT_GT(seen, 1000u);
    EXPECT_GT(missed, 1000u);
    EXPECT_LT(spared, 10u);
}

TEST(BoxPyramidTest, AnUpdateOfARangeIsThatOfTheWhole)
{
    RandomNumbers random(2);
    BoxPyramid kept;
    kept.resize(1000);
    std::vector<BoxVolume> boxes(1000);
    for(int round = 0; round < 50; ++round)
    {
        UInt32 const first = random.below(1000);
        UInt32 const end = first + random.below(1000 - first) + 1;
        for(UInt32 i = first; i < end; ++i)
        {
            boxes[i] = random_box(random, 1);
            kept.set(i, boxes[i]);
        }
        kept.update(first, end);
        BoxPyramid fresh;
        fresh.resize(1000);
        for(UInt32 i = 0; i < 1000; ++i)
            fresh.set(i, boxes[i]);
        fresh.update(0, 1000);
        ViewPlanes planes(perspective(random));
        planes.setReach(kept.getReach());
        std::vector<UInt64> bits;
        std::vector<UInt64> expected;
        kept.findSeen(planes, bits);
        fresh.findSeen(planes, expected);
        ASSERT_EQ(bits, expected);
    }
}

TEST(BoxPyramidTest, InfiniteAndBrokenBoxesAreSeenAndEmptyOnesAreNot)
{
    constexpr Real32 NaN = std::numeric_limits<Real32>::quiet_NaN();
    RandomNumbers random(3);
    BoxVolume infinite;
    infinite.setInfinite();
    BoxVolume outOfDate(Pnt3f(1e9f, 0, 0), Pnt3f(1e9f, 0, 0));
    outOfDate.setValid(false);
    BoxVolume broken(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1));
    broken.setBounds(Pnt3f(NaN, 0, 0), Pnt3f(1, 1, 1));
    BoxVolume empty;
    empty.setEmpty();
    BoxPyramid pyramid;
    pyramid.resize(4);
    pyramid.set(0, infinite);
    pyramid.set(1, outOfDate);
    pyramid.set(2, broken);
    pyramid.set(3, empty);
    pyramid.update(0, 4);
    std::vector<UInt64> bits;
    pyramid.findSeen(ViewPlanes(perspective(random)), bits);
    EXPECT_EQ(bits, std::vector<UInt64>{7});
}

TEST(BoxPyramidTest, NothingAndAViewWithoutNumbersMissNothing)
{
    std::vector<UInt64> bits;
    BoxPyramid pyramid;
    pyramid.findSeen(ViewPlanes(), bits);
    EXPECT_TRUE(bits.empty());
    pyramid.resize(0);
    pyramid.findSeen(ViewPlanes(), bits);
    EXPECT_TRUE(bits.empty());
    pyramid.resize(1);
    pyramid.set(0, BoxVolume(Pnt3f(0, 0, 0), Pnt3f(1, 1, 1)));
    pyramid.update(0, 1);
    Matrix4d broken;
    broken[0][0] = std::numeric_limits<Real64>::quiet_NaN();
    broken[3][3] = std::numeric_limits<Real64>::quiet_NaN();
    pyramid.findSeen(ViewPlanes(broken), bits);
    EXPECT_EQ(bits, std::vector<UInt64>{1});
}
} // namespace
} // namespace OSG::Test
