#include "OSGMarkers.h"

#include <cmath>

#include "LogCapture.h"
#include "OSGViewMoves.h"

#include "../View/DrawnSceneView.h"

namespace OSG::Test
{
namespace
{
Color3f const BlueColor(0, 0, 1);

/// Where the pixels of a colour are, counted from the left top corner of the window.
struct Spot
{
    UInt32 width = 0, height = 0;
    Real64 x = 0, y = 0; // their middle
};

struct MarkersTest : DrawnSceneView
{
    Markers markers;

    Spot spot(Rgb const &color) const
    {
        UInt32 left = Side, right = 0, top = Side, bottom = 0;
        for(UInt32 y = 0; y < Side; ++y)
        {
            for(UInt32 x = 0; x < Side; ++x)
            {
                if(pixel(x, y) != color)
                    continue;
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
        if(right == 0)
            return {};
        return {right - left, bottom - top, (left + right) / 2., (top + bottom) / 2.};
    }

    void look(Pnt3f const &at, Real32 distance, bool isOrthographic)
    {
        WindowView wanted{at + Vec3f(0, 0, distance), at, {0, 1, 0}, 45, Side, Side};
        if(isOrthographic)
            wanted.orthographicHeight = distance / 2;
        ASSERT_TRUE(view.setView(wanted));
    }
};

TEST_F(MarkersTest, KeepTheirSizeAtEachDistanceAndPlaceInBothProjections)
{
    view.setOverlay(markers.getNode());
    for(Real32 const far : {0.f, 1e6f})
    {
        Pnt3f const middle(far, -far, far);
        NodePtr const scene =
            make_transform(translation(far, -far, far), {make_square(Red, 200, {0, 0, -1})});
        view.setScene(scene);
        markers.clear();
        Pnt3f const point = middle + Vec3f(2, 1, 0);
        markers.addPoint(point, BlueColor, 13);
        for(Real32 const distance : {16.f, 128.f, 1024.f})
        {
            for(bool const isOrthographic : {false, true})
            {
                look(middle, distance, isOrthographic);
                draw();
                Spot const seen = spot(Blue);
                EXPECT_NEAR(seen.width, 13, 1) << far << ' ' << distance << isOrthographic;
                EXPECT_NEAR(seen.height, 13, 1) << far << ' ' << distance << isOrthographic;
                Pnt2f const expected = pixel_of(view.getView(), point).value();
                EXPECT_NEAR(seen.x, expected[0], 1) << far << ' ' << distance << isOrthographic;
                EXPECT_NEAR(seen.y, expected[1], 1) << far << ' ' << distance << isOrthographic;
            }
        }
    }
}

TEST_F(MarkersTest, AtTheEdgeOfTheWindowAreAsLargeAsInTheMiddle)
{
    view.setOverlay(markers.getNode());
    view.setScene(make_square(Red, 200, {0, 0, -0.5f}));
    look({0, 0, 0}, 16, false);
    markers.addPoint({0, 0, 0}, BlueColor, 13);
    markers.addPoint({-5, 5, 0}, Color3f(0, 1, 0), 13);
    draw();
    EXPECT_NEAR(spot(Blue).width, 13, 1);
    EXPECT_NEAR(spot(Green).width, 14, 1); // a ball at the edge of the view is longer
    EXPECT_NEAR(spot(Green).height, 14, 1);
}

TEST_F(MarkersTest, AreDiscs)
{
    view.setOverlay(markers.getNode());
    markers.addPoint({0.5f, 0.5f, 0}, BlueColor, 21);
    view.setScene(make_square(Red, 20, {0, 0, -50}));
    draw();
    Real64 const area = std::pow(21 / 2., 2) * std::acos(-1.);
    EXPECT_NEAR(static_cast<Real64>(count(Blue)), area, area / 10);
}

TEST_F(MarkersTest, AreHiddenBehindGeometryOrSeenThroughIt)
{
    view.setScene(make_square(Red, 20, {0, 0, 5}));
    markers.addPoint({0, 0, 0}, BlueColor);
    markers.addLine({-10, 7.5f, 0}, {10, 7.5f, 0}, Color3f(0, 1, 0));
    view.setOverlay(markers.getNode());
    draw();
    EXPECT_EQ(count(Blue) + count(Green), 0u);
    view.setOverlay(nullptr);
    view.setOverlayOnTop(markers.getNode());
    draw();
    EXPECT_GT(count(Blue), 50u);
    EXPECT_NEAR(static_cast<Real64>(count(Green)), 20, 1);
}

TEST_F(MarkersTest, OnAFaceAreSeenWholly)
{
    view.setScene(make_square(Red, 20));
    markers.addPoint({0.5f, 0.5f, 0}, BlueColor, 9);
    markers.addLine({-10, 7.5f, 0}, {10, 7.5f, 0}, Color3f(0, 1, 0));
    view.setOverlay(markers.getNode());
    draw();
    EXPECT_EQ(spot(Blue).width, 9u);
    EXPECT_EQ(spot(Blue).height, 9u);
    EXPECT_NEAR(static_cast<Real64>(count(Green)), 20, 1);
}

TEST_F(MarkersTest, LinesStandWhereTheyAreFarFromTheOrigin)
{
    Pnt3f const middle(1e6f, 1e6f, -1e6f);
    view.setScene(make_transform(translation(1e6f, 1e6f, -1e6f), {make_square(Red, 2)}));
    look(middle, 16, true); // 8 pixels a unit
    markers.addLine(middle + Vec3f(-1, 1, 1), middle + Vec3f(1, 1, 1), BlueColor);
    view.setOverlayOnTop(markers.getNode());
    draw();
    Spot const seen = spot(Blue);
    EXPECT_NEAR(seen.width, 16, 1);
    EXPECT_EQ(seen.height, 1u);
    EXPECT_NEAR(seen.x, 32, 1);
    EXPECT_NEAR(seen.y, 24, 1);
}

TEST_F(MarkersTest, ThatAreClearedAreGone)
{
    view.setScene(make_square(Red, 20));
    view.setOverlayOnTop(markers.getNode());
    markers.addPoint({0, 0, 0}, BlueColor);
    markers.addPoint({9, 0, 0}, BlueColor);
    EXPECT_EQ(markers.size(), 2u);
    draw();
    EXPECT_GT(count(Blue), 0u);
    markers.clear();
    EXPECT_EQ(markers.size(), 0u);
    draw();
    EXPECT_EQ(count(Blue), 0u);
}

TEST(MarkersWithoutAContext, LeaveOutWhatCannotBeShown)
{
    LogCapture log;
    Markers markers;
    markers.addPoint({NAN, 0, 0}, BlueColor);
    markers.addPoint({0, 0, 0}, BlueColor, 0);
    markers.addPoint({0, 0, 0}, BlueColor, INFINITY);
    markers.addLine({0, 0, 0}, {INFINITY, 0, 0}, BlueColor);
    EXPECT_EQ(markers.size(), 0u);
    EXPECT_EQ(log.lines().size(), 4u);
}
} // namespace
} // namespace OSG::Test
