// Routes through the building of ours. Tools/make_building.py says where things stand.

#include <algorithm>

#include <gtest/gtest.h>

#include "Keys.h"
#include "Program.h"

namespace Tool::Test
{
namespace
{
struct Walked
{
    int status;
    Json result;
};

/// A person of the usual size on the building's floors, with the eye at 1.65 m above them.
Walked walk(std::string const &script, std::string const &from, std::string const &at,
            std::vector<std::string> const &more = {})
{
    TextFile const file("route.walk", script);
    std::string const model = TEST_SOURCE_DIR "/Models/building.obj";
    std::vector<std::string> words = {"walk", model,    "--from",   from,       "--at",
                                      at,     "--json", "--script", file.path()};
    words.insert(words.end(), more.begin(), more.end());
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.err, outcome.status == 0 ? "" : "tolvanite: the goal was not reached\n");
    return {outcome.status, Json::parse(outcome.out, nullptr, false)};
}

std::vector<Json> events_of(Walked const &walked, std::string const &kind)
{
    std::vector<Json> events;
    for(Json const &event : walked.result["events"])
    {
        if(event["event"] == kind)
            events.push_back(event);
    }
    return events;
}

float end_of(Walked const &walked, int axis)
{
    return walked.result["frames"].back()["from"][axis].get<float>();
}

bool blocked_at_end(Walked const &walked)
{
    return walked.result["frames"].back()["blocked"].get<bool>();
}

TEST(WalkRoutes, UpTheStairToTheUpperFloor)
{
    Walked const walked =
        walk("W 3200\n", "-3.4,1.65,-3.3", "0,1.65,-3.3", {"--goal", "2.6,4.65,-3.3"});
    EXPECT_EQ(walked.status, 0);
    EXPECT_EQ(walked.result["goal"]["reached"], true);
    EXPECT_NEAR(end_of(walked, 1), 4.65f, 1e-4f);
    std::vector<Json> const climbed = events_of(walked, "climbed");
    ASSERT_EQ(climbed.size(), 16u);
    for(Json const &event : climbed)
        EXPECT_NEAR(event["height"].get<float>(), 0.1875f, 1e-4f);
    EXPECT_TRUE(events_of(walked, "blocked").empty());
}

TEST(WalkRoutes, InThroughTheFrontDoor)
{
    Walked const walked = walk("W 3000\n", "0,1.6,6.5", "0,1.6,0", {"--goal", "0,1.65,0.6"});
    EXPECT_EQ(walked.status, 0);
    EXPECT_TRUE(events_of(walked, "blocked").empty());
}

TEST(WalkRoutes, UpTheRampAndDownFromThePlatform)
{
    Walked const walked =
        walk("W 3500\n", "5,1.65,3.6", "5,1.65,-4", {"--goal", "5,2.35,-1.6", "--within", "0.1"});
    EXPECT_EQ(walked.status, 0);
    std::vector<Json> const dropped = events_of(walked, "dropped");
    ASSERT_EQ(dropped.size(), 1u);
    EXPECT_GT(dropped[0]["height"].get<float>(), 0.6f);
    EXPECT_LT(dropped[0]["position"][2].get<float>(), -2.4f);
    EXPECT_NEAR(end_of(walked, 1), 1.65f, 1e-4f);
}

void expect_blocked(Walked const &walked, float border, float normal)
{
    ASSERT_TRUE(blocked_at_end(walked));
    // Nearer than half the depth of the body and the distance from walls only by the last try.
    EXPECT_NEAR(end_of(walked, 0), border + 0.2f * normal, 1e-3f);
    Json const last = walked.result["events"].back();
    EXPECT_EQ(last["event"], "blocked");
    EXPECT_TRUE(last["node"].is_string());
    EXPECT_NEAR(last["normal"][0].get<float>(), normal, 1e-4f);
    EXPECT_NEAR(last["distance"].get<float>(), 0.2f, 1e-3f);
}

TEST(WalkRoutes, TheDoorwayIsTooLow)
{
    Walked const walked = walk("W 2000\n", "-2,1.65,1.5", "-6,1.65,1.5", {"--goal", "-5,1.65,1.5"});
    EXPECT_EQ(walked.status, 1);
    EXPECT_EQ(walked.result["goal"]["reached"], false);
    expect_blocked(walked, -3.6f, 1);
}

TEST(WalkRoutes, AChildPassesTheLowDoorway)
{
    Walked const walked =
        walk("W 2000\n", "-2,1.3,1.5", "-6,1.3,1.5",
             {"--set", "height=1.4", "--set", "height_eye=1.25", "--goal", "-5,1.3,1.5"});
    EXPECT_EQ(walked.status, 0);
}

TEST(WalkRoutes, TheStepOntoThePlatformIsTooHigh)
{
    Walked const walked = walk("W 1500\n", "2,1.65,-1.6", "6,1.65,-1.6", {"--goal", "4,2.35,-1.6"});
    EXPECT_EQ(walked.status, 1);
    EXPECT_TRUE(events_of(walked, "climbed").empty());
    expect_blocked(walked, 3, -1);
}

TEST(WalkRoutes, LongerLegsClimbThePlatform)
{
    Walked const walked = walk("W 1500\n", "2,1.65,-1.6", "6,1.65,-1.6",
                               {"--set", "jump_staircase_strength=0.4", "--goal", "4,2.35,-1.6"});
    EXPECT_EQ(walked.status, 0);
    std::vector<Json> const climbed = events_of(walked, "climbed");
    ASSERT_EQ(climbed.size(), 1u);
    EXPECT_NEAR(climbed[0]["height"].get<float>(), 0.7f, 1e-4f);
}

TEST(WalkRoutes, AJumpAtARunEndsOnThePlatform)
{
    Walked const walked =
        walk("W 700\nW+Shift+Space 200\n", "2,1.65,-1.6", "6,1.65,-1.6", {"--goal", "4,2.35,-1.6"});
    EXPECT_EQ(walked.status, 0);
    EXPECT_EQ(events_of(walked, "jumped").size(), 1u);
}

TEST(WalkRoutes, ADropThroughTheHoleEndsInTheHall)
{
    Walked const walked =
        walk("W 1500\n", "-0.8,4.65,1", "4,4.65,1", {"--goal", "1.5,1.65,1", "--within", "0.1"});
    EXPECT_EQ(walked.status, 0);
    std::vector<Json> const dropped = events_of(walked, "dropped");
    ASSERT_EQ(dropped.size(), 1u);
    EXPECT_NEAR(dropped[0]["height"].get<float>(), 3, 1e-4f);
    // The floor holds as long as the back of the body is above it.
    float const x = dropped[0]["position"][0].get<float>();
    EXPECT_GT(x, 0.7f);
    EXPECT_LT(x, 0.7f + 0.04f);
    EXPECT_TRUE(events_of(walked, "blocked").empty());
}

TEST(WalkRoutes, TheWholeWayFromTheGardenToTheHall)
{
    // In, along the hall to the stair, up, to the hole, and down again.
    std::string const script = "W 3400\n"  // to z = -0.3
                               "A 1700\n"  // to the left, to x = -3.4
                               "W 1500\n"  // to the stair's foot, z = -3.3
                               "D 3300\n"  // up the stair sideways, to x = 3.2
                               "S 2150\n"  // back to z = 1
                               "A 1500\n"; // into the hole
    Walked const walked = walk(script, "0,1.6,6.5", "0,1.6,0", {"--goal", "1.2,1.65,1"});
    EXPECT_EQ(walked.status, 0) << walked.result.dump();
    EXPECT_EQ(events_of(walked, "dropped").size(), 1u);
}
} // namespace
} // namespace Tool::Test
