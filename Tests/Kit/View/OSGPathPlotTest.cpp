#include "OSGPathPlot.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
std::string plot(Node *scene, std::vector<PathPoint> const &path)
{
    std::ostringstream out;
    write_path_plot(out, scene, path);
    return out.str();
}

std::size_t count(std::string const &text, std::string const &word)
{
    std::size_t found = 0;
    for(std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
        ++found;
    return found;
}

/// The value of the first `attribute` after `place`, without its quotes.
std::string value_of(std::string const &text, std::string const &attribute, std::size_t place)
{
    std::size_t const begin = text.find(attribute + "=\"", place) + attribute.size() + 2;
    return text.substr(begin, text.find('"', begin) - begin);
}

NodePtr square()
{
    return make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{0, 0, 0}, {10, 0, 0}, {10, 0, -10}, {0, 0, -10}})));
}

TEST(PathPlot, ShowsSceneAndPathFromAboveAndFromTheFront)
{
    std::string const svg = plot(square(), {{{5, 1, 0}, {5, 1, -1}}, {{5, 1, -5}, {5, 1, -6}}});
    EXPECT_EQ(svg.rfind("<svg ", 0), 0u);
    EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
    EXPECT_EQ(count(svg, "<polyline"), 2u);
    EXPECT_EQ(count(svg, "<circle"), 2u);
    // 78 units of the sheet for one of the scene, 10 of margin: from (5, 0) to (5, -5).
    std::size_t const line = svg.find("<polyline");
    EXPECT_EQ(value_of(svg, "points", line), "400.0,790.0 400.0,400.0 ");
    // The front view lies below it.
    EXPECT_EQ(value_of(svg, "points", svg.find("<polyline", line + 1)), "400.0,820.0 400.0,820.0 ");
}

// The differences of such coordinates are too large for single precision.
TEST(PathPlot, HasFiniteNumbersWhateverTheSceneHas)
{
    constexpr Real32 Far = 3e38f;
    constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();
    NodePtr const scene = make_node(make_geometry(one_primitive(
        TrianglesPrimitive,
        {{-Far, 0, 0}, {Far, 0, 0}, {0, Far, -Far}, {0, 0, 0}, {Infinite, 0, 0}, {0, 1, 0}})));
    std::string const svg =
        plot(scene, {{{-Far, 0, 0}, {Far, Far, 0}}, {{Far, 1, 0}, {-Far, 0, 0}}});
    EXPECT_EQ(count(svg, "nan"), 0u);
    EXPECT_EQ(count(svg, "inf"), 0u);
    EXPECT_EQ(count(svg, "<polyline"), 2u);
}

TEST(PathPlot, ASceneWithZUpGivesThePlanOfItsCopyWithYUp)
{
    auto const plan = [](std::vector<PathPoint> const &path, Vec3f const &up)
    {
        std::ostringstream out;
        write_path_plot(out, nullptr, path, {}, up);
        return out.str();
    };
    std::string const upright = plan({{{0, 1, 0}, {1, 1, 0}}, {{4, 2, -3}, {4, 2, -4}}}, {0, 1, 0});
    EXPECT_EQ(plan({{{0, 0, 1}, {1, 0, 1}}, {{4, 3, 2}, {4, 4, 2}}}, {0, 0, 2}), upright);
    EXPECT_EQ(plan({{{0, -1, 0}, {1, -1, 0}}, {{4, -2, 3}, {4, -2, 4}}}, {0, -1, 0}), upright);
}

TEST(PathPlot, IsNoTallerThanThreeSheetsAreWide)
{
    std::string const svg = plot(nullptr, {{{0, 0, 0}, {1, 0, 0}}, {{0, 100, 0}, {1, 100, 0}}});
    EXPECT_LT(std::stod(value_of(svg, "height", 0)), 2400);
}

TEST(PathPlot, LeavesOutEdgesWithinAPlane)
{
    std::string const svg = plot(square(), {});
    // The diagonal between the two triangles of the square is not drawn.
    EXPECT_EQ(count(value_of(svg, " d", svg.find("class=\"scene\"")), "M"), 4u);
}

TEST(PathPlot, AnEdgeOfThreeFacesIsSharpInWhateverOrderTheyCome)
{
    Pnt3f const a(0, 0, 0);
    Pnt3f const b(10, 0, 0);
    Pnt3f const front(5, 0, 5);
    Pnt3f const back(5, 0, -5);
    Pnt3f const top(5, 5, 0);
    auto const lines_of = [](std::vector<Pnt3f> const &corners)
    {
        std::string const svg =
            plot(make_node(make_geometry(one_primitive(TrianglesPrimitive, corners))), {});
        return count(svg, "M");
    };
    std::size_t const wallLast = lines_of({a, b, front, b, a, back, a, b, top});
    EXPECT_EQ(lines_of({a, b, front, a, b, top, b, a, back}), wallLast);
    EXPECT_EQ(lines_of({a, b, top, a, b, front, b, a, back}), wallLast);
}

TEST(PathPlot, ABadCornerTakesNoGoodEdgeAway)
{
    std::vector<Pnt3f> const good = {{0, 0, 0}, {10, 0, 0}, {0, 0, 10}};
    std::vector<Pnt3f> both = {{NAN, NAN, NAN}, {10, 0, 0}, {0, 0, 10}};
    both.insert(both.end(), good.begin(), good.end());
    auto const plot_of = [](std::vector<Pnt3f> const &corners)
    { return plot(make_node(make_geometry(one_primitive(TrianglesPrimitive, corners))), {}); };
    EXPECT_EQ(count(plot_of(both), "M"), count(plot_of(good), "M"));
}

TEST(PathPlot, LeavesOutWhatIsNotFinite)
{
    NodePtr const scene = make_node(make_geometry(
        one_primitive(TrianglesPrimitive, {{0, 0, 0}, {NAN, 0, 0}, {0, INFINITY, 0}})));
    std::string const svg =
        plot(scene, {{{NAN, 1, 0}, {}}, {{1, 1, 1}, {0, INFINITY, 0}}, {{1, 2, 3}, {1, 2, 3}}});
    EXPECT_EQ(count(svg, "nan"), 0u);
    EXPECT_EQ(count(svg, "inf"), 0u);
    EXPECT_EQ(count(value_of(svg, "points", svg.find("<polyline")), ","), 1u);
}

TEST(PathPlot, NeedsNeitherASceneNorAPath)
{
    EXPECT_EQ(count(plot(nullptr, {}), "</svg>"), 1u);
    EXPECT_EQ(count(plot(nullptr, {{{1, 2, 3}, {0, 0, 0}}}), "<circle"), 2u);
    EXPECT_EQ(count(plot(make_group(), {}), "<polyline"), 0u);
}

TEST(PathPlot, ShowsBoxesOfLargeScenes)
{
    std::vector<Pnt3f> corners;
    for(int i = 0; i < 60000; ++i)
    {
        Real32 const x = static_cast<Real32>(i);
        corners.insert(corners.end(), {{x, 0, 0}, {x + 0.5f, 1, 0}, {x, 0, 1}});
    }
    NodePtr const scene = make_node(make_geometry(one_primitive(TrianglesPrimitive, corners)));
    std::string const svg = plot(scene, {});
    EXPECT_EQ(count(value_of(svg, " d", svg.find("class=\"scene\"")), "M"), 12u);
}
TEST(PathPlot, MarksHaveAColourAKindAndALegend)
{
    std::ostringstream out;
    write_path_plot(out, square(), {{{5, 1, 0}, {5, 1, -1}}},
                    {{{5, 1, -5}, "blocked"},
                     {{5, 1, -5}, "blocked"},
                     {{5, 1, -6}, "climbed"},
                     {{5, NAN, -6}, "lost"},
                     {{5, 1, -7}, "blocked"}});
    std::string const svg = out.str();
    // In both views and in the legend.
    EXPECT_EQ(count(svg, "<title>blocked</title>"), 5u);
    EXPECT_EQ(count(svg, "<title>climbed</title>"), 3u);
    EXPECT_EQ(count(svg, "lost"), 0u);
    EXPECT_EQ(count(svg, ">blocked</text>"), 1u);
    std::size_t const mark = svg.find("class=\"mark\"");
    EXPECT_EQ(value_of(svg, "cx", mark), "400.0");
    EXPECT_EQ(value_of(svg, "cy", mark), "400.0");
    EXPECT_NE(value_of(svg, "fill", mark), value_of(svg, "fill", svg.find("climbed") - 90));
    EXPECT_EQ(count(plot(square(), {}), "legend\""), 0u);
}

TEST(PathPlot, OfStrokesThatNearlyLieUponEachOtherOneIsDrawn)
{
    // 78 units of the sheet for one of the scene.
    std::vector<PathPoint> path;
    for(int i = 0; i < 100; ++i)
        path.push_back({{5, 1, -5 - 0.01f * i}, {5, 1, -9}});
    std::string const svg = plot(square(), path);
    std::string const strokes = value_of(svg, " d", svg.find("class=\"look\""));
    EXPECT_GT(count(strokes, "M"), 15u);
    EXPECT_LT(count(strokes, "M"), 30u);
    EXPECT_EQ(count(value_of(svg, "points", svg.find("<polyline")), ","), 100u);
}
} // namespace
