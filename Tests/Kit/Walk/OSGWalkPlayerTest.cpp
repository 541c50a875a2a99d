#include "OSGWalkPlayer.h"

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "MathPrinters.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
NodePtr square(Real32 height)
{
    return make_node(make_geometry(one_primitive(
        QuadsPrimitive, {{-9, height, -9}, {-9, height, 9}, {9, height, 9}, {9, height, -9}})));
}

NodePtr wall(Real32 z)
{
    return make_node(make_geometry(
        one_primitive(QuadsPrimitive, {{-9, -1, z}, {9, -1, z}, {9, 9, z}, {-9, 9, z}})));
}

struct Player : ::testing::Test
{
    void begin(NodePtr const &scene)
    {
        player.begin(scene, {0, 1.65f, 0}, {0, 1.65f, -1}, {0, 1, 0});
    }
    Pnt3f const &from() const { return player.getPoses().back().from; }

    WalkPlayer player;
};

TEST_F(Player, ALineHasAsManyWholeFramesAsItsTimeNeeds)
{
    begin(square(0));
    for(UInt32 const milliseconds : {0u, 1u, 16u, 17u})
        player.play({{}, milliseconds});
    std::vector<Int64> times;
    for(WalkPose const &pose : player.getPoses())
        times.push_back(pose.milliseconds);
    EXPECT_EQ(times, (std::vector<Int64>{16, 32, 48, 64}));
    EXPECT_TRUE(player.getEvents().empty());
    EXPECT_EQ(player.getQueries(), 0u);
}

TEST_F(Player, EveryFrameCountsTheFullTimeTheFirstOneToo)
{
    player.setFrameMilliseconds(100);
    begin(square(0));
    player.play({{'W'}, 150});
    ASSERT_EQ(player.getPoses().size(), 2u);
    EXPECT_NEAR(player.getPoses()[0].from[2], -0.2f, 1e-5);
    EXPECT_NEAR(player.getPoses()[1].from[2], -0.4f, 1e-5);
    EXPECT_EQ(player.getQueries(), 6u);
}

TEST_F(Player, KeysOfALineEndWithIt)
{
    begin(square(0));
    player.play({{'W', 16}, 16});
    Pnt3f const after = from();
    player.play({{}, 160});
    EXPECT_EQ(from(), after);
    player.play({{'S'}, 16});
    EXPECT_NEAR(from()[2], after[2] + 0.032f, 1e-5);
}

TEST_F(Player, ThePersonIsNotSetDownAtTheStart)
{
    player.begin(square(0), {0, 9, 0}, {0, 9, -1}, {0, 1, 0});
    player.play({{}, 16});
    EXPECT_EQ(from(), Pnt3f(0, 9, 0));
    player.play({{'W'}, 16});
    EXPECT_NEAR(from()[1], 1.65f, 1e-5);
    ASSERT_EQ(player.getEvents().size(), 1u);
    EXPECT_EQ(player.getEvents()[0].kind, WalkEvent::Kind::Dropped);
    EXPECT_EQ(player.getEvents()[0].milliseconds, 32);
    EXPECT_EQ(player.getEvents()[0].position, from());
    EXPECT_NEAR(player.getEvents()[0].height, 7.35f, 1e-5);
}

TEST_F(Player, AFrameIsBlockedWhereAKeyThatStepsMovedNothing)
{
    NodePtr const scene = make_group({square(0), wall(-0.15f), wall(0.15f)});
    begin(scene);
    for(WalkScriptLine const &line : {WalkScriptLine{{'W'}, 1}, {{'Q'}, 1}, {{}, 1}, {{'X'}, 1}})
        player.play(line);
    std::vector<bool> blocked;
    for(WalkPose const &pose : player.getPoses())
        blocked.push_back(pose.isBlocked);
    EXPECT_EQ(blocked, (std::vector<bool>{true, false, false, true}));
    // In walk mode X is no step.
    ASSERT_EQ(player.getEvents().size(), 1u);
    EXPECT_EQ(player.getEvents()[0].kind, WalkEvent::Kind::Blocked);
    ASSERT_TRUE(player.getEvents()[0].obstacle);
    EXPECT_EQ(player.getEvents()[0].obstacle->node, scene->getChild(1));
}

TEST_F(Player, SpaceIsPressedOnceAlsoInALineWithoutFrames)
{
    begin(square(0));
    player.play({{32}, 0});
    EXPECT_FALSE(player.getEngine().staircase_mode());
    EXPECT_TRUE(player.getPoses().empty());
    player.play({{'W', 32}, 32}); // the first frame spends it
    EXPECT_TRUE(player.getEngine().staircase_mode());
}

TEST_F(Player, EventsOfAFrameComeInTheOrderOfTheKeys)
{
    begin(make_group({square(0), wall(-0.15f)}));
    player.getEngine().width(0.02f);
    player.getEngine().walk_mode(false);
    player.play({{'W', 'D', 'Y'}, 16});
    ASSERT_EQ(player.getEvents().size(), 2u);
    EXPECT_TRUE(player.getEvents()[0].obstacle); // W; the step down is refused by the floor
    EXPECT_NE(player.getEvents()[0].obstacle->node, player.getEvents()[1].obstacle->node);
}

TEST_F(Player, WithoutASceneThereIsNoViewAndThePersonStays)
{
    begin(nullptr);
    player.play({{'W'}, 160});
    EXPECT_EQ(player.getPoses().size(), 10u);
    EXPECT_EQ(from(), Pnt3f(0, 1.65f, 0));
}

TEST_F(Player, LeavesTheDesktopOfTheHost) { EXPECT_STRNE(Desktop::current()->missing(), nullptr); }
} // namespace
