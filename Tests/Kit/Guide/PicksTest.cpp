// The code of Docs/kit.md about picks. What stands in the guide stands here, letter by letter.

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGBandTool.h"
#include "OSGName.h"
#include "OSGPickResult.h"
#include "OSGSceneBounds.h"
#include "SceneBuilders.h"

namespace OSG
{
namespace
{
std::optional<PickRegion> under_pointer(WindowView const &view, Pnt2f const &pixel, Node *scene)
{
    PixelArea const area = pixel_square(pixel[0], pixel[1], DefaultPickRadius);
    return PickRegion::ofRectangle(view, area, bounds_of(scene));
}

std::deque<SelectionFunctor::HitT> in_band(PickSelector &selector, PickRegion const &region,
                                           BandTool::Direction direction)
{
    PickSettings settings;
    settings.enclosed = direction == BandTool::Direction::LeftToRight;
    return selector.select(region, settings);
}

std::string second_name(PickSelector &selector, PickRegion const &region)
{
    PickCycle cycle(pick_results(selector, region));
    PickResult const *const other = cycle.next();
    return other != nullptr ? other->name : "";
}

void cut_at_height(PickRegion &region, Real32 height)
{
    SectionPlanes planes;
    planes.add(Vec3f(0, -1, 0), height); // keeps y <= height
    region.cut(planes);
}
} // namespace

namespace Test
{
namespace
{
TEST(PicksGuide, ItsCodePicks)
{
    auto const triangle = [](Real32 z, char const *name)
    {
        NodePtr const node = make_node(
            make_geometry(one_primitive(TrianglesPrimitive, {{-1, -1, z}, {1, -1, z}, {0, 1, z}})));
        setName(node, name);
        return node;
    };
    NodePtr const root = make_group({triangle(0, "front"), triangle(-1, "back")});
    WindowView const view = {{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 45, 200, 100};
    std::optional<PickRegion> region = under_pointer(view, {100, 50}, root);
    ASSERT_TRUE(region);
    PickSelector selector(root);
    EXPECT_EQ(in_band(selector, *region, BandTool::Direction::RightToLeft).size(), 2u);
    EXPECT_EQ(in_band(selector, *region, BandTool::Direction::LeftToRight).size(), 0u);
    EXPECT_EQ(second_name(selector, *region), "back");
    cut_at_height(*region, -0.9f);
    EXPECT_EQ(second_name(selector, *region), "");
}
} // namespace
} // namespace Test
} // namespace OSG
