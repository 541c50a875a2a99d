#include "OSGShownTriangles.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGDistanceLOD.h"
#include "OSGGroup.h"
#include "OSGPerspectiveCamera.h"
#include "OSGSwitch.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
namespace
{
/// A node with so many triangles.
NodePtr make_triangles(UInt32 count)
{
    std::vector<Pnt3f> positions;
    for(UInt32 i = 0; i < count; ++i)
        for(Pnt3f const &corner : {Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(0, 1, 0)})
            positions.push_back(corner);
    return make_node(make_geometry(one_primitive(TrianglesPrimitive, positions)));
}

/// As a camera at the origin shows it, which looks along -z.
UInt64 shown(Node *root)
{
    UnrecordedRefPtr<PerspectiveCamera> const camera(PerspectiveCamera::create());
    camera->setFov(1);
    camera->setNear(1);
    camera->setFar(100);
    return count_shown_triangles(root, *camera, 64, 48);
}

TEST(ShownTriangles, WhatIsOutOfSightCounts)
{
    EXPECT_EQ(shown(nullptr), 0u);
    EXPECT_EQ(shown(make_triangles(3)), 3u);
    NodePtr const behind = make_transform(translation(0, 0, 500), {make_triangles(4)});
    EXPECT_EQ(shown(make_group({behind, make_triangles(3)})), 7u);
}

TEST(ShownTriangles, AGeometryCountsAsOftenAsItIsShown)
{
    NodePtr const shared = make_triangles(5);
    EXPECT_EQ(shown(make_group({shared, make_node(shared->getCore()), make_visit(shared)})), 15u);
}

TEST(ShownTriangles, OfASwitchTheChosenChildCounts)
{
    UnrecordedRefPtr<Switch> const core(Switch::create());
    NodePtr const node = make_node(core, {make_triangles(1), make_triangles(2)});
    core->setChoice(1);
    EXPECT_EQ(shown(node), 2u);
    core->setChoice(-1);
    EXPECT_EQ(shown(node), 0u);
    core->setChoice(-2);
    EXPECT_EQ(shown(node), 3u);
}

TEST(ShownTriangles, OfLevelsOfDetailTheOneForTheEyeCounts)
{
    UnrecordedRefPtr<DistanceLOD> const core(DistanceLOD::create());
    core->editMFRange()->push_back(10);
    NodePtr const node = make_node(core, {make_triangles(8), make_triangles(1)});
    EXPECT_EQ(shown(node), 8u);
    core->setCenter(Pnt3f(0, 0, -50));
    EXPECT_EQ(shown(node), 1u);
}

TEST(ShownTriangles, HiddenNodesDoNotCount)
{
    NodePtr const hidden = make_triangles(6);
    hidden->setTravMask(0);
    EXPECT_EQ(shown(make_group({hidden, make_triangles(1)})), 1u);
}
} // namespace
} // namespace OSG::Test
