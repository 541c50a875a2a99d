// The moves of a 3D mouse.

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGViewMoves.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Nan = std::numeric_limits<Real32>::quiet_NaN();
constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();
constexpr Real64 Thousandth = 0.001;
Vec3f const None(0, 0, 0);

class MoveBy : public testing::TestWithParam<bool>
{
  protected:
    bool isOrthographic() const { return GetParam(); }
    WindowView view() { return random_view(random, isOrthographic()); }

    RandomNumbers random{77};
};
INSTANTIATE_TEST_SUITE_P(Projections, MoveBy, testing::Bool(),
                         [](auto const &row) { return row.param ? "Flat" : "Perspective"; });

/// A point as the camera sees it: x to the right, y upwards, z backwards.
Vec3d seen_from(WindowView const &view, Pnt3f const &point)
{
    Matrix4d const viewing = slow_viewing(view);
    Vec3d result;
    for(UInt32 r = 0; r < 3; ++r)
        result[r] = viewing[0][r] * point[0] + viewing[1][r] * point[1] + viewing[2][r] * point[2] +
                    viewing[3][r];
    return result;
}

/// Rodrigues' formula once more.
Vec3d turned_by(Vec3d const &v, Vec3f const &turn)
{
    Vec3d const wide(turn[0], turn[1], turn[2]);
    Real64 const angle = wide.length();
    Vec3d const axis = wide / angle;
    return v * std::cos(angle) + axis.cross(v) * std::sin(angle) +
           axis * (axis.dot(v) * (1 - std::cos(angle)));
}

TEST_P(MoveBy, AShiftMovesWhatIsSeenTheOtherWay)
{
    for(int round = 0; round < 200; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = random.point(-3, 3);
        Vec3f const shift = random.vector();
        Vec3d const way = seen_from(v, p) - seen_from(move_by(v, shift, None), p);
        EXPECT_NEAR(way[0], shift[0], 1e-4);
        EXPECT_NEAR(way[1], shift[1], 1e-4);
        EXPECT_NEAR(way[2], isOrthographic() ? 0 : shift[2], 1e-4);
    }
}

TEST_P(MoveBy, ATurnAboutTheEyeTurnsWhatIsSeenTheOtherWay)
{
    for(int round = 0; round < 200; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = random.point(-3, 3);
        Vec3f const turn = random.vector();
        WindowView const moved = move_by(v, None, turn);
        EXPECT_LT(moved.from.dist(v.from), 1e-5f);
        EXPECT_LT((turned_by(seen_from(moved, p), turn) - seen_from(v, p)).length(), 1e-3);
    }
}

TEST_P(MoveBy, ATurnAboutAPivotKeepsItInItsPlaceOfTheWindow)
{
    for(int round = 0; round < 200; ++round)
    {
        WindowView v = view();
        Pnt3f const pivot = random.point(-3, 3);
        SlowPixel const before = slow_pixel(v, pivot);
        Vec3d const place = seen_from(v, pivot);
        for(int step = 0; step < 20; ++step)
            v = move_by(v, None, random.vector() * 0.2f, pivot);
        SlowPixel const after = slow_pixel(v, pivot);
        EXPECT_LT(pixels_apart(after, before.x, before.y), Thousandth);
        EXPECT_LT((seen_from(v, pivot) - place).length(), 1e-3);
    }
}

TEST_P(MoveBy, ATurnAboutAPivotIsTheOrbitAboutIt)
{
    for(int round = 0; round < 100; ++round)
    {
        WindowView const v = view();
        Pnt3f const pivot = random.point(-3, 3);
        Vec3f const upwards(v.up - (v.from - v.at) * (v.up.dot(v.from - v.at) /
                                                      (v.from - v.at).dot(v.from - v.at)));
        WindowView const orbit = orbit_about(v, pivot, upwards, 0.3f);
        WindowView const moved = move_by(v, None, Vec3f(0, 0.3f, 0), pivot);
        EXPECT_LT(moved.from.dist(orbit.from), 1e-4f);
        EXPECT_LT(moved.at.dist(orbit.at), 1e-4f);
    }
}

TEST_P(MoveBy, APivotBehindOrBesideTheEyeIsGoneRoundToo)
{
    WindowView const v = view();
    for(Real32 const depth : {0.f, -1.f})
    {
        Pnt3f const pivot = v.from + (v.at - v.from) * depth;
        Vec3d const place = seen_from(v, pivot);
        WindowView const moved = move_by(v, None, Vec3f(0.1f, 0.5f, 0), pivot);
        EXPECT_NE(moved, v);
        EXPECT_LT((seen_from(moved, pivot) - place).length(), 1e-3) << depth;
    }
}

TEST_P(MoveBy, ATurnComesBeforeTheShift)
{
    WindowView const v = view();
    Vec3f const shift(2, 1, 0);
    Vec3f const turn(0.2f, -0.5f, 0.1f);
    WindowView const both = move_by(v, shift, turn);
    WindowView const oneByOne = move_by(move_by(v, None, turn), shift, None);
    EXPECT_LT(both.from.dist(oneByOne.from), 1e-4f);
    EXPECT_LT(both.at.dist(oneByOne.at), 1e-4f);
}

TEST_P(MoveBy, ThereAndBackLeadsHome)
{
    WindowView const v = view();
    Vec3f const shift(0.5f, -0.25f, -2);
    WindowView const there = move_by(v, shift, None);
    WindowView const back = move_by(there, -shift, None);
    EXPECT_LT(back.from.dist(v.from), 1e-4f);
    EXPECT_LT(back.at.dist(v.at), 1e-4f);
    if(isOrthographic())
    {
        EXPECT_NEAR(*back.orthographicHeight, *v.orthographicHeight, 1e-4);
    }
}

TEST(MoveByFlat, ForwardsZoomsInAboutThePivot)
{
    RandomNumbers random(3);
    WindowView const v = random_view(random, true);
    Real32 const distance = v.from.dist(v.at);
    WindowView const near = move_by(v, Vec3f(0, 0, -distance), None);
    EXPECT_NEAR(*near.orthographicHeight, *v.orthographicHeight / std::numbers::e, 1e-4);
    EXPECT_LT(near.from.dist(v.from), 1e-5f);
    Pnt3f const pivot(1, 2, 1);
    SlowPixel const before = slow_pixel(v, pivot);
    SlowPixel const after = slow_pixel(move_by(v, Vec3f(0, 0, -5), None, pivot), pivot);
    EXPECT_LT(pixels_apart(after, before.x, before.y), Thousandth);
}

TEST(MoveByFlat, ItDoesNotZoomBeyondWhatTheNumbersShow)
{
    RandomNumbers random(3);
    WindowView v = random_view(random, true);
    for(int i = 0; i < 1000; ++i)
        v = move_by(v, Vec3f(0.01f, 0, -9), None);
    EXPECT_TRUE(is_view(v));
    EXPECT_GT(*v.orthographicHeight, 1e-3f);
    WindowView const beside = move_by(v, Vec3f(1, 0, -9), None); // the shift to the side counts
    EXPECT_NEAR(beside.from.dist(v.from), 1, 1e-4);
    EXPECT_EQ(move_by(v, Vec3f(0, 0, 1e38f), None), v); // to no view
}

TEST_P(MoveBy, BadInputAndNoMoveLeaveTheViewAsItIs)
{
    WindowView const v = view();
    EXPECT_EQ(move_by(v, None, None), v);
    EXPECT_EQ(move_by(v, None, None, Pnt3f(1, 2, 3)), v);
    for(Real32 const bad : {Nan, Infinity})
    {
        EXPECT_EQ(move_by(v, Vec3f(0, bad, 0), None), v);
        EXPECT_EQ(move_by(v, None, Vec3f(bad, 0, 0)), v);
        EXPECT_EQ(move_by(v, Vec3f(1, 0, 0), None, Pnt3f(0, 0, bad)), v);
    }
    EXPECT_EQ(move_by(v, Vec3f(3e38f, 3e38f, 0), None), v);
    WindowView none = v;
    none.width = 0;
    EXPECT_EQ(move_by(none, Vec3f(1, 0, 0), None), none);
}
} // namespace
