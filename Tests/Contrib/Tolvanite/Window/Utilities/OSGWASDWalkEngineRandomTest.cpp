// Random moves of the walk, held to the slow walk and to walls that nobody passes.

#include <cmath>

#include <gtest/gtest.h>

#include "RandomNumbers.h"
#include "SlowWalk.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
constexpr Real32 Eye = WalkedView::StandingEye;

// --- against the slow one ---

NodePtr random_rooms(RandomNumbers &random)
{
    Children parts;
    for(int i = 0; i < 14; ++i)
    {
        Pnt3f const corner = random.point(-6, 6);
        Real32 const bottom = random.real(-1, 2);
        Vec3f const size(random.real(0.1f, 3), random.real(0.05f, 2), random.real(0.1f, 3));
        Pnt3f const min(corner[0], bottom, corner[2]);
        parts.push_back(make_block(min, min + size));
    }
    parts.push_back(make_quad({-6, -0.3f, -6}, {-6, 0.2f, 6}, {6, 0.4f, 6}, {6, 0, -6}));
    NodePtr const half = make_transform(
        translation(1, 0, -2) * rotation(Vec3f(0, 1, 0), random.real(-3, 3)) * scaling(1, 2, 1),
        {parts.begin(), parts.begin() + 5});
    return make_group({half, make_group({parts.begin() + 5, parts.end()})});
}

void expect_move(OpenWalk &walk, OpenWalk::MoveResult const &expected, SlowWalk const &before)
{
    EXPECT_EQ(walk.getFrom(), expected ? expected->first : before.from);
    EXPECT_EQ(walk.getAt(), expected ? expected->second : before.at);
}

TEST(WalkMotion, EveryMoveIsThatOfTheSlowWalkToTheBit)
{
    RandomNumbers random(12);
    for(int scene = 0; scene < 60 && !::testing::Test::HasFailure(); ++scene)
    {
        Walked walked({random_rooms(random)});
        OpenWalk &walk = *walked.walk;
        walk.setPersonDimensions(random.real(1, 2), random.real(0.9f, 1.8f),
                                 random.real(0.1f, 0.8f), random.real(0.1f, 0.5f));
        walk.num_step_loop(random.below(7));
        Vec3f up(random.real(-0.1f, 0.1f), random.real(0.5f, 2), random.real(-0.1f, 0.1f));
        for(int i = 0; i < 30; ++i)
        {
            walk.walk_mode(random.below(4) != 0);
            walk.god_mode(random.below(8) == 0);
            walk.staircase_mode(random.below(3) != 0);
            if(random.below(4) == 0)
            {
                Pnt3f const from = random.point(-4, 4) + Vec3f(0, 3, 0);
                walk.set(from, from + random.vector(), up);
            }
            walk.rotate_move(0, 0, 0); // the look that a step begins with turns nothing then
            SlowWalk const slow(walk);
            Real32 const step = random.real(-2, 2);
            switch(random.below(5))
            {
            case 0:
            {
                auto const expected = slow.verticalSteps(step);
                walk.vertical_move(step, 0, 0);
                expect_move(walk, expected, slow);
                break;
            }
            case 1:
            {
                auto const expected = slow.fall();
                walk.fall();
                expect_move(walk, expected, slow);
                break;
            }
            case 2:
            {
                auto const expected = slow.steps(true, step);
                walk.horizontal_move(step, 0, 0);
                expect_move(walk, expected, slow);
                break;
            }
            default:
            {
                auto const expected = slow.steps(false, step);
                walk.view_dir_move(step, 0, 0);
                expect_move(walk, expected, slow);
            }
            }
        }
    }
}

// --- never through a wall ---

/// Whether two segments in the plane y = 0 cross.
bool cross(Pnt3f const &a, Pnt3f const &b, Pnt3f const &c, Pnt3f const &d)
{
    auto const side = [](Pnt3f const &p, Pnt3f const &q, Pnt3f const &r)
    {
        return (Real64(q[0]) - p[0]) * (Real64(r[2]) - p[2]) -
               (Real64(q[2]) - p[2]) * (Real64(r[0]) - p[0]);
    };
    return side(a, b, c) * side(a, b, d) < 0 && side(c, d, a) * side(c, d, b) < 0;
}

struct Wall
{
    Pnt3f begin, end;
};

std::vector<Wall> random_walls(RandomNumbers &random)
{
    std::vector<Wall> walls;
    for(int i = 0; i < 12; ++i)
    {
        Pnt3f begin = random.point(-10, 10);
        Pnt3f end = begin + random.vector() * 6;
        begin[1] = end[1] = 0;
        walls.push_back({begin, end});
    }
    return walls;
}

// The walls reach from below the floor to above a jump. The walls that the person passes by a turn
// do not count: the line from the head down to the sole is what never goes through.
TEST(WalkMotion, NoStepGoesThroughAWall)
{
    RandomNumbers random(2026);
    UInt32 moved = 0;
    UInt32 refused = 0;
    constexpr int Steps = 100000;
    for(int scene = 0; scene < 100; ++scene)
    {
        std::vector<Wall> const walls = random_walls(random);
        Children parts = {make_floor(0)};
        for(Wall const &wall : walls)
            parts.push_back(make_quad(wall.begin + Vec3f(0, -2, 0), wall.end + Vec3f(0, -2, 0),
                                      wall.end + Vec3f(0, 12, 0), wall.begin + Vec3f(0, 12, 0)));
        Walked walked({make_group(parts)});
        OpenWalk &walk = *walked.walk;
        walk.setWalkObserver(nullptr);
        for(int i = 0; i < Steps / 100; ++i)
        {
            Pnt3f const before = walk.getFrom();
            walk.num_step_loop(1 + random.below(4));
            walk.staircase_mode(random.below(8) != 0);
            walk.rotate(random.real(-3, 3), random.real(-0.3f, 0.3f));
            Real32 const step = random.real(-1, 1) * std::pow(10.f, random.real(-2, 1));
            if(random.below(2) == 0)
                walk.view_dir_move(step, 0, 0);
            else
                walk.horizontal_move(step, 0, 0);
            (walk.getFrom() == before ? refused : moved) += 1;
            for(Wall const &wall : walls)
                ASSERT_FALSE(cross(before, walk.getFrom(), wall.begin, wall.end))
                    << "scene " << scene << ", step " << i << " of " << step;
            Pnt3f const &from = walk.getFrom();
            if(std::abs(from[0]) > 30 || std::abs(from[2]) > 30)
                walk.set(Pnt3f(0, Eye, 0), Pnt3f(0, Eye, -1), Vec3f(0, 1, 0));
        }
    }
    // Both kinds of steps were tried in numbers.
    EXPECT_GT(moved, Steps / 4u);
    EXPECT_GT(refused, Steps / 50u);
}
} // namespace
