#include "OSGViewMoves.h"

#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Nan = std::numeric_limits<Real32>::quiet_NaN();
constexpr Real64 Thousandth = 0.001;

/// In both projections, about the origin and about a point.
class ViewMoves : public testing::TestWithParam<bool>
{
  protected:
    bool isOrthographic() const { return GetParam(); }
    WindowView view() { return random_view(random, isOrthographic()); }
    /// A point of the scene that all views see, and where the view shows it.
    Pnt3f point() { return random.point(-3, 3); }
    Pnt2f pixelOf(WindowView const &v, Pnt3f const &p)
    {
        SlowPixel const slow = slow_pixel(v, p);
        return Pnt2f(slow.x, slow.y);
    }
    /// The height of the window at the depth of a point.
    static Real64 heightAt(WindowView const &v, Pnt3f const &p)
    {
        if(v.orthographicHeight)
            return *v.orthographicHeight;
        return 2 * slow_pixel(v, p).w * std::tan(v.fieldOfView * M_PI / 360);
    }

    RandomNumbers random{2024};
};
INSTANTIATE_TEST_SUITE_P(Projections, ViewMoves, testing::Bool(),
                         [](auto const &row) { return row.param ? "Flat" : "Perspective"; });

Vec3d direction_of(WindowView const &view)
{
    return unit_wide(Vec3d(view.from[0], view.from[1], view.from[2]) -
                     Vec3d(view.at[0], view.at[1], view.at[2]));
}

TEST_P(ViewMoves, APixelIsWhereTheFullMatrixHasIt)
{
    for(int round = 0; round < 300; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = point();
        std::optional<Pnt2f> const pixel = pixel_of(v, p);
        ASSERT_TRUE(pixel);
        EXPECT_LT(pixels_apart(slow_pixel(v, p), (*pixel)[0], (*pixel)[1]), Thousandth);
    }
}

TEST_P(ViewMoves, APointUnderAPixelIsShownThereAtTheDepthAskedFor)
{
    for(int round = 0; round < 300; ++round)
    {
        WindowView const v = view();
        Pnt3f const deep = point();
        Pnt2f const pixel(random.real(0, 500), random.real(0, 500));
        std::optional<Pnt3f> const under = point_under(v, pixel, deep);
        ASSERT_TRUE(under);
        EXPECT_LT(pixels_apart(slow_pixel(v, *under), pixel[0], pixel[1]), Thousandth);
        EXPECT_NEAR(slow_pixel(v, *under).w, slow_pixel(v, deep).w, 1e-4);
    }
}

TEST_P(ViewMoves, AThousandStepsOfZoomKeepThePointUnderTheCursor)
{
    Real64 worst = 0;
    for(int round = 0; round < 20; ++round)
    {
        WindowView v = view();
        Vec3d const direction = direction_of(v);
        Pnt3f const p = point();
        Pnt2f const cursor = pixelOf(v, p);
        Real64 const begin = heightAt(v, p);
        for(int step = 0; step < 1000; ++step)
        {
            // Between three times as large and a third as large.
            Real64 const size = heightAt(v, p) / begin;
            Real32 const factor = size < 1 / 3. ? 0.9f : size > 3 ? 1.1f : random.real(0.8f, 1.25f);
            v = zoom_at(v, p, cursor, factor);
            worst = std::max(worst, pixels_apart(slow_pixel(v, p), cursor[0], cursor[1]));
        }
        EXPECT_LT((direction_of(v) - direction).length(), 1e-4);
    }
    EXPECT_LT(worst, Thousandth);
    EXPECT_GT(worst, 0);
}

TEST_P(ViewMoves, AStepOfZoomShowsThePointsDepthThatMuchLarger)
{
    for(int round = 0; round < 100; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = point();
        Real32 const factor = random.real(0.5f, 2);
        WindowView const zoomed = zoom_at(v, p, pixelOf(v, p), factor);
        EXPECT_NEAR(heightAt(v, p) / heightAt(zoomed, p), factor, 1e-4);
        // What is looked at keeps its place as well.
        if(!isOrthographic())
        {
            Pnt2f const target = pixelOf(zoomed, zoomed.at);
            EXPECT_NEAR(target[0], v.width / 2., Thousandth);
            EXPECT_NEAR(target[1], v.height / 2., Thousandth);
        }
    }
}

TEST_P(ViewMoves, FarFromTheOriginThePointIsKeptWithinTheUnitsOfTheNumbers)
{
    Pnt3f const center(1e6f, -2e5f, 3e5f);
    for(int round = 0; round < 20; ++round)
    {
        WindowView v = random_view(random, isOrthographic(), center);
        Pnt3f const p = center + random.vector();
        Pnt2f const cursor(pixelOf(v, p));
        Vec3d const direction = direction_of(v);
        for(int step = 0; step < 1000; ++step)
        {
            v = zoom_at(v, p, cursor, step % 2 == 0 ? 1.1f : 1 / 1.1f);
            Real64 const pixel = heightAt(v, p) / v.height;
            Real64 const unit = 0.0625; // in the last place at 1e6
            // Half a unit along each of three axes, and what it does to the depth.
            ASSERT_LT(pixels_apart(slow_pixel(v, p), cursor[0], cursor[1]),
                      2 * unit / pixel + Thousandth)
                << step;
        }
        EXPECT_LT((direction_of(v) - direction).length(), isOrthographic() ? 1e-6 : 0.02);
    }
}

TEST_P(ViewMoves, AZoomEndsWhereTheNumbersDo)
{
    WindowView v = view();
    Pnt3f const p = point();
    Pnt2f const cursor = pixelOf(v, p);
    for(int step = 0; step < 1000; ++step)
        v = zoom_at(v, p, cursor, 1.1f);
    EXPECT_TRUE(is_view(v));
    Real64 const pixel = heightAt(v, p) / v.height;
    EXPECT_GT(pixel, 1e-6);
    EXPECT_LT(pixel, 1e-4);
    EXPECT_LT(pixels_apart(slow_pixel(v, p), cursor[0], cursor[1]), 0.1);
    EXPECT_EQ(zoom_at(v, p, cursor, 1.1f), v);
    EXPECT_NE(zoom_at(v, p, cursor, 0.9f), v);
}

TEST_P(ViewMoves, ARectangleFillsTheWindow)
{
    for(int round = 0; round < 200; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = point();
        Pnt2f const a(random.real(0, Real32(v.width)), random.real(0, Real32(v.height)));
        Pnt2f const b(random.real(0, Real32(v.width)), random.real(0, Real32(v.height)));
        WindowView const zoomed = zoom_window(v, a, b, p);
        // The corners, taken at the depth of the point, are as far from the middle on both sides,
        // and touch two edges.
        SlowPixel const atA = slow_pixel(zoomed, *point_under(v, a, p));
        SlowPixel const atB = slow_pixel(zoomed, *point_under(v, b, p));
        EXPECT_NEAR(atA.x + atB.x, v.width, 0.02);
        EXPECT_NEAR(atA.y + atB.y, v.height, 0.02);
        Real64 const across = std::abs(atA.x - atB.x) / v.width;
        Real64 const upwards = std::abs(atA.y - atB.y) / v.height;
        EXPECT_NEAR(std::max(across, upwards), 1, 1e-3);
    }
}

TEST_P(ViewMoves, APanBringsThePointUnderTheCursor)
{
    WindowView v = view();
    Pnt3f const p = point();
    WindowView const begin = v;
    for(int step = 0; step < 1000; ++step)
    {
        Pnt2f const cursor(random.real(0, Real32(v.width)), random.real(0, Real32(v.height)));
        v = pan_to(v, p, cursor);
        ASSERT_LT(pixels_apart(slow_pixel(v, p), cursor[0], cursor[1]), Thousandth);
    }
    EXPECT_LT((direction_of(v) - direction_of(begin)).length(), 1e-6);
    EXPECT_NEAR(slow_pixel(v, p).w, slow_pixel(begin, p).w, 1e-4);
}

TEST_P(ViewMoves, AnOrbitKeepsThePointAndTheDistance)
{
    for(int round = 0; round < 300; ++round)
    {
        WindowView const v = view();
        Pnt3f const p = point();
        Vec3f const axis = random.vector();
        Real32 const angle = random.real(-4, 4);
        WindowView const turned = orbit_about(v, p, axis, angle);
        Pnt2f const before = pixelOf(v, p);
        EXPECT_LT(pixels_apart(slow_pixel(turned, p), before[0], before[1]), Thousandth);
        EXPECT_NEAR((v.from - p).length(), (turned.from - p).length(), 1e-4);
        EXPECT_NEAR(v.from.dist(v.at), turned.from.dist(turned.at), 1e-4);
        // The turn itself: another point, turned with the camera, stays in its place too.
        Pnt3f const other = point();
        Matrix turn;
        turn.setRotate(Quaternion(axis, angle));
        Pnt3f const carried = p + turn * (other - p);
        SlowPixel const there = slow_pixel(v, other);
        EXPECT_LT(pixels_apart(slow_pixel(turned, carried), there.x, there.y), 0.01);
    }
}

TEST_P(ViewMoves, AnOrbitKeepsAPointThatIsFarBehindWhatIsLookedAt)
{
    // What is looked at is so near to the eye that the direction is a matter of few units.
    Pnt3f const eye(1e6f, 0, 0);
    Real64 const unit = 0.0625; // in the last place at 1e6
    for(int round = 0; round < 200; ++round)
    {
        WindowView v = view();
        v.from = eye;
        v.at = eye + Vec3f(random.real(-1, 1), 1, 0);
        v.up = Vec3f(0, 0, 1);
        Pnt3f const p = eye + Vec3f(random.real(-30, 30), 200, random.real(-30, 30));
        WindowView const turned = orbit_about(v, p, random.vector(), random.real(-1, 1));
        Pnt2f const before = pixelOf(v, p);
        EXPECT_LT(pixels_apart(slow_pixel(turned, p), before[0], before[1]),
                  unit / (heightAt(v, p) / v.height) + Thousandth);
    }
}

TEST_P(ViewMoves, AnUprightOrbitKeepsThePointAndTheHorizon)
{
    Vec3f const top(0, 0, 1);
    for(int round = 0; round < 300; ++round)
    {
        WindowView v = view();
        v.up = top;
        Pnt3f const p = point();
        Pnt2f const before = pixelOf(v, p);
        WindowView const turned = orbit_upright(v, p, top, random.real(-7, 7), random.real(-4, 4));
        EXPECT_LT(pixels_apart(slow_pixel(turned, p), before[0], before[1]), Thousandth);
        // The camera's right stays level.
        Matrix4d const viewing = slow_viewing(turned);
        EXPECT_NEAR(viewing[2][0], 0, 1e-6);
        EXPECT_GT(viewing[2][1], -1e-6); // and its up does not point downwards
    }
}

TEST(ViewMovesDirections, AnUprightOrbitToTheRightAndUpwardsMovesTheEyeThere)
{
    WindowView const v{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
    WindowView const right = orbit_upright(v, {0, 0, 0}, {0, 1, 0}, 0.5f, 0);
    EXPECT_NEAR(right.from[0], 10 * std::sin(0.5), 1e-5);
    EXPECT_NEAR(right.from[2], 10 * std::cos(0.5), 1e-5);
    WindowView const higher = orbit_upright(v, {0, 0, 0}, {0, 1, 0}, 0, 0.5f);
    EXPECT_NEAR(higher.from[1], 10 * std::sin(0.5), 1e-5);
    WindowView const highest = orbit_upright(v, {0, 0, 0}, {0, 1, 0}, 0, 9);
    EXPECT_NEAR(highest.from[1], 10, 1e-5);
    EXPECT_NEAR(highest.up[2], -1, 1e-5);
    EXPECT_TRUE(is_view(highest));
}

TEST_P(ViewMoves, BadInputLeavesTheViewAsItIs)
{
    WindowView const v = view();
    Pnt3f const p = point();
    Pnt2f const pixel(9, 9);
    for(Real32 factor : {0.f, -1.f, Nan, std::numeric_limits<Real32>::infinity()})
        EXPECT_EQ(zoom_at(v, p, pixel, factor), v);
    EXPECT_EQ(zoom_at(v, {Nan, 0, 0}, pixel, 2), v);
    EXPECT_EQ(zoom_at(v, p, {Nan, 0}, 2), v);
    EXPECT_EQ(zoom_at(v, p, pixel, 1e-38f), v);
    EXPECT_EQ(zoom_window(v, {1, 2}, {1, 9}, p), v);
    EXPECT_EQ(zoom_window(v, {1, 2}, {7, 2}, p), v);
    EXPECT_EQ(zoom_window(v, {1, Nan}, {7, 2}, p), v);
    EXPECT_EQ(pan_to(v, p, {Nan, 0}), v);
    EXPECT_EQ(pan_to(v, p, {1e38f, 0}), v);
    EXPECT_EQ(orbit_about(v, p, {0, 0, 0}, 1), v);
    EXPECT_EQ(orbit_about(v, p, {0, 1, 0}, Nan), v);
    EXPECT_EQ(orbit_upright(v, p, {0, 0, 0}, 1, 1), v);
    EXPECT_EQ(orbit_upright(v, p, {0, 1, 0}, 1, Nan), v);
    WindowView none = v;
    none.height = 0;
    EXPECT_EQ(zoom_at(none, p, pixel, 2), none);
    EXPECT_EQ(zoom_window(none, {1, 2}, {7, 9}, p), none);
    EXPECT_EQ(pan_to(none, p, pixel), none);
    EXPECT_EQ(orbit_about(none, p, {0, 1, 0}, 1), none);
    EXPECT_FALSE(pixel_of(none, p));
    EXPECT_FALSE(point_under(none, pixel, p));
}

TEST_P(ViewMoves, WhatIsBehindTheEyeIsNoGoalInPerspective)
{
    WindowView const v = view();
    Pnt3f const behind = v.from + (v.from - v.at);
    EXPECT_EQ(pixel_of(v, behind).has_value(), isOrthographic());
    EXPECT_EQ(point_under(v, {1, 1}, behind).has_value(), isOrthographic());
    EXPECT_EQ(zoom_at(v, behind, {1, 1}, 2) != v, isOrthographic());
    EXPECT_EQ(pan_to(v, behind, {1, 1}) != v, isOrthographic());
    EXPECT_EQ(zoom_window(v, {1, 1}, {50, 50}, behind) != v, isOrthographic());
}
} // namespace
