// Planes that cut a scene open: what of it is collected.

#include <limits>

#include <gtest/gtest.h>

#include "CollectedScene.h"
#include "LogCapture.h"
#include "OSGBillboard.h"

namespace OSG::Test
{
namespace
{
Plane half_space(Vec3f const &normal, Real32 distance)
{
    Plane plane;
    plane.setValue(normal, distance);
    return plane;
}

struct Sections : testing::Test
{
    RenderActionPtr action{RenderAction::create()};
    NodePtr left = make_transform(translation(-10, 0, 0), {make_shape()});
    NodePtr middle = make_shape();
    NodePtr right = make_transform(scaling(-1, 1, 1), {left}); // mirrored
    NodePtr root = make_group({make_visit(left), middle, right});

    std::size_t count(std::vector<Plane> const &planes)
    {
        action->editDrawEnv() = View().env();
        action->editDrawEnv().setSections(planes);
        action->apply(root);
        return action->getDrawList().opaque.size();
    }
};

TEST_F(Sections, WhatIsWhollyCutAwayIsNotInTheList)
{
    EXPECT_EQ(count({}), 3u);
    EXPECT_EQ(count({half_space({1, 0, 0}, 0)}), 2u);
    EXPECT_EQ(count({half_space({0.01f, 0, 0}, 0.05f)}), 1u);
    EXPECT_EQ(count({half_space({1, 0, 0}, -2), half_space({-1, 0, 0}, -2)}), 1u);
    EXPECT_EQ(count({half_space({1, 0, 0}, 20)}), 0u);
    EXPECT_EQ(count({}), 3u);
}

TEST_F(Sections, NodesThatAreWalkedForTheViewAreCutAsWell)
{
    UnrecordedRefPtr<Billboard> const billboard(Billboard::create());
    root = make_node(billboard, {left, middle});
    EXPECT_EQ(count({}), 2u);
    EXPECT_EQ(count({half_space({1, 0, 0}, -2)}), 1u);
    EXPECT_EQ(count({half_space({-1, 0, 0}, 2)}), 1u);
}

TEST_F(Sections, PlanesWithoutANormalAreLeftOut)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    Real32 const infinity = std::numeric_limits<Real32>::infinity();
    EXPECT_EQ(count({half_space({0, 0, 0}, 1), half_space({nan, 0, 0}, 0),
                     half_space({infinity, 0, 0}, 0), half_space({1, 0, 0}, nan),
                     half_space({1, 0, 0}, 0)}),
              2u);
    EXPECT_EQ(action->getDrawEnv().getSections().size(), 1u);
}

TEST_F(Sections, ASeventhPlaneIsLeftOutWithAWarning)
{
    LogCapture const log;
    std::vector<Plane> planes(6, half_space({1, 0, 0}, -100));
    EXPECT_EQ(count(planes), 3u);
    EXPECT_TRUE(log.texts().empty());
    planes.push_back(half_space({1, 0, 0}, 100));
    EXPECT_EQ(count(planes), 3u);
    EXPECT_EQ(log.count("DrawEnv: there are at most 6 section planes, the others are left out\n"),
              1u);
}

TEST_F(Sections, TheyStayWhenTheViewIsSet)
{
    DrawEnv env;
    Plane const plane = half_space({1, 0, 0}, 1);
    env.setSections({&plane, 1});
    env.setView(translation(0, 0, 5), translation(0, 0, -5), Matrix(), {0, 9, 0, 9});
    ASSERT_EQ(env.getSectionsInEye().size(), 1u);
    EXPECT_EQ(env.getSectionsInEye()[0], (Vector<Real64, 4>(1.0, 0.0, 0.0, -1.0)));
}
} // namespace
} // namespace OSG::Test
