#include "OSGViewarea.h"

#include <cmath>

#include <gtest/gtest.h>

#include "CameraBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Left, bottom, right, top in pixels.
std::array<Int32, 4> edges_of(Viewarea const &area)
{
    return {area.calcPixelLeft(), area.calcPixelBottom(), area.calcPixelRight(),
            area.calcPixelTop()};
}

using Edges = std::array<Int32, 4>;

TEST(Viewarea, CoversTheWholeWindowAtFirst)
{
    ViewportPtr const area(Viewport::create());
    WindowPtr const window = make_window(640, 480, area);
    EXPECT_EQ(edges_of(*area), (Edges{0, 0, 639, 479}));
    EXPECT_EQ(area->calcPixelWidth(), 640);
    EXPECT_EQ(area->calcPixelHeight(), 480);
    EXPECT_TRUE(area->calcIsFullWindow());
    window->setSize(100, 50);
    EXPECT_EQ(edges_of(*area), (Edges{0, 0, 99, 49}));
}

TEST(Viewarea, HasNoPixelsOfTheWholeWindowWithoutOne)
{
    ViewportPtr const area(Viewport::create());
    EXPECT_EQ(area->calcPixelWidth(), 0);
    EXPECT_EQ(area->calcPixelHeight(), 0);
    EXPECT_EQ(edges_of(*area), (Edges{0, 0, -1, -1}));
    EXPECT_FALSE(area->calcIsFullWindow());
}

TEST(Viewarea, EdgesAreInclusivePixels)
{
    ViewportPtr const area = make_viewport(10, 20, 109, 69);
    EXPECT_EQ(edges_of(*area), (Edges{10, 20, 109, 69}));
    EXPECT_EQ(area->calcPixelWidth(), 100);
    EXPECT_EQ(area->calcPixelHeight(), 50);
    WindowPtr const window = make_window(640, 480, area);
    EXPECT_EQ(edges_of(*area), (Edges{10, 20, 109, 69}));
    EXPECT_FALSE(area->calcIsFullWindow());
}

TEST(Viewarea, IsTheFullWindowByPixelsToo)
{
    ViewportPtr const area = make_viewport(0, 0, 639, 479);
    WindowPtr const window = make_window(640, 480, area);
    EXPECT_TRUE(area->calcIsFullWindow());
    area->setTop(478);
    EXPECT_FALSE(area->calcIsFullWindow());
}

TEST(Viewarea, CrossedEdgesHaveNoPixels)
{
    ViewportPtr const area = make_viewport(10, 20, 4, 19);
    EXPECT_EQ(area->calcPixelWidth(), 0);
    EXPECT_EQ(area->calcPixelHeight(), 0);
}

TEST(Viewarea, EdgesThatAreNaNOrBeyondAllPixelsAreHarmless)
{
    ViewportPtr const area(Viewport::create());
    area->setLeft(NAN);
    area->setRight(INFINITY);
    area->setBottom(-1e30f);
    area->setTop(1e30f);
    EXPECT_EQ(area->calcPixelLeft(), 0);
    EXPECT_GT(area->calcPixelWidth(), 0);
    EXPECT_GT(area->calcPixelHeight(), 0);
    Real32 x;
    Real32 y;
    EXPECT_TRUE(area->calcNormalizedCoordinates(x, y, 5, 5));
    EXPECT_TRUE(std::isfinite(x) && std::isfinite(y));
}

TEST(Viewarea, NormalizedCoordinatesCountFromTheWindowsTop)
{
    ViewportPtr const area(Viewport::create());
    WindowPtr const window = make_window(200, 100, area);
    struct Row
    {
        Int32 x, y;
        Real32 normX, normY;
    };
    for(Row const &row : {Row{0, 0, -1, 1}, Row{200, 100, 1, -1}, Row{100, 50, 0, 0},
                          Row{150, 25, 0.5f, 0.5f}, Row{-100, 100, -2, -1}})
    {
        Real32 x;
        Real32 y;
        EXPECT_TRUE(area->calcNormalizedCoordinates(x, y, row.x, row.y));
        EXPECT_EQ(x, row.normX) << row.x << ' ' << row.y;
        EXPECT_EQ(y, row.normY) << row.x << ' ' << row.y;
    }
}

TEST(Viewarea, NormalizedCoordinatesOfAPartOfAWindowAreThoseOfThePart)
{
    ViewportPtr const area = make_viewport(50, 10, 149, 49);
    WindowPtr const window = make_window(200, 100, area);
    Real32 x;
    Real32 y;
    // Its left top corner lies 50 rows below the window's.
    EXPECT_TRUE(area->calcNormalizedCoordinates(x, y, 50, 50));
    EXPECT_EQ(x, -1.f);
    EXPECT_EQ(y, 1.f);
    EXPECT_TRUE(area->calcNormalizedCoordinates(x, y, 150, 90));
    EXPECT_EQ(x, 1.f);
    EXPECT_EQ(y, -1.f);
}

TEST(Viewarea, RowsCountFromItsOwnTopWithoutAWindow)
{
    ViewportPtr const area = make_viewport(0, 0, 99, 49);
    Real32 x;
    Real32 y;
    EXPECT_TRUE(area->calcNormalizedCoordinates(x, y, 0, 0));
    EXPECT_EQ(x, -1.f);
    EXPECT_EQ(y, 1.f);
}

TEST(Viewarea, NormalizedCoordinatesOfNoPixelsAreZero)
{
    ViewportPtr const area(Viewport::create());
    Real32 x = 7.f;
    Real32 y = 7.f;
    EXPECT_FALSE(area->calcNormalizedCoordinates(x, y, 3, 4));
    EXPECT_EQ(x, 0.f);
    EXPECT_EQ(y, 0.f);
}

TEST(Viewarea, IsActiveAndDrawsIntoTheWindow)
{
    ViewportPtr const area(Viewport::create());
    EXPECT_FALSE(area->isPassive());
    EXPECT_EQ(area->getTarget(), nullptr);
    EXPECT_EQ(area->getTravMask(), 0xFFFFFFFFu);
}
} // namespace
