// Recordings that the program plays. The traces of our recordings were written by
//
//     tolvanite replay Models/pavilion.obj Models/NAME.events --engine ENGINE --size 640x480 --json
//
// and the tests of the Kit compare them with slow engines (Tests/Kit/Input).

#include <cmath>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "Keys.h"
#include "Program.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
struct Recorded
{
    char const *name;
    char const *engine;
};

void PrintTo(Recorded const &row, std::ostream *out) { *out << row.name; }

Recorded const Recordings[] = {
    {"cad", "cad"}, {"cad-orthographic", "cad"}, {"fly", "fly"}, {"copter", "copter"}};

std::string events_of(std::string const &name)
{
    return std::string(TEST_SOURCE_DIR "/Models/") + name + ".events";
}

Outcome replay(std::string const &events, std::string const &engine,
               std::vector<std::string> const &more)
{
    std::vector<std::string> words = {"replay", pavilion(), events,   "--engine",
                                      engine,   "--size",   "640x480"};
    words.insert(words.end(), more.begin(), more.end());
    return run_program(words);
}

std::string content_of(std::string const &file)
{
    std::ifstream in(file, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), {});
}

class ReplayOf : public testing::TestWithParam<Recorded>
{
};

INSTANTIATE_TEST_SUITE_P(Recordings, ReplayOf, testing::ValuesIn(Recordings),
                         [](auto const &suite)
                         {
                             std::string name = suite.param.name;
                             std::erase(name, '-');
                             return name;
                         });

TEST_P(ReplayOf, GivesTheTraceOfTheRecording)
{
    Outcome const outcome = replay(events_of(GetParam().name), GetParam().engine, {"--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    Json const poses = Json::parse(outcome.out)["poses"];
    std::string const trace =
        content_of(TEST_DATA_DIR "/Commands/traces/" + std::string(GetParam().name) + ".json");
    Json const expected = Json::parse(trace)["poses"];
    ASSERT_EQ(poses.size(), expected.size());
    for(std::size_t i = 0; i < poses.size(); ++i)
    {
        EXPECT_EQ(keys_of(poses[i]), keys_of(expected[i]));
        EXPECT_EQ(poses[i]["event"], i);
        for(char const *key : {"from", "at", "up"})
        {
            // Poses have the same bits on one machine. On others the last place of a sine may
            // differ.
            for(int axis = 0; axis < 3; ++axis)
                ASSERT_NEAR(poses[i][key][axis].get<float>(), expected[i][key][axis].get<float>(),
                            1e-4)
                    << "event " << i;
        }
        for(char const *key : {"distance", "verticalSize"})
        {
            if(expected[i].contains(key))
            {
                ASSERT_NEAR(poses[i][key].get<float>(), expected[i][key].get<float>(), 1e-4);
            }
        }
    }
}

TEST_P(ReplayOf, GivesTheSameBytesEveryTime)
{
    std::string const events = events_of(GetParam().name);
    Outcome const first = replay(events, GetParam().engine, {"--json"});
    EXPECT_EQ(first.out, replay(events, GetParam().engine, {"--json"}).out);
}

TEST_P(ReplayOf, ShowsALineForEachEvent)
{
    Outcome const outcome = replay(events_of(GetParam().name), GetParam().engine, {});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    std::string const trace =
        content_of(TEST_DATA_DIR "/Commands/traces/" + std::string(GetParam().name) + ".json");
    EXPECT_EQ(static_cast<std::size_t>(std::count(outcome.out.begin(), outcome.out.end(), '\n')),
              Json::parse(trace)["poses"].size() + 1);
    EXPECT_EQ(outcome.out.rfind("event   from ", 0), 0u);
}

TEST(Replay, HasItsKeysInTheirOrder)
{
    Json const result = Json::parse(replay(events_of("fly"), "fly", {"--json"}).out);
    EXPECT_EQ(keys_of(result), "file engine poses");
    EXPECT_EQ(result["file"], pavilion());
    EXPECT_EQ(result["engine"], "fly");
    EXPECT_EQ(keys_of(result["poses"][0]), "event from at up distance");
    Json const orthographic =
        Json::parse(replay(events_of("cad-orthographic"), "cad", {"--json"}).out);
    EXPECT_EQ(keys_of(orthographic["poses"][0]), "event from at up distance verticalSize");
}

TEST(Replay, PlaysAnyRecordingWithAnyEngine)
{
    for(Recorded const &row : Recordings)
    {
        for(char const *engine : {"cad", "fly", "copter"})
            EXPECT_EQ(replay(events_of(row.name), engine, {"--json"}).status, 0);
    }
}

TEST(Replay, DrawsThePath)
{
    OSG::Test::TempFolder const folder;
    Outcome const outcome = replay(events_of("cad"), "cad", {"--plot", folder.path("path.svg")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(content_of(folder.path("path.svg")).rfind("<svg ", 0), 0u);
    // Nothing is left beside it.
    auto const entries = std::filesystem::directory_iterator(folder.path(""));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST(Replay, SaysWhereItCannotDraw)
{
    Outcome const outcome = replay(events_of("cad"), "cad", {"--plot", "/missing/path.svg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err,
              "tolvanite: cannot write /missing/path.svg: No such file or directory\n");
}

TEST(Replay, SaysWhatIsWrongWithARecording)
{
    TextFile const events("bad.events", "tolvanite-events 1\ncamera fisheye 90\n");
    Outcome const outcome = replay(events.path(), "fly", {"--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tolvanite: " + events.path() +
                               ": line 2: fisheye is neither perspective nor orthographic\n");
}

TEST(Replay, SaysWhatIsNoScene)
{
    TextFile const scene("noscene.obj", "# nothing\n");
    Outcome const outcome = run_program(
        {"replay", scene.path(), events_of("fly"), "--engine", "fly", "--size", "640x480"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("tolvanite: cannot read " + scene.path() + "\n"), std::string::npos);
}
} // namespace
} // namespace Tool::Test
