// The command walk: options, result, events, goals, scripts and plots. Its routes through the
// building have a file of their own.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "FileContent.h"
#include "Keys.h"
#include "Program.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::content_of;

std::string building() { return TEST_SOURCE_DIR "/Models/building.obj"; }

/// A walk through the building by the lines of a script.
Outcome walk(std::string const &from, std::string const &at, std::string const &lines,
             std::vector<std::string> const &more)
{
    TextFile const script("route.walk", lines);
    std::vector<std::string> words = {"walk", building(), "--from",   from,
                                      "--at", at,         "--script", script.path()};
    words.insert(words.end(), more.begin(), more.end());
    return run_program(words);
}

Json walked(std::string const &from, std::string const &at, std::string const &lines,
            std::vector<std::string> more = {})
{
    more.push_back("--json");
    Outcome const outcome = walk(from, at, lines, more);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    return Json::parse(outcome.out);
}

std::size_t count_of(Json const &events, std::string const &kind)
{
    return static_cast<std::size_t>(std::count_if(events.begin(), events.end(),
                                                  [&kind](Json const &event)
                                                  { return event["event"] == kind; }));
}

// --- events ---

void expect_keys(Json const &result, std::string const &kind, std::string const &keys)
{
    ASSERT_GT(count_of(result["events"], kind), 0u) << kind;
    for(Json const &event : result["events"])
    {
        if(event["event"] == kind)
        {
            EXPECT_EQ(keys_of(event), keys);
        }
    }
}

TEST(Walk, EachEventHasItsKeysInTheirOrder)
{
    expect_keys(walked("-3.2,1.65,-3.3", "0,1.65,-3.3", "W 500\n"), "climbed",
                "event t position height");
    expect_keys(walked("1.2,4.65,3", "1.2,4.65,0", "W 1200\n"), "dropped",
                "event t position height");
    expect_keys(walked("0,1.65,1.5", "-5,1.65,1.5", "W 3000\n"), "blocked",
                "event t position node distance normal");
    expect_keys(
        walked("1,1.65,-1.6", "5,1.65,-1.6", "W 750\nSpace 0\nW 250\n", {"--step-ms", "250"}),
        "jumped", "event t position");
}

TEST(Walk, AFreeStepSpendsTheJump)
{
    Json const result = walked("1,1.65,-1.6", "5,1.65,-1.6", "Space 0\nW 2000\n");
    EXPECT_EQ(count_of(result["events"], "jumped"), 0u);
    EXPECT_GT(count_of(result["events"], "blocked"), 0u);
}

TEST(Walk, WithGodModeWallsAreNone)
{
    Json const result = walked("0,1.65,0", "0,1.65,-9", "W 3000\n",
                               {"--set", "god_mode=true", "--goal", "0,1.6,-5.8"});
    EXPECT_EQ(count_of(result["events"], "blocked"), 0u);
}

// --- the result ---

TEST(Walk, HasItsKeysInTheirOrder)
{
    Json const plain = walked("0,1.65,8", "0,1.65,0", "W 32\n");
    EXPECT_EQ(keys_of(plain), "file frames events queries seconds");
    EXPECT_EQ(plain["file"], building());
    EXPECT_EQ(keys_of(plain["frames"][0]), "t from at up blocked");
    EXPECT_EQ(plain["queries"], 6);
    Json const aimed = walked("0,1.65,8", "0,1.65,0", "W 32\n", {"--goal", "0,1.65,8"});
    EXPECT_EQ(keys_of(aimed), "file frames events queries seconds goal");
    EXPECT_EQ(keys_of(aimed["goal"]), "reached t nearest");
    EXPECT_EQ(aimed["goal"]["t"], 0);
    EXPECT_EQ(aimed["goal"]["nearest"], 0);
}

TEST(Walk, TimesAreThoseOfTheFramesEnds)
{
    Json const result =
        walked("0,1.65,8", "0,1.65,0", "none 30\nW 1\nnone 0\n", {"--step-ms", "15"});
    ASSERT_EQ(result["frames"].size(), 3u);
    for(int i = 0; i < 3; ++i)
        EXPECT_EQ(result["frames"][i]["t"], 15 * (i + 1));
    EXPECT_NEAR(result["frames"][2]["from"][2].get<float>(), 8 - 0.03f, 1e-5);
}

TEST(Walk, TheNavigatorsFactorsScaleStepsAndTurns)
{
    Json const fast = walked("0,1.65,8", "0,1.65,0", "W 16\n", {"--motion-factor", "2"});
    EXPECT_NEAR(fast["frames"][0]["from"][2].get<float>(), 8 - 0.064f, 1e-5);
    Json const turned = walked("0,1.65,8", "0,1.65,7", "E 16\n", {"--rotation-angle", "1"});
    EXPECT_NEAR(turned["frames"][0]["at"][0].get<float>(), std::sin(0.064f), 1e-5);
}

TEST(Walk, AnotherUpIsTaken)
{
    Json const result = walked("0,1.65,8", "0,1.65,0", "none 16\n", {"--up", "0,2,0"});
    EXPECT_EQ(result["frames"][0]["up"], Json({0, 2, 0}));
}

TEST(Walk, SettingsAreMadeInTheirOrder)
{
    Json const result = walked("0,1.65,8", "0,1.65,0", "W 16\n",
                               {"--set", "motion_factor=4", "--set", "motion_factor=0.4"});
    EXPECT_NEAR(result["frames"][0]["from"][2].get<float>(), 8 - 0.064f, 1e-5);
}

TEST(Walk, GivesTheSameBytesEveryTimeButForTheSeconds)
{
    std::string const script = "W 1500\nSpace+W+Shift 300\nE 250\nW+A 700\nX+Q 90\nS+D 400\n";
    auto const text = [&script]
    {
        std::string const out = walk("0,1.65,8", "0,1.65,0", script, {"--json"}).out;
        return out.substr(0, out.find("\"seconds\""));
    };
    std::string const first = text();
    EXPECT_GT(first.size(), 10000u);
    EXPECT_EQ(first, text());
}

TEST(Walk, ABlockedStepThatNoQueryRefusedHasNoNode)
{
    Json const result = walked("0,1.65,8", "0,1.65,0", "W 16\n", {"--set", "num_step_loop=0"});
    ASSERT_EQ(result["events"].size(), 1u);
    for(char const *key : {"node", "distance", "normal"})
        EXPECT_TRUE(result["events"][0][key].is_null()) << key;
}

TEST(Walk, NamesTheNodeThatIsInTheWayByItsPath)
{
    Json const result = walked("0,1.65,0", "0,1.65,-9", "W 3000\n");
    ASSERT_GT(count_of(result["events"], "blocked"), 0u);
    std::string const path = result["events"][0]["node"];
    ASSERT_EQ(path.rfind('/', 0), 0u);
    // The stair stands before the back wall.
    Json const dump = Json::parse(run_program({"dump", building(), "--json"}).out);
    Json const node = dump["root"]["children"][std::stoul(path.substr(1))];
    EXPECT_NEAR(node["bounds"]["max"][2].get<float>(), -2.6f, 1e-5);
    EXPECT_NEAR(node["bounds"]["max"][1].get<float>(), 3, 1e-5);
}

// --- goals ---

TEST(Walk, AGoalThatIsNotReachedIsAFailure)
{
    Outcome const outcome = walk("0,1.6,8", "0,1.6,0", "W 100\n", {"--goal", "0,1.6,2", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvanite: the goal was not reached\n");
    Json const goal = Json::parse(outcome.out)["goal"];
    EXPECT_EQ(goal["reached"], false);
    EXPECT_TRUE(goal["t"].is_null());
    EXPECT_NEAR(goal["nearest"].get<float>(), 6 - 7 * 0.032f, 1e-4);
}

TEST(Walk, AGoalOnTheWayIsReached)
{
    Json const result =
        walked("0,1.6,8", "0,1.6,0", "W 1000\n", {"--goal", "0,1.6,7", "--within", "0.1"});
    EXPECT_EQ(result["goal"]["t"], 464); // 29 frames of 0.032
    EXPECT_LT(result["goal"]["nearest"].get<float>(), 0.02f);
}

TEST(Walk, EmptyValuesAreBadValues)
{
    for(char const *option : {"--goal", "--motion-factor", "--rotation-angle"})
    {
        Outcome const outcome = walk("0,1.6,8", "0,1.6,0", "W 16\n", {option, ""});
        EXPECT_EQ(outcome.status, 2) << option;
        EXPECT_EQ(outcome.out, "");
    }
}

// --- tables, scripts, plots ---

TEST(Walk, ShowsEventsAndASummary)
{
    Outcome const outcome = walk("0,1.65,0", "0,1.65,-9", "W 1600\n", {"--goal", "0,1.65,0"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.rfind("t         event     position", 0), 0u);
    EXPECT_NE(outcome.out.find("blocked"), std::string::npos);
    EXPECT_NE(outcome.out.find("100 frames to "), std::string::npos);
    EXPECT_NE(outcome.out.find("goal reached at 0, nearest 0\n"), std::string::npos);
}

TEST(Walk, EqualEventsStandInOneLine)
{
    Outcome const outcome = walk("0,1.65,0", "0,1.65,-9", "W 3200\n", {});
    EXPECT_EQ(outcome.status, 0);
    std::size_t const lines =
        static_cast<std::size_t>(std::count(outcome.out.begin(), outcome.out.end(), '\n'));
    EXPECT_LT(lines, 10u) << outcome.out;
    EXPECT_NE(outcome.out.find(" times, until 3200)\n"), std::string::npos) << outcome.out;
}

TEST(Walk, APlotNeverTakesThePlaceOfWhatIsRead)
{
    TextFile const script("route.walk", "W 16\n");
    Outcome const outcome = run_program({"walk", building(), "--from", "0,1.6,8", "--at", "0,1.6,0",
                                         "--script", script.path(), "--plot", script.path()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tolvanite: --plot: " + script.path() + " is read by this command\n");
    EXPECT_EQ(content_of(script.path()), "W 16\n");
}

TEST(Walk, ALineThatIsNoneIsNamedByItsNumber)
{
    Outcome const outcome = walk("0,1,0", "0,1,5", "# way\n\nW 100\nW+Z 100\n", {});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tolvanite: --script: line 4: W+Z 100 is not KEYS MILLISECONDS\n");
}

TEST(Walk, ALongLineIsCutInTheMessage)
{
    std::string line(5 << 20, 'W');
    line += '\n'; // on its own: with operator+ gcc warns of an overflow that cannot be
    Outcome const outcome = walk("0,1,0", "0,1,5", line, {});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "tolvanite: --script: line 1: " + std::string(60, 'W') +
                               "... is not KEYS MILLISECONDS\n");
}

TEST(Walk, AScriptWithoutLinesStandsStill)
{
    Json const result = walked("0,1.65,8", "0,1.65,0", "# nothing\r\n\r\n");
    EXPECT_TRUE(result["frames"].empty());
    EXPECT_TRUE(result["events"].empty());
    EXPECT_EQ(result["queries"], 0);
}

TEST(Walk, DrawsThePathAndTheEvents)
{
    OSG::Test::TempFolder const folder;
    Outcome const outcome =
        walk("-3.2,1.65,-3.3", "0,1.65,-3.3", "W 3200\n", {"--plot", folder.path("stair.svg")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::string const svg = content_of(folder.path("stair.svg"));
    EXPECT_EQ(svg.rfind("<svg ", 0), 0u);
    EXPECT_NE(svg.find("<title>climbed</title>"), std::string::npos);
    EXPECT_NE(svg.find("class=\"legend\""), std::string::npos);
}

TEST(Walk, SaysWhereItCannotDraw)
{
    Outcome const outcome =
        walk("0,1,0", "0,1,5", "W 16\n", {"--plot", "/missing/path.svg", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "tolvanite: cannot write /missing/path.svg: No such file or directory\n");
}

TEST(Walk, AFileThatGivesNoSceneIsAFailure)
{
    TextFile const script("route.walk", "W 16\n");
    Outcome const outcome = run_program(
        {"walk", script.path(), "--from", "0,1,0", "--at", "0,1,5", "--script", script.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("tolvanite: cannot read "), std::string::npos);
}

TEST(Walk, BadSettingsAreNamed)
{
    EXPECT_EQ(walk("0,1,0", "0,1,5", "", {"--set", "hight=2"}).err,
              "tolvanite: --set: no setting hight\n");
    EXPECT_EQ(walk("0,1,0", "0,1,5", "", {"--set", "height=tall"}).err,
              "tolvanite: --set: tall is no value of height\n");
    EXPECT_EQ(walk("0,1,0", "0,1,5", "", {"--set", "height"}).err,
              "tolvanite: --set: height is not NAME=VALUE\n");
}

TEST(Walk, SettingsThatAreNotFiniteLeaveThePersonWhereItIs)
{
    for(char const *value : {"nan", "inf", "-inf"})
    {
        Json const result =
            walked("0,1.65,8", "0,1.65,0", "W 160\n", {"--set", std::string("height=") + value});
        EXPECT_EQ(result["frames"].back()["from"], Json::parse("[0,1.65,8]")) << value;
    }
}
} // namespace
} // namespace Tool::Test
