// Steps, stairs, jumps, floors, falls and turns of the walk in small scenes.
#include "OSGWASDWalkEngine.h"

#include <cmath>

#include <gtest/gtest.h>

#include "SlowWalk.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Eye = WalkedView::StandingEye;

// --- floors ---

TEST(WalkMotion, AStepOnAFloorKeepsTheEyeAtItsHeight)
{
    Walked walked({make_floor(0)});
    walked.forwards(0.3f);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye, -0.3f), 1e-5f));
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Level);
    EXPECT_EQ(walked.last().queries, 3u);
    walked.walk->horizontal_move(0.3f, 0, 0);
    EXPECT_TRUE(walked.from().equals(Pnt3f(-0.3f, Eye, -0.3f), 1e-5f));
}

TEST(WalkMotion, ADropOfAnyHeightIsTakenInOneStep)
{
    Walked walked({make_floor(-30)});
    walked.forwards(0.3f);
    EXPECT_NEAR(walked.from()[1], Eye - 30, 1e-4);
    EXPECT_NEAR(walked.walk->getAt()[1], Eye - 30, 1e-4);
}

TEST(WalkMotion, AStepOverNothingKeepsTheHeight)
{
    Walked walked({make_quad({-5, 0, -1}, {-5, 0, 5}, {5, 0, 5}, {5, 0, -1})});
    walked.forwards(3);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye, -3), 1e-5f));
    walked.forwards(-2.5f);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye, -0.5f), 1e-5f));
}

TEST(WalkMotion, AHighFloorDoesNotLiftThePerson)
{
    // The feet of a person that starts below its standing height are near the floor or in it.
    Walked walked({make_floor(0)});
    walked.walk->set(Pnt3f(0, 1.62f, 0), Pnt3f(0, 1.62f, -1), Vec3f(0, 1, 0));
    walked.walk->god_mode(true);
    walked.forwards(1);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, 1.62f, -1), 1e-5f));
}

TEST(WalkMotion, TheFootprintStandsOnWhatTheLineMisses)
{
    // The line down meets the low floor; a shoulder is above the platform.
    Walked walked({make_floor(0), make_block({0.1f, 0.1f, -10}, {5, 0.4f, 5})});
    walked.walk->set(Pnt3f(0, 4, 0), Pnt3f(0, 4, -1), Vec3f(0, 1, 0));
    walked.forwards(0.5f);
    EXPECT_NEAR(walked.from()[1], Eye + 0.4f, 1e-5);
}

TEST(WalkMotion, WhereTheBoxBelowFindsNothingTheLineStands)
{
    // A body without width has a box without volume.
    Walked walked({make_floor(-3)});
    walked.walk->width(-0.5f);
    walked.walk->god_mode(true);
    auto const below = walked.walk->intersection(SlowWalk(*walked.walk).box(4, walked.from(), 5),
                                                 SelectionFunctor::TopPlane);
    EXPECT_FALSE(below);
    walked.forwards(0.5f);
    EXPECT_NEAR(walked.from()[1], Eye - 3, 1e-5);
}

// --- walls ---

TEST(WalkMotion, AWallShortensTheStepByAPowerOfTwo)
{
    // The chest may come to 0.1 + 0.1 before the wall.
    for(Real32 const step : {0.9f, 1.f, 1.5f, 3.f, 10.f, 70.f})
    {
        Walked walked({make_floor(0), make_wall(-1)});
        walked.forwards(step);
        Real32 expected = step;
        while(expected >= 0.8f)
            expected *= 0.5f;
        EXPECT_NEAR(walked.from()[2], -expected, 1e-5) << step;
        EXPECT_EQ(walked.last().step, -expected) << step;
    }
}

TEST(WalkMotion, AWallStopsStepsToAllSides)
{
    struct
    {
        bool sideways;
        Real32 sign;
        Real32 margin;
    } const rows[] = {{false, 1, 0.2f}, {false, -1, 0.2f}, {true, 1, 0.35f}, {true, -1, 0.35f}};
    for(auto const &row : rows)
    {
        // Walls around, two units away.
        Walked walked({make_floor(0), make_wall(-2), make_wall(2),
                       make_quad({-2, -5, -9}, {-2, -5, 9}, {-2, 9, 9}, {-2, 9, -9}),
                       make_quad({2, -5, -9}, {2, -5, 9}, {2, 9, 9}, {2, 9, -9})});
        for(int i = 0; i < 60; ++i)
        {
            if(row.sideways)
                walked.walk->horizontal_move(row.sign * 0.7f, 0, 0);
            else
                walked.walk->view_dir_move(row.sign * 0.7f, 0, 0);
        }
        Real32 const way = row.sideways ? -walked.from()[0] : walked.from()[2];
        EXPECT_LT(way * row.sign, 2 - row.margin);
        EXPECT_GT(way * row.sign, 2 - row.margin - 0.7f / 512 - 1e-5f);
    }
}

TEST(WalkMotion, ABlockedStepTriesTwentyTimesAndLeavesThePerson)
{
    Walked walked({make_floor(0), make_wall(-0.21f)});
    Pnt3f const before = walked.from();
    walked.forwards(20);
    EXPECT_EQ(walked.from(), before);
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Refused);
    EXPECT_EQ(walked.last().step, -20.f / 512);
    // Each pass: the level box and the raised box. Once: the box above the head, which finds room.
    EXPECT_EQ(walked.last().queries, 21u);
    ASSERT_TRUE(walked.last().obstacle);
    EXPECT_EQ(walked.last().obstacle->node, walked.root->getChild(1));
    EXPECT_NEAR(walked.last().obstacle->distance, 0.21f, 1e-5);
    EXPECT_EQ(std::abs(walked.last().obstacle->normal[2]), 1.f);
}

TEST(WalkMotion, UnderALowCeilingABlockedStepSearchesForRoomOnce)
{
    // Ten boxes above the head; each pass the level box and the raised one in the room found.
    Walked walked({make_floor(0), make_wall(-0.21f), make_floor(1.95f)});
    walked.forwards(20);
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Refused);
    EXPECT_EQ(walked.last().queries, 30u);
}

TEST(WalkMotion, ABoxThatIsNotFiniteIsNoWayThroughAWall)
{
    using Setter = void (*)(OpenWalk &, Real32);
    Setter const setters[] = {[](OpenWalk &walk, Real32 value) { walk.wall_distance(value); },
                              [](OpenWalk &walk, Real32 value) { walk.width(value); },
                              [](OpenWalk &walk, Real32 value) { walk.fatness(value); },
                              [](OpenWalk &walk, Real32 value) { walk.height(value); }};
    for(Setter const set : setters)
    {
        for(Real32 const value : {3e38f, INFINITY, -INFINITY, NAN})
        {
            Walked walked({make_floor(0), make_wall(-1)});
            set(*walked.walk, value);
            walked.forwards(3);
            walked.walk->staircase_mode(false);
            walked.forwards(3);
            EXPECT_GT(walked.from()[2], -1.f) << value;
        }
    }
}

TEST(WalkMotion, AStepOfAnyLengthStaysBeforeTheWall)
{
    for(Real32 const step : {1e3f, 1e18f, 1e20f, 1e30f, 3e38f})
    {
        Walked walked({make_floor(0), make_wall(-1)});
        walked.walk->num_step_loop(200);
        walked.forwards(step);
        EXPECT_GT(walked.from()[2], -1.f) << step;
        EXPECT_LT(walked.from()[2], 0.f) << step;
    }
}

TEST(WalkMotion, AStepToTheSideLeavesTheJumpToTheNextStepAlongTheView)
{
    Walked walked({make_floor(0)});
    walked.walk->staircase_mode(false);
    walked.walk->horizontal_move(0.1f, 0, 0);
    EXPECT_TRUE(walked.last().isAfterSpace);
    EXPECT_FALSE(walked.walk->staircase_mode());
    walked.forwards(0.1f);
    EXPECT_TRUE(walked.last().isAfterSpace);
    EXPECT_TRUE(walked.walk->staircase_mode());
}

TEST(WalkMotion, AnObserverIsToldTheVisitedTreesOfAnObstacle)
{
    NodePtr const wall = make_wall(-0.21f);
    NodePtr const visited = make_group({wall});
    visited->updateVolume();
    NodePtr const visit = make_visit(visited);
    Walked walked({make_floor(0), visit});
    walked.forwards(20);
    ASSERT_TRUE(walked.last().obstacle);
    EXPECT_EQ(walked.last().obstacle->node, wall);
    EXPECT_EQ(walked.last().obstacle->visitSubTreeNodes, std::vector<Node *>{visit});
}

TEST(WalkMotion, GodModePassesWallsAndStandsOnFloors)
{
    Walked walked({make_floor(-1), make_wall(-1)});
    walked.walk->god_mode(true);
    walked.forwards(3);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye - 1, -3), 1e-5f));
}

TEST(WalkMotion, GodModeWithoutWalkModeKnowsNeitherWallsNorFloors)
{
    Walked walked({make_floor(-1), make_wall(-1), make_floor(0.5f), make_floor(2)});
    walked.walk->god_mode(true);
    walked.walk->walk_mode(false);
    walked.forwards(3);
    walked.walk->vertical_move(10, 0, 0);
    walked.walk->horizontal_move(1, 0, 0);
    EXPECT_TRUE(walked.from().equals(Pnt3f(-1, Eye + 10, -3), 1e-5f));
    for(WalkStep const &step : walked.log.steps)
        EXPECT_EQ(step.queries, 0u);
}

TEST(WalkMotion, TheMaskOfTheViewDecidesWhatThePersonMeets)
{
    Walked walked({make_floor(0), make_wall(-1)});
    walked.root->getChild(1)->setTravMask(2);
    walked.viewport->setTravMask(1);
    walked.forwards(3);
    EXPECT_NEAR(walked.from()[2], -3, 1e-5);
    walked.viewport->setTravMask(3);
    walked.forwards(-5);
    EXPECT_LT(walked.from()[2], -1.2f);
}

// --- stairs and jumps ---

TEST(WalkMotion, AStepIsClimbedByTheRaisedTry)
{
    Walked walked({make_floor(0), make_block({-2, -1, -9}, {2, 0.2f, -1})});
    walked.forwards(1);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye + 0.2f, -1), 1e-5f));
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Raised);
    EXPECT_FALSE(walked.last().isAfterSpace);
    EXPECT_EQ(walked.last().raise, 1.75f * 0.3f);
    ASSERT_TRUE(walked.last().obstacle);
    EXPECT_EQ(walked.last().obstacle->node, walked.root->getChild(1));
}

/// Whether a step forwards gets onto a block of that height.
bool climbs(Real32 blockHeight, bool jumps, Real32 stairs, Real32 jump)
{
    Walked walked({make_floor(0), make_block({-2, -1, -9}, {2, blockHeight, -1})});
    walked.walk->jump_staircase_strength(stairs);
    walked.walk->jump_strength(jump);
    walked.walk->num_step_loop(1);
    walked.walk->staircase_mode(!jumps);
    walked.forwards(2);
    return walked.from()[2] < -1.9f;
}

/// The largest height that is climbed, up to the distance of two of them.
Real32 highest_climb(bool jumps, Real32 stairs, Real32 jump)
{
    Real32 low = 0.06f;
    Real32 high = 9;
    EXPECT_TRUE(climbs(low, jumps, stairs, jump));
    EXPECT_FALSE(climbs(high, jumps, stairs, jump));
    while(high - low > 1e-5f)
    {
        Real32 const middle = (low + high) / 2;
        (climbs(middle, jumps, stairs, jump) ? low : high) = middle;
    }
    return low;
}

// The soles are `ground_distance` above the floor before they rise.
TEST(WalkMotion, TheHighestStepAndTheHighestJumpAreThoseOfTheFormula)
{
    EXPECT_NEAR(highest_climb(false, 0.3f, 1.5f), 0.05f + 1.75f * 0.3f, 2e-5);
    EXPECT_NEAR(highest_climb(false, 0.1f, 1.5f), 0.05f + 1.75f * 0.1f, 2e-5);
    EXPECT_NEAR(highest_climb(true, 0.3f, 1.5f), 0.05f + 1.75f * 1.5f, 2e-5);
    EXPECT_NEAR(highest_climb(true, 0.3f, 0.7f), 0.05f + 1.75f * 0.7f, 2e-5);
}

TEST(WalkMotion, AJumpIsSpentByOneStepAlongTheView)
{
    Walked walked({make_floor(0), make_block({-2, -1, -2}, {2, 2, -1})});
    walked.walk->staircase_mode(false);
    walked.walk->horizontal_move(0.1f, 0, 0);
    EXPECT_FALSE(walked.walk->staircase_mode());
    walked.forwards(0.1f); // free way: no effect
    EXPECT_TRUE(walked.walk->staircase_mode());
    EXPECT_NEAR(walked.from()[1], Eye, 1e-5);
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Level);
    EXPECT_TRUE(walked.last().isAfterSpace);
    walked.walk->staircase_mode(false);
    walked.forwards(1.4f);
    EXPECT_NEAR(walked.from()[1], Eye + 2, 1e-4);
    EXPECT_TRUE(walked.walk->staircase_mode());
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Raised);
    EXPECT_TRUE(walked.last().isAfterSpace);
    EXPECT_EQ(walked.last().raise, 1.75f * 1.5f);
}

TEST(WalkMotion, ARaisedTryWithNothingBelowStaysRaised)
{
    Walked walked({make_block({-2, -1, -1.2f}, {2, 0.2f, -1})});
    walked.forwards(2.5f);
    EXPECT_NEAR(walked.from()[1], Eye + 0.525f, 1e-5);
}

TEST(WalkMotion, WithoutTriesNothingMovesButTheJumpIsSpent)
{
    Walked walked({make_floor(-1)});
    walked.walk->num_step_loop(0);
    walked.walk->staircase_mode(false);
    Pnt3f const before = walked.from();
    walked.forwards(1);
    walked.walk->horizontal_move(1, 0, 0);
    walked.walk->walk_mode(false);
    walked.walk->vertical_move(1, 0, 0);
    EXPECT_EQ(walked.from(), before);
    EXPECT_TRUE(walked.walk->staircase_mode());
    ASSERT_EQ(walked.log.steps.size(), 3u);
    for(WalkStep const &step : walked.log.steps)
    {
        EXPECT_EQ(step.outcome, WalkStep::Outcome::Refused);
        EXPECT_EQ(step.queries, 0u);
        EXPECT_FALSE(step.obstacle);
    }
    EXPECT_FALSE(walked.walk->determine_max_jump(1));
}

// --- the room above the head ---

TEST(WalkMotion, TheRaiseEndsBelowTheCeiling)
{
    // The head is at 1.8 and stops 0.1 below the ceiling.
    Walked walked({make_floor(2.39f)});
    boost::optional<Real32> const raise = walked.walk->determine_max_jump(2);
    ASSERT_TRUE(raise);
    EXPECT_LT(*raise, 0.49f);
    EXPECT_GT(*raise, 0.49f - 2.f / 512);
    // With few tries it is found less exactly.
    walked.walk->num_step_loop(3);
    EXPECT_FALSE(walked.walk->determine_max_jump(2));
    walked.walk->num_step_loop(4);
    EXPECT_EQ(walked.walk->determine_max_jump(2).value(), 0.25f);
}

TEST(WalkMotion, AnOpenRaiseIsTheWholeJumpAndASmallOneIsNotAsked)
{
    Walked walked({make_floor(1.81f)});
    for(Real32 const small : {0.f, 9e-7f, -1.f, -INFINITY})
        EXPECT_EQ(walked.walk->determine_max_jump(small).value(), small);
    EXPECT_FALSE(walked.walk->determine_max_jump(1e-6f));
    Walked open({make_floor(9)});
    EXPECT_EQ(open.walk->determine_max_jump(2).value(), 2.f);
}

// --- up and down ---

TEST(WalkMotion, InWalkModeThereIsNoStepUpAndNoLook)
{
    Walked walked({make_floor(0)});
    walked.walk->moveTo(100, 100, &walked.navigator);
    Pnt3f const at = walked.walk->getAt();
    walked.walk->vertical_move(1, 300, 200);
    EXPECT_EQ(walked.from(), Pnt3f(0, Eye, 0));
    EXPECT_EQ(walked.walk->getAt(), at);
    EXPECT_TRUE(walked.log.steps.empty());
}

TEST(WalkMotion, TheHeadStopsBelowACeilingAndTheFeetAboveAFloor)
{
    Walked walked({make_floor(0), make_floor(5)});
    walked.walk->walk_mode(false);
    for(int i = 0; i < 60; ++i)
        walked.walk->vertical_move(0.3f, 0, 0);
    EXPECT_LT(walked.from()[1] + 0.15f, 4.9f);
    EXPECT_GT(walked.from()[1] + 0.15f, 4.9f - 0.3f / 512 - 1e-5f);
    EXPECT_EQ(walked.last().direction, WalkStep::Direction::Vertical);
    EXPECT_EQ(walked.last().obstacle->node, walked.root->getChild(1));
    for(int i = 0; i < 60; ++i)
        walked.walk->vertical_move(-0.3f, 0, 0);
    EXPECT_GT(walked.from()[1] + 0.15f, 1.8f);
    EXPECT_LT(walked.from()[1] + 0.15f, 1.8f + 0.3f / 512 + 1e-5f);
    EXPECT_EQ(walked.last().outcome, WalkStep::Outcome::Refused);
    EXPECT_EQ(walked.last().obstacle->node, walked.root->getChild(0));
    EXPECT_EQ(walked.last().queries, 10u);
}

TEST(WalkMotion, WithoutWalkModeAStepStaysAtItsHeight)
{
    Walked walked({make_floor(-10)});
    walked.walk->walk_mode(false);
    walked.forwards(1);
    EXPECT_TRUE(walked.from().equals(Pnt3f(0, Eye, -1), 1e-5f));
}

// --- falls ---

TEST(WalkMotion, AFallEndsHigherThanAStepByTheHeightOfTheHead)
{
    Walked walked({make_floor(-10)});
    EXPECT_TRUE(walked.walk->can_fall(Pnt3f(3, 3, 3)));
    EXPECT_FALSE(walked.walk->can_fall(Pnt3f(3, -11, 3)));
    EXPECT_FALSE(walked.walk->can_fall(Pnt3f(60, 3, 3)));
    walked.walk->fall();
    EXPECT_NEAR(walked.from()[1], -10 + 1.8f, 1e-4);
    EXPECT_NEAR(walked.walk->getAt()[1], -10 + 1.8f, 1e-4);
    Pnt3f const after = walked.from();
    walked.walk->fall();
    EXPECT_NEAR(walked.from()[1], after[1], 1e-5);
    EXPECT_TRUE(walked.log.steps.empty());
}

TEST(WalkMotion, NobodyFallsThroughNothing)
{
    Walked walked({make_quad({2, 0, -5}, {2, 0, 5}, {5, 0, 5}, {5, 0, -5})});
    Pnt3f const before = walked.from();
    walked.walk->fall();
    EXPECT_EQ(walked.from(), before);
}

// --- turns ---

TEST(WalkMotion, TurnsAreNotTested)
{
    Walked walked({make_wall(-0.15f)});
    walked.walk->rotate(0.5f, 0.25f);
    EXPECT_EQ(walked.from(), Pnt3f(0, Eye, 0));
    Vec3f const look = walked.walk->getAt() - walked.from();
    EXPECT_NEAR(std::atan2(look[0], -look[2]), 0.5f, 1e-6);
    EXPECT_NEAR(std::asin(look[1]), -0.25f, 1e-6);
}

TEST(WalkMotion, LooksUpEndNearEightyFiveDegreesAndDoNotFlip)
{
    for(Real32 const sign : {1.f, -1.f})
    {
        Walked walked({});
        for(int i = 0; i < 200; ++i)
        {
            walked.walk->rotate(0, sign * 0.05f);
            Vec3f const look = walked.walk->getAt() - walked.from();
            EXPECT_LT(look[2], 0) << i;
            EXPECT_NEAR(look[0], 0, 1e-5) << i;
            EXPECT_NEAR(look.length(), 1, 1e-4) << i;
            EXPECT_LE(std::abs(std::asin(look[1] / look.length())), 1.51f) << i;
        }
        Vec3f const look = walked.walk->getAt() - walked.from();
        EXPECT_NEAR(std::abs(std::asin(look[1] / look.length())), 1.4835298f, 0.02);
    }
}

TEST(WalkMotion, AViewOfTheHorizonStays)
{
    Walked walked({});
    Pnt3f const at = walked.walk->getAt();
    walked.walk->rotate_horizont(1);
    EXPECT_EQ(walked.walk->getAt(), at);
    walked.walk->rotate(0, 0.8f);
    walked.walk->rotate_horizont(0.5f);
    EXPECT_NEAR(walked.walk->getAt()[1] - Eye, -std::sin(0.4f), 1e-5);
    walked.walk->rotate_horizont(1);
    EXPECT_NEAR(walked.walk->getAt()[1] - Eye, 0, 1e-6);
}

} // namespace
