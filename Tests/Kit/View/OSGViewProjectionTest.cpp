#include "OSGViewProjection.h"

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A point in the plane through `at` that faces the eye.
Pnt3d in_target_plane(WindowView const &view, Real64 right, Real64 up)
{
    Matrix4d const viewing = slow_viewing(view);
    Vec3d const x(viewing[0][0], viewing[1][0], viewing[2][0]);
    Vec3d const y(viewing[0][1], viewing[1][1], viewing[2][1]);
    return Pnt3d(view.at[0], view.at[1], view.at[2]) + x * right + y * up;
}

TEST(ViewProjection, BothShowTheSameAtTheTarget)
{
    RandomNumbers random(3);
    for(int round = 0; round < 300; ++round)
    {
        bool const isOrthographic = round % 2 == 0;
        WindowView const view = random_view(random, isOrthographic);
        WindowView const other = isOrthographic ? to_perspective(view) : to_orthographic(view);
        EXPECT_EQ(other.orthographicHeight.has_value(), !isOrthographic);
        for(int i = 0; i < 5; ++i)
        {
            Pnt3d const point = in_target_plane(view, random.real(-3, 3), random.real(-3, 3));
            SlowPixel const before = slow_pixel(view, point);
            EXPECT_LT(pixels_apart(slow_pixel(other, point), before.x, before.y), 0.001);
        }
    }
}

TEST(ViewProjection, ThereAndBackIsTheSameView)
{
    RandomNumbers random(4);
    for(int round = 0; round < 100; ++round)
    {
        WindowView const view = random_view(random, false);
        WindowView const back = to_perspective(to_orthographic(view));
        EXPECT_LT(back.from.dist(view.from), 1e-5);
        EXPECT_LT(back.at.dist(view.at), 1e-5);
        EXPECT_EQ(back.fieldOfView, view.fieldOfView);
        EXPECT_FALSE(back.orthographicHeight);
    }
}

TEST(ViewProjection, AFieldOfViewThatIsNoneIsReplaced)
{
    WindowView const flat{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 0, 100, 100, 4};
    WindowView const view = to_perspective(flat);
    EXPECT_EQ(view.fieldOfView, 45);
    EXPECT_NEAR(view.from[2], 2 / std::tan(M_PI / 8), 1e-5);
    EXPECT_EQ(view.at, flat.at);
}

TEST(ViewProjection, NoViewStaysAsItIs)
{
    WindowView none{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 0, 100};
    EXPECT_EQ(to_orthographic(none), none);
    none.orthographicHeight = 4;
    EXPECT_EQ(to_perspective(none), none);
    EXPECT_EQ(perspective_distance(none), 0);
}

TEST(ViewProjection, AViewThatHasTheProjectionIsLeftAlone)
{
    WindowView view{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
    EXPECT_EQ(to_perspective(view), view);
    view.orthographicHeight = 4;
    EXPECT_EQ(to_orthographic(view), view);
}
} // namespace
