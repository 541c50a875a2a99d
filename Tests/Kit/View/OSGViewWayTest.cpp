#include "OSGViewWay.h"

#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGStandardView.h"
#include "OSGViewMoves.h"
#include "OSGViewProjection.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// The angle of the turn from one camera to another, by the trace of the product.
Real64 angle_between(WindowView const &a, WindowView const &b)
{
    Matrix4d const va = slow_viewing(a);
    Matrix4d const vb = slow_viewing(b);
    Real64 trace = 0;
    for(UInt32 r = 0; r < 3; ++r)
        for(UInt32 c = 0; c < 3; ++c)
            trace += va[c][r] * vb[c][r];
    return std::acos(std::clamp((trace - 1) / 2, -1., 1.));
}

TEST(ViewWay, TheEndsAreTheViewsToTheBit)
{
    RandomNumbers random(8);
    for(int round = 0; round < 50; ++round)
    {
        WindowView const a = random_view(random, round % 2 == 0);
        WindowView const b = random_view(random, round % 3 == 0);
        EXPECT_EQ(view_between(a, b, 0), a);
        EXPECT_EQ(view_between(a, b, -3), a);
        EXPECT_EQ(view_between(a, b, 1), b);
        EXPECT_EQ(view_between(a, b, 2), b);
    }
}

TEST(ViewWay, TheTurnIsTheShortestOneAtAConstantRate)
{
    RandomNumbers random(9);
    for(int round = 0; round < 200; ++round)
    {
        bool const isOrthographic = round % 2 == 0;
        WindowView const a = random_view(random, isOrthographic);
        WindowView const b = random_view(random, isOrthographic);
        Real64 const whole = angle_between(a, b);
        for(Real32 share : {0.1f, 0.25f, 0.5f, 0.9f})
        {
            WindowView const view = view_between(a, b, share);
            ASSERT_TRUE(is_view(view));
            EXPECT_NEAR(angle_between(a, view), whole * share, 1e-4);
            EXPECT_NEAR(angle_between(view, b), whole * (1 - share), 1e-4);
        }
    }
}

TEST(ViewWay, HalfATurnHasAWayAsWell)
{
    WindowView const view{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
    WindowView const behind = standard_view(view, StandardView::Back, SceneUp::Y);
    WindowView const half = view_between(view, behind, 0.5f);
    EXPECT_NEAR(angle_between(view, half), M_PI / 2, 1e-5);
    EXPECT_NEAR(angle_between(half, behind), M_PI / 2, 1e-5);
    EXPECT_NEAR(half.from.dist(half.at), 10, 1e-4);
    WindowView upsideDown = view;
    upsideDown.up = Vec3f(0, -1, 0);
    EXPECT_NEAR(angle_between(view, view_between(view, upsideDown, 0.25f)), M_PI / 4, 1e-5);
}

TEST(ViewWay, AZoomKeepsItsPointOnTheWholeWay)
{
    RandomNumbers random(10);
    for(bool isOrthographic : {false, true})
    {
        WindowView const a = random_view(random, isOrthographic);
        Pnt3f const point = *point_under(a, {30, 40}, a.at);
        WindowView const b = zoom_at(a, point, {30, 40}, 20);
        for(Real32 share : {0.1f, 0.5f, 0.9f})
        {
            WindowView const view = view_between(a, b, share);
            EXPECT_LT(pixels_apart(slow_pixel(view, point), 30, 40), 0.05);
        }
    }
}

TEST(ViewWay, SizesChangeByEqualRatios)
{
    WindowView const a{{0, 0, 16}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
    WindowView b = a;
    b.from = Pnt3f(0, 0, 1);
    EXPECT_FLOAT_EQ(view_between(a, b, 0.5f).from[2], 4);
    WindowView const flatA{{0, 0, 9}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100, 2};
    WindowView flatB = flatA;
    flatB.orthographicHeight = 32;
    EXPECT_FLOAT_EQ(*view_between(flatA, flatB, 0.5f).orthographicHeight, 8);
}

TEST(ViewWay, AnotherProjectionIsTakenAtTheEnd)
{
    RandomNumbers random(11);
    WindowView const a = random_view(random, false);
    WindowView const b = to_orthographic(a);
    WindowView const view = view_between(a, b, 0.5f);
    EXPECT_FALSE(view.orthographicHeight);
    EXPECT_LT(view.from.dist(a.from), 1e-4);
    EXPECT_TRUE(view_between(b, a, 0.5f).orthographicHeight);
}

TEST(ViewWay, NoViewIsNoWay)
{
    WindowView const a{{0, 0, 16}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
    WindowView none = a;
    none.up = Vec3f();
    EXPECT_EQ(view_between(none, a, 0.5f), a);
    EXPECT_EQ(view_between(a, none, 0.5f), none);
    WindowView b = a;
    b.at = Pnt3f(1, 0, 0);
    EXPECT_EQ(view_between(a, b, std::numeric_limits<Real32>::quiet_NaN()), b);
}
} // namespace
