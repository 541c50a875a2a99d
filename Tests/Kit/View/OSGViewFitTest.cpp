#include "OSGViewFit.h"

#include <limits>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
class ViewFit : public testing::TestWithParam<bool>
{
  protected:
    RandomNumbers random{77};
};
INSTANTIATE_TEST_SUITE_P(Projections, ViewFit, testing::Bool(),
                         [](auto const &row) { return row.param ? "Flat" : "Perspective"; });

/// The rectangle of the box's corners in the window, in shares of it, and the smallest depth.
struct Shown
{
    Real64 left = INFINITY, right = -INFINITY, top = INFINITY, bottom = -INFINITY, depth = INFINITY;
};
Shown show(WindowView const &view, BoxVolume const &box)
{
    Shown shown;
    Pnt3f const end[2] = {box.getMin(), box.getMax()};
    for(int i = 0; i < 8; ++i)
    {
        Pnt3d const corner(end[i & 1][0], end[i >> 1 & 1][1], end[i >> 2][2]);
        SlowPixel const pixel = slow_pixel(view, corner);
        shown.left = std::min(shown.left, pixel.x / view.width);
        shown.right = std::max(shown.right, pixel.x / view.width);
        shown.top = std::min(shown.top, pixel.y / view.height);
        shown.bottom = std::max(shown.bottom, pixel.y / view.height);
        Matrix4d const viewing = slow_viewing(view);
        shown.depth = std::min(shown.depth, -(viewing * corner)[2]);
    }
    return shown;
}

TEST_P(ViewFit, TheBoxTouchesTheMarginOfTwoEdgesAndPassesNone)
{
    for(int round = 0; round < 500; ++round)
    {
        WindowView const view = random_view(random, GetParam());
        Pnt3f const a = random.point(-50, 50);
        BoxVolume const box(a,
                            a + Vec3f(random.real(0, 9), random.real(0, 9), random.real(0.1f, 9)));
        Real32 const margin = random.real(0, 0.3f);
        WindowView const fitted = fit(view, box, margin);
        Shown const shown = show(fitted, box);
        EXPECT_GT(shown.depth, 0);
        EXPECT_GT(std::min({shown.left, shown.top, 1 - shown.right, 1 - shown.bottom}),
                  margin - 1e-4);
        bool const across =
            std::abs(shown.left - margin) < 1e-3 && std::abs(1 - shown.right - margin) < 1e-3;
        bool const upwards =
            std::abs(shown.top - margin) < 1e-3 && std::abs(1 - shown.bottom - margin) < 1e-3;
        EXPECT_TRUE(across || upwards) << round;
        EXPECT_LT(
            (unit_wide(Vec3d(fitted.from[0] - Real64(fitted.at[0]),
                             fitted.from[1] - Real64(fitted.at[1]),
                             fitted.from[2] - Real64(fitted.at[2]))) -
             unit_wide(Vec3d(view.from[0] - Real64(view.at[0]), view.from[1] - Real64(view.at[1]),
                             view.from[2] - Real64(view.at[2]))))
                .length(),
            1e-4);
        EXPECT_EQ(fitted.up, view.up);
        EXPECT_EQ(fitted.width, view.width);
    }
}

TEST_P(ViewFit, TheMiddleOfTheWindowIsAsDeepAsTheMiddleOfTheBox)
{
    WindowView const view = random_view(random, GetParam());
    BoxVolume const box(Pnt3f(1, 2, 3), Pnt3f(4, 8, 6));
    WindowView const fitted = fit(view, box);
    Matrix4d const viewing = slow_viewing(fitted);
    EXPECT_NEAR((viewing * Pnt3d(2.5, 5, 4.5))[2],
                (viewing * Pnt3d(fitted.at[0], fitted.at[1], fitted.at[2]))[2], 1e-4);
}

TEST_P(ViewFit, ABoxWithoutExtentIsShownFromNearBy)
{
    WindowView const view = random_view(random, GetParam());
    WindowView const fitted = fit(view, BoxVolume(Pnt3f(7, 7, 7), Pnt3f(7, 7, 7)));
    EXPECT_EQ(fitted, fit(view, BoxVolume(Pnt3f(6, 6, 6), Pnt3f(8, 8, 8))));
    EXPECT_NE(fitted, view);
}

TEST_P(ViewFit, ALineAlongTheViewLiesBeforeTheEye)
{
    WindowView view{{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 200, 100};
    if(GetParam())
        view.orthographicHeight = 3;
    BoxVolume const line(Pnt3f(2, 2, -5), Pnt3f(2, 2, 5));
    WindowView const fitted = fit(view, line);
    EXPECT_NE(fitted, view);
    EXPECT_GT(show(fitted, line).depth, 0);
}

TEST_P(ViewFit, WithoutABoxASceneIsAUnitBoxAroundTheOrigin)
{
    WindowView const view = random_view(random, GetParam());
    SceneBounds bounds;
    EXPECT_EQ(fit(view, bounds), fit(view, BoxVolume(Pnt3f(-1, -1, -1), Pnt3f(1, 1, 1))));
    bounds.box = BoxVolume(Pnt3f(1, 1, 1), Pnt3f(2, 2, 2));
    EXPECT_EQ(fit(view, bounds), fit(view, bounds.box));
}

TEST_P(ViewFit, BadInputLeavesTheViewAsItIs)
{
    WindowView view = random_view(random, GetParam());
    BoxVolume const box(Pnt3f(1, 1, 1), Pnt3f(2, 2, 2));
    BoxVolume endless;
    endless.setInfinite();
    Real32 const inf = std::numeric_limits<Real32>::infinity();
    EXPECT_EQ(fit(view, BoxVolume()), view);
    EXPECT_EQ(fit(view, endless), view);
    EXPECT_EQ(fit(view, BoxVolume(Pnt3f(1, 1, 1), Pnt3f(inf, 2, 2))), view);
    EXPECT_EQ(fit(view, box, 0.5f), view);
    EXPECT_EQ(fit(view, box, -0.1f), view);
    view.width = 0;
    EXPECT_EQ(fit(view, box), view);
}
} // namespace
