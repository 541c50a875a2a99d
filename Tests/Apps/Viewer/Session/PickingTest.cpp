#include "Picking.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
NodePtr square_at(Real32 x)
{
    return make_node(make_geometry(one_primitive(
        QuadsPrimitive, {{x - 1, -1, 0}, {x + 1, -1, 0}, {x + 1, 1, 0}, {x - 1, 1, 0}})));
}

/// Two squares beside each other, each in one half of a window of 200 by 100 pixels.
struct PickingTest : testing::Test
{
    PickingTest()
    {
        view.setScene(scene);
        view.setSize(200, 100);
        view.setView({{0, 0, 10}, {0, 0, 0}, {0, 1, 0}, 30, 200, 100});
        settle();
    }

    bool settle()
    {
        view.update();
        Thread::getCurrentChangeList()->commitChanges();
        return picking.updateHover();
    }
    void click(Pnt2f const &pixel)
    {
        PointerTool::Event event;
        event.pixel = pixel;
        picking.click(event);
    }
    Material *lookOf(NodePtr const &node) const
    {
        return view.getRenderAction()->getAppearances().getMaterial(NodePath(node));
    }

    NodePtr left = square_at(-2);
    NodePtr right = square_at(2);
    NodePtr scene = make_group({left, right});
    Pnt2f const onLeft{62, 50};
    Pnt2f const onRight{138, 50};
    SceneView view;
    Viewer::Picking picking{view};
};

TEST_F(PickingTest, WhatIsUnderThePointerLooksDifferentUntilThePointerLeaves)
{
    picking.hoverAt(onLeft);
    EXPECT_TRUE(settle());
    EXPECT_NE(lookOf(left), nullptr);
    picking.hoverAt(std::nullopt);
    EXPECT_TRUE(settle());
    EXPECT_EQ(lookOf(left), nullptr);
}

TEST_F(PickingTest, WhatWasHoveredOverWhenItWasSelectedLooksAsBeforeAfterwards)
{
    picking.hoverAt(onLeft);
    settle();
    click(onLeft);
    EXPECT_TRUE(picking.getSelection().contains(NodePath(left)));
    picking.hoverAt(onRight);
    settle();
    click(onRight);
    EXPECT_EQ(lookOf(left), nullptr);
    picking.hoverAt(std::nullopt);
    settle();
    picking.selectPath(NodePath(left), 0);
    EXPECT_EQ(lookOf(right), nullptr);
    EXPECT_NE(lookOf(left), nullptr);
}

TEST_F(PickingTest, HidingTheSelectionAndShowingAllLeaveNoLook)
{
    picking.hoverAt(onLeft);
    settle();
    click(onLeft);
    picking.hideSelection();
    EXPECT_TRUE(picking.isAnythingHidden());
    EXPECT_EQ(lookOf(left), nullptr);
    picking.showAll();
    EXPECT_FALSE(picking.isAnythingHidden());
    EXPECT_TRUE(view.getRenderAction()->getAppearances().isEmpty());
}
} // namespace
