#include "OSGPickVolume.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
constexpr Real32 Nan = std::numeric_limits<Real32>::quiet_NaN();

// Looks along -z from z = 10; a window twice as wide as high, 90 degrees: the window is 2 high and
// 4 wide at depth 1.
WindowView straight_view() { return {{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 90, 200, 100}; }
BoxVolume unit_box() { return {{-1, -1, -1}, {1, 1, 1}}; }
PixelArea whole_window() { return {0, 0, 200, 100}; }

void expect_near(Pnt3f const &point, Pnt3f const &wanted)
{
    for(int i = 0; i < 3; ++i)
        EXPECT_NEAR(point[i], wanted[i], 1e-5f * std::max(1.f, std::abs(wanted[i]))) << i;
}

TEST(PickVolume, TheWholeWindowIsTheViewFromTheFrontToTheBackOfTheBounds)
{
    auto const volume = pick_volume(straight_view(), whole_window(), unit_box());
    ASSERT_TRUE(volume);
    Real32 const front = 9 * 0.999f;
    Real32 const back = 11 * 1.001f;
    expect_near(volume->nlb(), {-2 * front, -front, 10 - front});
    expect_near(volume->nrb(), {2 * front, -front, 10 - front});
    expect_near(volume->nrt(), {2 * front, front, 10 - front});
    expect_near(volume->nlt(), {-2 * front, front, 10 - front});
    expect_near(volume->flb(), {-2 * back, -back, 10 - back});
    expect_near(volume->frb(), {2 * back, -back, 10 - back});
    expect_near(volume->frt(), {2 * back, back, 10 - back});
    expect_near(volume->flt(), {-2 * back, back, 10 - back});
}

TEST(PickVolume, WithoutPerspectiveTheSidesAreParallel)
{
    WindowView view = straight_view();
    view.orthographicHeight = 4;
    auto const volume = pick_volume(view, whole_window(), unit_box());
    ASSERT_TRUE(volume);
    Real32 const front = 9 * 0.999f;
    Real32 const back = 11 * 1.001f;
    expect_near(volume->nlb(), {-4, -2, 10 - front});
    expect_near(volume->nrt(), {4, 2, 10 - front});
    expect_near(volume->flb(), {-4, -2, 10 - back});
    expect_near(volume->frt(), {4, 2, 10 - back});
    // The field of view is not looked at.
    view.fieldOfView = Nan;
    EXPECT_TRUE(pick_volume(view, whole_window(), unit_box()));
}

TEST(PickVolume, WithoutPerspectiveTheNearSideDoesNotDependOnTheEyesNumbers)
{
    WindowView view = straight_view();
    view.orthographicHeight = 1000;
    view.from = Pnt3f(4096, 0, 0.5f);
    view.at = Pnt3f(4096, 0, 0);
    BoxVolume const bounds(Pnt3f(4095, -1, -1), Pnt3f(4097, 1, 1));
    auto const volume = pick_volume(view, whole_window(), bounds);
    ASSERT_TRUE(volume);
    EXPECT_FLOAT_EQ(volume->nlb()[2], 0.5f - 1.5f * 1.001f / 10000);
}

TEST(PickVolume, APixelReachesItsRadiusToEachSide)
{
    PixelArea const area = pixel_square(150, 25, 2);
    EXPECT_EQ(area.left, 148);
    EXPECT_EQ(area.top, 23);
    EXPECT_EQ(area.right, 152);
    EXPECT_EQ(area.bottom, 27);
    auto const volume = pick_volume(straight_view(), area, unit_box());
    ASSERT_TRUE(volume);
    // A pixel is a fiftieth of the depth.
    Real32 const back = 11 * 1.001f;
    expect_near(volume->flb(), {48 * back / 50, 23 * back / 50, 10 - back});
    expect_near(volume->frt(), {52 * back / 50, 27 * back / 50, 10 - back});
}

TEST(PickVolume, ARectangleIsTheSameFromAnyCorner)
{
    PixelArea const area = pixel_rectangle(30, 4, 10, 20);
    EXPECT_EQ(area.left, 10);
    EXPECT_EQ(area.top, 4);
    EXPECT_EQ(area.right, 30);
    EXPECT_EQ(area.bottom, 20);
}

TEST(PickVolume, FromWithinTheBoundsTheNearSideIsATenThousandthOfTheFarSide)
{
    WindowView view = straight_view();
    view.from = Pnt3f(0, 0, 0.5f);
    auto const volume = pick_volume(view, whole_window(), unit_box());
    ASSERT_TRUE(volume);
    Real32 const back = 1.5f * 1.001f;
    EXPECT_FLOAT_EQ(volume->nrt()[1], back / 10000);
    EXPECT_FLOAT_EQ(volume->flb()[2], 0.5f - back);
}

TEST(PickVolume, TheNearSideIsNoSmallerThanTheNumbersCanCarry)
{
    // At 4096 the numbers are 2^-11 apart; a pixel of this window is a fiftieth of the depth.
    WindowView view = straight_view();
    view.from = Pnt3f(4096, 0, 0.5f);
    view.at = Pnt3f(4096, 0, 0);
    BoxVolume const bounds(Pnt3f(4095, -1, -1), Pnt3f(4097, 1, 1));
    Real32 const depth = 16 * std::ldexp(1.f, -11) / 2 * 50;
    auto const two = pick_volume(view, pixel_square(100, 50, 2), bounds);
    ASSERT_TRUE(two);
    EXPECT_FLOAT_EQ(two->nlb()[2], 0.5f - depth);
    auto const one = pick_volume(view, pixel_square(100, 50, 1), bounds, 1);
    ASSERT_TRUE(one);
    EXPECT_FLOAT_EQ(one->nlb()[2], 0.5f - 2 * depth);
    // Whatever the area.
    auto const all = pick_volume(view, whole_window(), bounds);
    ASSERT_TRUE(all);
    EXPECT_FLOAT_EQ(all->nlb()[2], 0.5f - depth);
}

TEST(PickVolume, WhereNearIsNotBeforeFarThereIsNone)
{
    WindowView view = straight_view();
    view.from = Pnt3f(1e7f, 0, 0.5f);
    view.at = Pnt3f(1e7f, 0, -10);
    BoxVolume const bounds(Pnt3f(1e7f - 1, -1, -1), Pnt3f(1e7f + 1, 1, 1));
    EXPECT_FALSE(pick_volume(view, whole_window(), bounds));
}

TEST(PickVolume, ThePlanesPointInwards)
{
    auto const volume = pick_volume(straight_view(), whole_window(), unit_box());
    ASSERT_TRUE(volume);
    FrustumVolume const planes = volume->Volume();
    for(int i = 0; i < 6; ++i)
        EXPECT_TRUE(planes.getPlane(i).isInHalfSpace(Pnt3f(0, 0, 0))) << i;
}

// The place of a point in the window, by the formula of a pinhole camera.
struct Shown
{
    Real64 x, y, depth;
};
Shown show(WindowView const &view, Pnt3f const &point)
{
    Vec3f back = view.from - view.at;
    back.normalize();
    Vec3f right = view.up.cross(back);
    right.normalize();
    Vec3f const up = back.cross(right);
    Vec3f const to = point - view.from;
    Real64 const depth = -Real64(to.dot(back));
    Real64 const focal = view.height / 2.0 / std::tan(view.fieldOfView * M_PI / 360);
    return {view.width / 2.0 + focal * to.dot(right) / depth,
            view.height / 2.0 - focal * to.dot(up) / depth, depth};
}

TEST(PickVolume, HoldsThePointsThatShowInTheArea)
{
    RandomNumbers random(17);
    int inside = 0;
    for(int round = 0; round < 200; ++round)
    {
        WindowView const view = {random.point(-20, 20),   random.point(-1, 1),
                                 random.vector(),         random.real(20, 110),
                                 100 + random.below(900), 100 + random.below(900)};
        PixelArea const area = pixel_rectangle(
            random.real(0, Real32(view.width)), random.real(0, Real32(view.height)),
            random.real(0, Real32(view.width)), random.real(0, Real32(view.height)));
        auto const volume = pick_volume(view, area, {Pnt3f(-5, -5, -5), Pnt3f(5, 5, 5)});
        if(!volume)
            continue;
        FrustumVolume const planes = volume->Volume();
        for(int i = 0; i < 50; ++i)
        {
            Pnt3f const point = random.point(-5, 5);
            Shown const shown = show(view, point);
            // Points within a tenth of a pixel of the border are not compared.
            Real64 const margin =
                std::min({shown.x - area.left, area.right - shown.x, shown.y - area.top,
                          area.bottom - shown.y, 1000 * (shown.depth - 0.01)});
            if(std::abs(margin) < 0.1)
                continue;
            bool held = true;
            for(int plane = 0; plane < 6; ++plane)
                held = held && planes.getPlane(plane).isInHalfSpace(point);
            ASSERT_EQ(held, margin > 0) << round << ": " << testing::PrintToString(point);
            inside += held ? 1 : 0;
        }
    }
    EXPECT_GT(inside, 100);
}

struct NoViewCase
{
    char const *name;
    WindowView view;
};

class NoView : public testing::TestWithParam<NoViewCase>
{
};

TEST_P(NoView, GivesNoVolume)
{
    EXPECT_FALSE(is_view(GetParam().view));
    EXPECT_FALSE(pick_volume(GetParam().view, whole_window(), unit_box()));
}

INSTANTIATE_TEST_SUITE_P(
    PickVolume, NoView,
    testing::Values(NoViewCase{"AtIsFrom", {{0, 0, 1}, {0, 0, 1}, {0, 1, 0}, 45, 9, 9}},
                    NoViewCase{"UpAlongTheView", {{0, 0, 9}, {0, 0, 0}, {0, 0, 2}, 45, 9, 9}},
                    NoViewCase{"NoUp", {{0, 0, 9}, {0, 0, 0}, {0, 0, 0}, 45, 9, 9}},
                    NoViewCase{"NoAngle", {{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, 0, 9, 9}},
                    NoViewCase{"HalfATurn", {{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, 180, 9, 9}},
                    NoViewCase{"AngleNotANumber", {{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, Nan, 9, 9}},
                    NoViewCase{"EyeNotANumber", {{Nan, 0, 9}, {0, 0, 0}, {0, 1, 0}, 45, 9, 9}},
                    NoViewCase{"NoWidth", {{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, 45, 0, 9}},
                    NoViewCase{"NoHeight", {{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, 45, 9, 0}}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(PickVolume, WhatLiesBehindTheEyeIsNotPicked)
{
    WindowView view = straight_view();
    view.at = Pnt3f(0, 0, 20);
    EXPECT_FALSE(pick_volume(view, whole_window(), unit_box()));
    // Its front just reaches the eye.
    EXPECT_FALSE(pick_volume(view, whole_window(), {Pnt3f(-1, -1, -1), Pnt3f(1, 1, 10)}));
    EXPECT_TRUE(pick_volume(view, whole_window(), {Pnt3f(-1, -1, -1), Pnt3f(1, 1, 10.01f)}));
}

TEST(PickVolume, BoundsWithoutContentOrEndGiveNone)
{
    EXPECT_FALSE(pick_volume(straight_view(), whole_window(), BoxVolume()));
    BoxVolume endless;
    endless.setInfinite();
    EXPECT_FALSE(pick_volume(straight_view(), whole_window(), endless));
    Real32 const inf = std::numeric_limits<Real32>::infinity();
    EXPECT_FALSE(
        pick_volume(straight_view(), whole_window(), {Pnt3f(-1, -1, -inf), Pnt3f(1, 1, inf)}));
}

TEST(PickVolume, AnAreaWithoutExtentGivesNone)
{
    EXPECT_FALSE(pick_volume(straight_view(), pixel_square(50, 50, 0), unit_box()));
    EXPECT_FALSE(pick_volume(straight_view(), pixel_rectangle(1, 5, 9, 5), unit_box()));
    EXPECT_FALSE(pick_volume(straight_view(), pixel_square(Nan, 50, 2), unit_box()));
}
} // namespace
} // namespace OSG::Test
