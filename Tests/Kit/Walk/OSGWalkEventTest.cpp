#include "OSGWalkEvent.h"

#include <gtest/gtest.h>

using namespace OSG;

namespace
{
using Kind = WalkEvent::Kind;
using Outcome = WalkStep::Outcome;

WalkStep step_by(Outcome outcome, Real32 rise, bool isAfterSpace = false)
{
    WalkStep step;
    step.outcome = outcome;
    step.isAfterSpace = isAfterSpace;
    step.before = {1, 2, 3};
    step.after = {4, 2 + rise, 5};
    step.up = {0, 1, 0};
    return step;
}

std::vector<Kind> kinds_of(WalkStep const &step)
{
    std::vector<WalkEvent> events;
    append_walk_events(step, 0.0625f, events);
    std::vector<Kind> kinds;
    for(WalkEvent const &event : events)
        kinds.push_back(event.kind);
    return kinds;
}

TEST(WalkEvent, FollowsFromTheOutcomeAndTheHeight)
{
    struct
    {
        char const *name;
        WalkStep step;
        std::vector<Kind> kinds;
    } const rows[] = {
        {"level", step_by(Outcome::Level, 0), {}},
        {"level and down a little", step_by(Outcome::Level, -0.0625f), {}},
        {"level and down", step_by(Outcome::Level, -0.125f), {Kind::Dropped}},
        {"a level jump", step_by(Outcome::Level, 0, true), {}},
        {"level and up", step_by(Outcome::Level, 1), {}},
        {"raised in place", step_by(Outcome::Raised, 0.5e-4f), {}},
        {"a climb", step_by(Outcome::Raised, 0.25f), {Kind::Climbed}},
        {"raised and down", step_by(Outcome::Raised, -0.25f), {Kind::Dropped}},
        {"a jump", step_by(Outcome::Raised, 0.25f, true), {Kind::Jumped}},
        {"a jump in place", step_by(Outcome::Raised, 0, true), {Kind::Jumped}},
        {"a jump down", step_by(Outcome::Raised, -1, true), {Kind::Jumped, Kind::Dropped}},
        {"refused", step_by(Outcome::Refused, 0), {Kind::Blocked}},
        {"a refused jump", step_by(Outcome::Refused, 0, true), {Kind::Blocked}}};
    for(auto const &row : rows)
        EXPECT_EQ(kinds_of(row.step), row.kinds) << row.name;
}

TEST(WalkEvent, HeightsCountAlongUpAndAreAboveZero)
{
    std::vector<WalkEvent> events;
    WalkStep climb = step_by(Outcome::Raised, 0.25f);
    climb.up = {-1, 0, 0};
    climb.after = {0.5f, 2, 3};
    append_walk_events(climb, 0, events);
    append_walk_events(step_by(Outcome::Level, -0.75f), 0, events);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0].height, 0.5f);
    EXPECT_EQ(events[1].height, 0.75f);
}

TEST(WalkEvent, ABlockedStepTellsItsObstacleAlone)
{
    std::vector<WalkEvent> events;
    WalkStep blocked = step_by(Outcome::Refused, 0);
    append_walk_events(blocked, 0, events);
    blocked.obstacle = WalkObstacle{nullptr, {}, 0.25f, {0, 0, 1}};
    append_walk_events(blocked, 0, events);
    WalkStep climb = step_by(Outcome::Raised, 1);
    climb.obstacle = blocked.obstacle;
    append_walk_events(climb, 0, events);
    ASSERT_EQ(events.size(), 3u);
    EXPECT_FALSE(events[0].obstacle);
    ASSERT_TRUE(events[1].obstacle);
    EXPECT_EQ(events[1].obstacle->distance, 0.25f);
    EXPECT_FALSE(events[2].obstacle);
}

TEST(WalkEvent, KindsHaveNames)
{
    EXPECT_STREQ(name_of(Kind::Jumped), "jumped");
    EXPECT_STREQ(name_of(Kind::Climbed), "climbed");
    EXPECT_STREQ(name_of(Kind::Dropped), "dropped");
    EXPECT_STREQ(name_of(Kind::Blocked), "blocked");
}
} // namespace
