// Groups with the materials of geometries above these.

#include <gtest/gtest.h>

#include "GroupMaterials.h"
#include "OSGMaterialGroup.h"
#include "OSGName.h"
#include "OSGReachableNodes.h"
#include "OperationScenes.h"

namespace Tool::Test
{
namespace
{
using namespace OSG;
using namespace OSG::Test;

NodePtr make_painted(Material *material)
{
    NodePtr node = make_triangle();
    core_of<Geometry>(node)->setMaterial(material);
    return node;
}

TEST(GroupMaterials, ANodeBecomesTheGroupAndItsGeometryAndChildrenGoBelow)
{
    auto const material = make_material();
    NodePtr const node = make_painted(material);
    NodePtr const child = make_group();
    NodePtr const other = make_group();
    node->addChild(child);
    node->addChild(other);
    setName(node, "part");
    Geometry *const geometry = core_of<Geometry>(node);
    NodePtr const root = make_group({make_group(), node, make_group()});
    group_materials(root);
    ASSERT_EQ(root->getChild(1), node.get());
    EXPECT_STREQ(getName(node), "part");
    ASSERT_NE(core_of<MaterialGroup>(node), nullptr);
    EXPECT_EQ(core_of<MaterialGroup>(node)->getMaterial(), material.get());
    ASSERT_EQ(node->getNChildren(), 1u);
    EXPECT_EQ(node->getChild(0)->getCore(), geometry);
    EXPECT_EQ(geometry->getMaterial(), material.get());
    EXPECT_EQ(children_of(node->getChild(0)), (std::vector<Node *>{child, other}));
    EXPECT_TRUE(root->getVolume().isValid());
}

TEST(GroupMaterials, GeometriesWithoutAMaterialStayAsTheyAre)
{
    NodePtr const root = make_group({make_triangle()});
    group_materials(root);
    EXPECT_EQ(count_reachable_nodes(root), 2u);
}

TEST(GroupMaterials, TheRootAndTreesThatAreShownSeveralTimesAreGroupedOnce)
{
    auto const material = make_material();
    NodePtr const shown = make_painted(material);
    NodePtr const root = make_painted(material);
    root->addChild(make_visit(shown));
    root->addChild(make_visit(shown));
    group_materials(root);
    EXPECT_NE(core_of<MaterialGroup>(root), nullptr);
    EXPECT_NE(core_of<MaterialGroup>(shown), nullptr);
    EXPECT_EQ(count_reachable_nodes(root), 6u);
}
} // namespace
} // namespace Tool::Test
