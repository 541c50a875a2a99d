// Picks in random scenes and views beside slow ones.

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGPickSelector.h"
#include "OSGSceneBounds.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"
#include "SlowPick.h"

namespace OSG::Test
{
namespace
{
using HitT = SelectionFunctor::HitT;
using Lasso = std::vector<Pnt2f>;
constexpr UInt32 AllKinds = SelectionFunctor::SelectTriangles | SelectionFunctor::SelectLines |
                            SelectionFunctor::SelectPoints;

/// A scene of single primitives, each a node below a transform, and where they lie.
struct Primitives
{
    NodePtr root;
    std::vector<NodePtr> nodes;
    std::vector<std::vector<Pnt3d>> corners; // in the root's space
};

struct Units
{
    Real32 scale;
    Real32 moved; // along each axis
};

Pnt3d image(Matrix const &m, Pnt3f const &p)
{
    Pnt3d result;
    for(UInt32 row = 0; row < 3; ++row)
        result[row] = Real64(m[0][row]) * p[0] + Real64(m[1][row]) * p[1] +
                      Real64(m[2][row]) * p[2] + m[3][row];
    return result;
}

// Turned and moved, without change of size.
Matrix random_place(RandomNumbers &random, Units const &units)
{
    Matrix matrix = rotation(random.vector(), random.real(0, 6));
    for(UInt32 axis = 0; axis < 3; ++axis)
        matrix[3][axis] = random.real(-3, 3) * units.scale + units.moved;
    return matrix;
}

Primitives random_primitives(RandomNumbers &random, UInt32 count, Units const &units)
{
    PrimitiveType const types[] = {PointsPrimitive, LinesPrimitive, TrianglesPrimitive};
    Primitives scene;
    Children below;
    for(UInt32 i = 0; i < count; ++i)
    {
        UInt32 const corners = random.below(4) == 0 ? 1 + random.below(2) : 3;
        Real32 const size = (random.below(5) == 0 ? 30.f : 2.f) * units.scale;
        std::vector<Pnt3f> points;
        for(UInt32 k = 0; k < corners; ++k)
            points.push_back(random.point(-size, size));
        Matrix const place = random_place(random, units);
        scene.nodes.push_back(make_node(make_geometry(one_primitive(types[corners - 1], points))));
        below.push_back(make_transform(place, {scene.nodes.back()}));
        scene.corners.emplace_back();
        for(Pnt3f const &point : points)
            scene.corners.back().push_back(image(place, point));
    }
    scene.root = make_group(below);
    return scene;
}

WindowView random_view(RandomNumbers &random, Units const &units)
{
    Real32 const away = random.below(4) == 0 ? 4.f : 25.f;
    WindowView view = {random.point(-away, away), random.point(-2, 2),    random.vector(),
                       random.real(20, 110),      50 + random.below(900), 50 + random.below(900)};
    for(UInt32 axis = 0; axis < 3; ++axis)
    {
        view.from[axis] = view.from[axis] * units.scale + units.moved;
        view.at[axis] = view.at[axis] * units.scale + units.moved;
    }
    if(random.below(2) == 0)
        view.orthographicHeight = random.real(1, 30) * units.scale;
    return view;
}

Lasso random_lasso(RandomNumbers &random, WindowView const &view)
{
    Real32 const width = static_cast<Real32>(view.width);
    Real32 const height = static_cast<Real32>(view.height);
    Lasso lasso;
    for(UInt32 corners = 3 + random.below(7); corners > 0; --corners)
        lasso.emplace_back(random.real(-0.2f, 1.2f) * width, random.real(-0.2f, 1.2f) * height);
    return lasso;
}

struct Found
{
    Real32 nearest = 0;
    Real32 farthest = 0;
};

// By node, with the distances of its hits.
std::map<Node *, Found> found_in(PickSelector &selector, PickRegion const &region)
{
    PickSettings settings;
    settings.kinds = AllKinds;
    settings.hits = SelectionFunctor::AllHits;
    std::map<Node *, Found> found;
    for(HitT const &hit : selector.select(region, settings))
    {
        auto const [entry, isNew] = found.try_emplace(hit.node, Found{hit.distance, hit.distance});
        entry->second.nearest = std::min(entry->second.nearest, hit.distance);
        entry->second.farthest = std::max(entry->second.farthest, hit.distance);
    }
    return found;
}

/// Compares picks with slow ones. What is within a hundredth of a pixel of the area's edge, or a
/// ten-thousandth of the depth of a plane, may go either way.
struct Comparison
{
    static constexpr Real64 NearEdge = 0.01;
    int hits = 0;
    int misses = 0;

    void compare(Primitives const &scene, WindowView const &view, Lasso const &lasso,
                 SectionPlanes const &sections, PickRegion const &region)
    {
        SceneBounds const bounds = bounds_of(scene.root);
        ViewDepths const depths = *pick_depths(view, bounds);
        SlowPick const slow(view, depths, lasso, sections);
        PickSelector selector(scene.root);
        auto const found = found_in(selector, region);
        for(std::size_t i = 0; i < scene.nodes.size(); ++i)
        {
            auto const wider = slow.inside(scene.corners[i], NearEdge);
            auto const narrower = slow.inside(scene.corners[i], -NearEdge);
            auto const entry = found.find(scene.nodes[i].get());
            bool const isHit = entry != found.end();
            ASSERT_TRUE(wider || !isHit) << "node " << i << " is hit";
            ASSERT_TRUE(!narrower || isHit) << "node " << i << " is not hit";
            if(!narrower || !isHit)
            {
                misses += wider ? 0 : 1;
                continue;
            }
            ++hits;
            // The near side of a small solid that begins close to the eye is slightly tilted by
            // the rounding of its corners.
            Real64 const slack = (region.isSolid() ? 1e-2 : 1e-3) * depths.farSide;
            Found const &at = entry->second;
            EXPECT_GE(at.nearest + depths.nearSide, wider->nearest - slack) << i;
            EXPECT_LE(at.nearest + depths.nearSide, narrower->nearest + slack) << i;
            EXPECT_GE(at.farthest + depths.nearSide, narrower->farthest - slack) << i;
            EXPECT_LE(at.farthest + depths.nearSide, wider->farthest + slack) << i;
        }
    }
};

// A kit for models in metres serves millimetres and kilometres as well.
Units const AllUnits[] = {{1, 0}, {1e-3f, 0}, {1e3f, 0}, {1e3f, 1e6f}};

TEST(PickSelector, FindsInALassoWhatClippingInTheWindowLeaves)
{
    Comparison comparison;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(140);
        for(int round = 0; round < 150 && !testing::Test::HasFatalFailure(); ++round)
        {
            SCOPED_TRACE(testing::Message() << "scale " << units.scale << " round " << round);
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            auto const region = PickRegion::ofLasso(view, lasso, bounds_of(scene.root));
            if(region)
                comparison.compare(scene, view, lasso, {}, *region);
        }
    }
    EXPECT_GT(comparison.hits, 700);
    EXPECT_GT(comparison.misses, 700);
}

TEST(PickSelector, FindsInARectangleWhatClippingInTheWindowLeaves)
{
    Comparison comparison;
    int solids = 0;
    RandomNumbers random(141);
    for(int round = 0; round < 150 && !testing::Test::HasFatalFailure(); ++round)
    {
        SCOPED_TRACE(round);
        Primitives const scene = random_primitives(random, 8, AllUnits[0]);
        WindowView view = random_view(random, AllUnits[0]);
        Lasso const two = random_lasso(random, view);
        PixelArea const area = pixel_rectangle(two[0][0], two[0][1], two[1][0], two[1][1]);
        Lasso const lasso = {{area.left, area.top},
                             {area.right, area.top},
                             {area.right, area.bottom},
                             {area.left, area.bottom}};
        auto const region = PickRegion::ofRectangle(view, area, bounds_of(scene.root));
        if(!region)
            continue;
        solids += region->isSolid() ? 1 : 0;
        comparison.compare(scene, view, lasso, {}, *region);
    }
    EXPECT_GT(solids, 50);
    EXPECT_GT(comparison.hits, 200);
    EXPECT_GT(comparison.misses, 200);
}

TEST(PickSelector, FindsNothingThatASectionCutsAway)
{
    Comparison comparison;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(142);
        for(int round = 0; round < 100 && !testing::Test::HasFatalFailure(); ++round)
        {
            SCOPED_TRACE(testing::Message() << "scale " << units.scale << " round " << round);
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            SectionPlanes sections;
            for(UInt32 i = random.below(7); i > 0; --i)
            {
                Pnt3f at = random.point(-5, 5);
                for(UInt32 axis = 0; axis < 3; ++axis)
                    at[axis] = at[axis] * units.scale + units.moved;
                sections.add(Plane(random.vector(), at));
            }
            auto region = PickRegion::ofLasso(view, lasso, bounds_of(scene.root));
            if(!region)
                continue;
            region->cut(sections);
            comparison.compare(scene, view, lasso, sections, *region);
        }
    }
    EXPECT_GT(comparison.hits, 300);
    EXPECT_GT(comparison.misses, 500);
}

TEST(PickSelector, EnclosedIsWhatHasAllItsVerticesInside)
{
    constexpr Real64 NearEdge = 0.01;
    int enclosed = 0;
    int others = 0;
    for(Units const &units : AllUnits)
    {
        RandomNumbers random(143);
        for(int round = 0; round < 150; ++round)
        {
            Primitives const scene = random_primitives(random, 8, units);
            WindowView const view = random_view(random, units);
            Lasso const lasso = random_lasso(random, view);
            SceneBounds const bounds = bounds_of(scene.root);
            auto const region = PickRegion::ofLasso(view, lasso, bounds);
            if(!region)
                continue;
            SlowPick const slow(view, *pick_depths(view, bounds), lasso);
            PickSelector selector(scene.root);
            PickSettings settings;
            settings.kinds = AllKinds;
            settings.enclosed = true;
            std::set<Node *> found;
            for(HitT const &hit : selector.select(*region, settings))
                found.insert(hit.node);
            for(std::size_t i = 0; i < scene.nodes.size(); ++i)
            {
                auto const inside = [&](Real64 wider)
                {
                    auto const &corners = scene.corners[i];
                    return std::all_of(corners.begin(), corners.end(),
                                       [&](Pnt3d const &corner)
                                       { return slow.inside({corner}, wider).has_value(); });
                };
                bool const isFound = found.contains(scene.nodes[i].get());
                ASSERT_TRUE(isFound || !inside(-NearEdge)) << round << ' ' << i;
                ASSERT_TRUE(!isFound || inside(NearEdge)) << round << ' ' << i;
                (isFound ? enclosed : others) += 1;
            }
        }
    }
    EXPECT_GT(enclosed, 200);
    EXPECT_GT(others, 1000);
}
} // namespace
} // namespace OSG::Test
