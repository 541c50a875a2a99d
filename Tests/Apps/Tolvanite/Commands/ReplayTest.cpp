// Recordings that the program plays. The traces of our recordings were written by
//
//     tolvanite replay Models/pavilion.obj Models/NAME.events --engine ENGINE --size 640x480 --json
//
// Tests/Kit/Input compares the same recordings with slow engines.

#include <cmath>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "FileContent.h"
#include "Keys.h"
#include "Program.h"
#include "TempFolder.h"

namespace Tool::Test
{
namespace
{
using OSG::Test::content_of;
struct Recorded
{
    char const *name;
    char const *engine;
};

void PrintTo(Recorded const &row, std::ostream *out) { *out << row.name; }

Recorded const Recordings[] = {{"cad", "cad"},
                               {"cad-orthographic", "cad"},
                               {"fly", "fly"},
                               {"copter", "copter"},
                               {"walk", "walk"}};

std::string events_of(std::string const &name)
{
    return std::string(TEST_SOURCE_DIR "/Models/") + name + ".events";
}

std::vector<std::string> replay_words(std::string const &events, std::string const &engine,
                                      std::vector<std::string> const &more)
{
    std::vector<std::string> words = {"replay", pavilion(), events,   "--engine",
                                      engine,   "--size",   "640x480"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

Outcome replay(std::string const &events, std::string const &engine,
               std::vector<std::string> const &more)
{
    return run_program(replay_words(events, engine, more));
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
            // To the bit on one machine; sines differ in the last place from one to the next.
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

TEST(Replay, TheWalkEngineIsToldOfARecordingWithoutFrames)
{
    Outcome const outcome = replay(events_of("fly"), "walk", {});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "tolvanite: " + events_of("fly") +
                               " holds no frames, so the walk engine takes no step\n");
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

// --- events that do not end ---

void expect_refusal(std::string const &events, std::string const &reason)
{
    constexpr unsigned Megabytes = 512;
    Outcome const outcome = run_program_within(Megabytes, replay_words(events, "fly", {"--json"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "tolvanite: " + events + ": " + reason + "\n");
}

TEST(Replay, RefusesAPipeThatNobodyWrites)
{
    OSG::Test::TempFolder const folder;
    std::string const pipe = folder.path("pipe.events");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    expect_refusal(pipe, "is no regular file");
}

TEST(Replay, RefusesADeviceWithoutEnd)
{
    expect_refusal("/dev/zero", "is no regular file");
    expect_refusal("/dev/urandom", "is no regular file");
}

TEST(Replay, RefusesARecordingWithoutALineEnd)
{
    constexpr std::size_t Length = 16 * 1024 * 1024;
    TextFile const bare("endless.events", std::string(Length, 'x'));
    expect_refusal(bare.path(), "line 1: more than 4096 characters");
    TextFile const begun("begun.events", "tolvanite-events 1\n" + std::string(Length, '7'));
    expect_refusal(begun.path(), "line 2: more than 4096 characters");
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
