/// \file
/// The boxes of nodes whose cores are shown more than once.

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
TEST(NodeVolume, LeavesThatShareACoreHaveItsBox)
{
    auto const point = [](Real32 x) {
        return make_geometry({{PointsPrimitive}, {1}, {{x, 0, 0}, {x + 1, 2, 3}}});
    };
    GeometryPtr const near = point(0);
    GeometryPtr const far = point(7);
    std::vector<GeometryPtr> const shown = {near, near, far, far, near};
    NodePtr const root(make_group());
    for(GeometryPtr const &geometry : shown)
        root->addChild(make_node(geometry));
    root->addChild(make_group());
    root->updateVolume();
    for(UInt32 i = 0; i < shown.size(); ++i)
    {
        BoxVolume own;
        shown[i]->adjustVolume(own);
        EXPECT_EQ(root->getChild(i)->getVolume(), own) << i;
    }
    EXPECT_TRUE(root->getChild(5)->getVolume().isEmpty());
    EXPECT_EQ(root->getVolume().getMax(), Pnt3f(7, 0, 0));
}
} // namespace OSG::Test
