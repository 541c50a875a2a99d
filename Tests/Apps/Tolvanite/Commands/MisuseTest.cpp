// The program's answers to wrong command lines and to bad files.

#include <algorithm>

#include <gtest/gtest.h>

#include "Program.h"

namespace Tool::Test
{
namespace
{
struct Misuse
{
    char const *name;
    std::vector<std::string> words; // FILE stands for a model
};

void PrintTo(Misuse const &misuse, std::ostream *out) { *out << misuse.name; }

class Misused : public testing::TestWithParam<Misuse>
{
};

TEST_P(Misused, IsAnsweredByOneLineAndStatusTwo)
{
    std::vector<std::string> words = GetParam().words;
    std::replace(words.begin(), words.end(), std::string("FILE"), pavilion());
    std::replace(words.begin(), words.end(), std::string("EVENTS"),
                 std::string(TEST_SOURCE_DIR "/Models/fly.events"));
    Outcome const outcome = run_program(words);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.rfind("tolvanite: ", 0), 0u) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_EQ(outcome.err.back(), '\n');
}

std::string name_of(testing::TestParamInfo<Misuse> const &row) { return row.param.name; }

INSTANTIATE_TEST_SUITE_P(Program, Misused,
                         testing::Values(Misuse{"HelpOfNoCommand", {"help", "unknown"}},
                                         Misuse{"UnknownCommand", {"paint"}},
                                         Misuse{"UnknownOption", {"--paint"}}),
                         name_of);

INSTANTIATE_TEST_SUITE_P(
    Info, Misused,
    testing::Values(Misuse{"NoFile", {"info"}}, Misuse{"MissingFile", {"info", "missing.obj"}},
                    Misuse{"TwoFiles", {"info", "FILE", "FILE"}},
                    Misuse{"UnknownOption", {"info", "FILE", "--arrays"}},
                    Misuse{"JsonWithAValue", {"info", "FILE", "--json=maybe"}}),
    name_of);

INSTANTIATE_TEST_SUITE_P(
    Dump, Misused,
    testing::Values(Misuse{"NoFile", {"dump"}},
                    Misuse{"UnknownOperation", {"dump", "FILE", "--op", "Merge"}},
                    Misuse{"UnknownOperationBehindOthers",
                           {"dump", "FILE", "--op", "Mrg", "--op", "mrg"}},
                    Misuse{"OperationWithoutName", {"dump", "FILE", "--op", "=1"}},
                    Misuse{"NoOperation", {"dump", "FILE", "--op"}},
                    Misuse{"MissingFile", {"dump", "missing.obj"}},
                    Misuse{"UnknownOption", {"dump", "FILE", "--depth", "3"}}),
    name_of);

INSTANTIATE_TEST_SUITE_P(
    Convert, Misused,
    testing::Values(Misuse{"NoTarget", {"convert", "FILE"}},
                    Misuse{"MissingFile", {"convert", "missing.obj", "out.osb"}},
                    Misuse{"AFormatThatNobodyWrites", {"convert", "FILE", "out.3ds"}},
                    Misuse{"AnUnknownFormat", {"convert", "FILE", "out.xyz"}},
                    Misuse{"NoSuffix", {"convert", "FILE", "out"}},
                    Misuse{"AnUnknownOperation", {"convert", "FILE", "out.osb", "--op", "Shrink"}}),
    name_of);

INSTANTIATE_TEST_SUITE_P(Lists, Misused,
                         testing::Values(Misuse{"FormatsOfAFile", {"formats", "FILE"}},
                                         Misuse{"UnknownOptionOfFormats", {"formats", "--all"}},
                                         Misuse{"OpsOfAFile", {"ops", "FILE"}},
                                         Misuse{"UnknownOptionOfOps", {"ops", "--all"}},
                                         Misuse{"TypesOfAFile", {"types", "FILE"}},
                                         Misuse{"UnknownOptionOfTypes", {"types", "--all"}}),
                         name_of);

// A correct replay, of which the cases replace parts. EVENTS stands for a recording.
std::vector<std::string> replay_with(std::string const &option, std::string const &value)
{
    std::vector<std::string> words = {"replay", "FILE",   "EVENTS", "--engine",
                                      "fly",    "--size", "640x480"};
    auto const place = std::find(words.begin(), words.end(), option);
    if(value.empty())
        words.erase(place, place + 2);
    else
        place[1] = value;
    return words;
}

INSTANTIATE_TEST_SUITE_P(
    Replay, Misused,
    testing::Values(Misuse{"NoFiles", {"replay", "--engine", "fly", "--size", "640x480"}},
                    Misuse{"NoEvents", {"replay", "FILE", "--engine", "fly", "--size", "640x480"}},
                    Misuse{"MissingEvents", replay_with("FILE", "missing.events")},
                    Misuse{"MissingFile", replay_with("replay", "missing.obj")},
                    Misuse{"NoEngine", replay_with("--engine", "")},
                    Misuse{"UnknownEngine", replay_with("--engine", "run")},
                    Misuse{"NoSize", replay_with("--size", "")},
                    Misuse{"SizeOfOneNumber", replay_with("--size", "640")},
                    Misuse{"SizeOfNothing", replay_with("--size", "0x480")},
                    Misuse{"NegativeSize", replay_with("--size", "640x-480")},
                    Misuse{"SizeBeyondThePixels", replay_with("--size", "640x32768")}),
    name_of);

// A correct picture, and more words.
std::vector<std::string> render_and(std::vector<std::string> const &more)
{
    std::vector<std::string> words = {"render", "FILE", "-o", "never.png"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

std::vector<std::string> render_from(std::vector<std::string> const &more)
{
    std::vector<std::string> words = render_and({"--from", "0,1,5", "--at", "0,1,0"});
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

INSTANTIATE_TEST_SUITE_P(
    Render, Misused,
    testing::Values(Misuse{"NoFile", {"render", "-o", "never.png"}},
                    Misuse{"NoTarget", {"render", "FILE"}},
                    Misuse{"MissingFile", {"render", "missing.obj", "-o", "never.png"}},
                    Misuse{"ATargetThatIsNoPng", {"render", "FILE", "-o", "never.jpg"}},
                    Misuse{"ATargetWithoutSuffix", {"render", "FILE", "-o", "png"}},
                    Misuse{"FromWithoutAt", render_and({"--from", "0,1,5"})},
                    Misuse{"AtWithoutFrom", render_and({"--at", "0,1,5"})},
                    Misuse{"UpWithoutFrom", render_and({"--up", "0,1,0"})},
                    Misuse{"FovWithoutFrom", render_and({"--fov", "30"})},
                    Misuse{"FitWithFrom", render_from({"--fit"})},
                    Misuse{"FromOfTwoNumbers", render_and({"--from", "0,1", "--at", "0,1,0"})},
                    Misuse{"FromWhereItLooks", render_and({"--from", "0,1,5", "--at", "0,1,5"})},
                    Misuse{"UpAlongTheView", render_from({"--up", "0,0,-2"})},
                    Misuse{"UpOfNoLength", render_from({"--up", "0,0,0"})},
                    Misuse{"FovOfNothing", render_from({"--fov", "0"})},
                    Misuse{"FovOf180", render_from({"--fov", "180"})},
                    Misuse{"FovOfNaN", render_from({"--fov", "nan"})},
                    Misuse{"OrthoOfNothing", render_and({"--ortho", "0"})},
                    Misuse{"OrthoBelowZero", render_and({"--ortho", "-1"})},
                    Misuse{"OrthoWithoutEnd", render_and({"--ortho", "inf"})},
                    Misuse{"SizeOfNothing", render_and({"--size", "640x0"})},
                    Misuse{"NegativeSize", render_and({"--size", "-640x480"})},
                    Misuse{"SizeOfOneNumber", render_and({"--size", "640"})},
                    Misuse{"SizeOfFractions", render_and({"--size", "640.5x480"})},
                    Misuse{"BackgroundAboveOne", render_and({"--background", "1,1,1.01"})},
                    Misuse{"BackgroundBelowZero", render_and({"--background", "-0.1,1,1"})},
                    Misuse{"BackgroundOfTwo", render_and({"--background", "1,1"})},
                    Misuse{"BackgroundOfWords", render_and({"--background", "white"})},
                    Misuse{"AnUnknownOperation", render_and({"--op", "Shrink"})}),
    name_of);

// A correct walk, and more words.
std::vector<std::string> walk_and(std::vector<std::string> const &more)
{
    std::vector<std::string> words = {"walk", "FILE",  "--from",   "0,1,5",
                                      "--at", "0,1,0", "--script", "/dev/null"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

INSTANTIATE_TEST_SUITE_P(
    Walk, Misused,
    testing::Values(
        Misuse{"NoFile", {"walk", "--from", "0,1,5", "--at", "0,1,0", "--script", "/dev/null"}},
        Misuse{"NoFrom", {"walk", "FILE", "--at", "0,1,0", "--script", "/dev/null"}},
        Misuse{"NoAt", {"walk", "FILE", "--from", "0,1,5", "--script", "/dev/null"}},
        Misuse{"NoScript", {"walk", "FILE", "--from", "0,1,5", "--at", "0,1,0"}},
        Misuse{"MissingScript",
               {"walk", "FILE", "--from", "0,1,5", "--at", "0,1,0", "--script", "missing.walk"}},
        Misuse{"AFolderForAScript",
               {"walk", "FILE", "--from", "0,1,5", "--at", "0,1,0", "--script", "/"}},
        Misuse{"FromOfTwoNumbers",
               {"walk", "FILE", "--from", "0,1", "--at", "0,1,0", "--script", "/dev/null"}},
        Misuse{"UpOfWords", walk_and({"--up", "north"})},
        Misuse{"SetWithoutAValue", walk_and({"--set", "height"})},
        Misuse{"SetOfAnUnknownName", walk_and({"--set", "hight=1"})},
        Misuse{"SetOfABadNumber", walk_and({"--set", "height=tall"})},
        Misuse{"SetOfABadTruth", walk_and({"--set", "god_mode=yes"})},
        Misuse{"SetOfABadCount", walk_and({"--set", "num_step_loop=-1"})},
        Misuse{"SetOfAVectorThatIsNone", walk_and({"--set", "normal=nan,0,0"})},
        Misuse{"NoSet", walk_and({"--set"})},
        Misuse{"FramesOfNoTime", walk_and({"--step-ms", "0"})},
        Misuse{"FramesOfAFraction", walk_and({"--step-ms", "16.5"})},
        Misuse{"FramesBackInTime", walk_and({"--step-ms", "-1"})},
        Misuse{"AMotionFactorThatIsNone", walk_and({"--motion-factor", "nan"})},
        Misuse{"ARotationAngleOfWords", walk_and({"--rotation-angle", "right"})},
        Misuse{"AGoalOfTwoNumbers", walk_and({"--goal", "1,2"})},
        Misuse{"WithinWithoutAGoal", walk_and({"--within", "1"})},
        Misuse{"ANegativeWithin", walk_and({"--goal", "1,2,3", "--within", "-1"})},
        Misuse{"AnEndlessWithin", walk_and({"--goal", "1,2,3", "--within", "inf"})},
        Misuse{
            "MissingFile",
            {"walk", "missing.obj", "--from", "0,1,5", "--at", "0,1,0", "--script", "/dev/null"}}),
    name_of);

// A correct view, of which the cases replace parts.
std::vector<std::string> view_with(std::string const &option, std::string const &value)
{
    std::vector<std::string> words = {
        "select", "FILE", "--from", "7,3,9",   "--at",    "0,1,0",   "--up",     "0,1,0",
        "--fov",  "45",   "--size", "640x480", "--pixel", "320,240", "--radius", "2"};
    auto const place = std::find(words.begin(), words.end(), option);
    if(value.empty())
        words.erase(place, place + 2);
    else
        place[1] = value;
    return words;
}

std::vector<std::string> box_and(std::vector<std::string> const &more)
{
    std::vector<std::string> words = {"select", "FILE", "--box", "-1,-1,-1", "1,1,1"};
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

INSTANTIATE_TEST_SUITE_P(
    Select, Misused,
    testing::Values(
        Misuse{"LassoOfAnOddCount",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", "1,2,3"}},
        Misuse{"LassoOfNothing",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", ""}},
        Misuse{"LassoOfWords",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", "1,b"}},
        Misuse{"LassoNotFinite",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", "1,2,3,inf"}},
        Misuse{"LassoAndPixel",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", "1,2", "--pixel", "1,1"}},
        Misuse{"LassoFromTheTop",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--lasso", "1,2", "--plane", "top"}},
        Misuse{"OrthoAndAngle",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--fov", "45", "--ortho", "3", "--pixel", "1,1"}},
        Misuse{"OrthoOfNothing",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--ortho", "0", "--pixel", "1,1"}},
        Misuse{"OrthoNotFinite",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--ortho", "inf", "--pixel", "1,1"}},
        Misuse{"OrthoNegative",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--ortho", "-3", "--pixel", "1,1"}},
        Misuse{"OrthoNotANumber",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--ortho", "nan", "--pixel", "1,1"}},
        Misuse{"NeitherAngleNorOrtho",
               {"select", "FILE", "--from", "0,0,9", "--at", "0,0,0", "--up", "0,1,0", "--size",
                "9x9", "--pixel", "1,1"}},
        Misuse{"LassoWithoutAView", {"select", "FILE", "--lasso", "1,2,3,4"}},
        Misuse{"NoFile", {"select", "--box", "0,0,0", "1,1,1"}},
        Misuse{"MissingFile", {"select", "missing.obj", "--box", "0,0,0", "1,1,1"}},
        Misuse{"NoVolume", {"select", "FILE"}},
        Misuse{"BoxOfOneCorner", {"select", "FILE", "--box", "0,0,0"}},
        Misuse{"BoxTurnedRound", {"select", "FILE", "--box", "1,1,1", "0,2,2"}},
        Misuse{"BoxOfWords", {"select", "FILE", "--box", "a", "b"}},
        Misuse{"BoxWithoutEnd", {"select", "FILE", "--box", "0,0,0", "inf,1,1"}},
        Misuse{"SevenCorners",
               {"select", "FILE", "--corners", "0,0,0", "0,0,0", "0,0,0", "0,0,0", "0,0,0", "0,0,0",
                "0,0,0"}},
        Misuse{"CornerOfTwoNumbers",
               {"select", "FILE", "--corners", "0,0,0", "0,0,0", "0,0,0", "0,0,0", "0,0,0", "0,0,0",
                "0,0,0", "0,0"}},
        Misuse{"TwoVolumes", box_and({"--corners", "0,0,0", "0,0,0", "0,0,0", "0,0,0", "0,0,0",
                                      "0,0,0", "0,0,0", "0,0,0"})},
        Misuse{"BoxAndView", box_and({"--from", "7,3,9", "--at", "0,1,0", "--up", "0,1,0", "--fov",
                                      "45", "--size", "640x480", "--pixel", "1,1"})},
        Misuse{"BoxAndPixel", box_and({"--pixel", "1,1"})},
        Misuse{"BoxAndFov", box_and({"--fov", "45"})}, Misuse{"NoFrom", view_with("--from", "")},
        Misuse{"NoAt", view_with("--at", "")}, Misuse{"NoUp", view_with("--up", "")},
        Misuse{"NoFov", view_with("--fov", "")}, Misuse{"NoSize", view_with("--size", "")},
        Misuse{"NoPixel", view_with("--pixel", "")},
        Misuse{"FromWithBlanks", view_with("--from", "7, 3, 9")},
        Misuse{"FromIsAt", view_with("--from", "0,1,0")},
        Misuse{"UpAlongTheView", view_with("--up", "7,2,9")},
        Misuse{"FovOfNothing", view_with("--fov", "0")},
        Misuse{"FovOfHalfATurn", view_with("--fov", "180")},
        Misuse{"FovOfWords", view_with("--fov", "wide")},
        Misuse{"SizeOfNothing", view_with("--size", "0x480")},
        Misuse{"SizeWithComma", view_with("--size", "640,480")},
        Misuse{"PixelOfOneNumber", view_with("--pixel", "320")},
        Misuse{"NegativeRadius", view_with("--radius", "-1")},
        Misuse{"ZeroRadius", view_with("--radius", "0")},
        Misuse{"NaNRadius", view_with("--radius", "nan")},
        Misuse{"InfiniteRadius", view_with("--radius", "inf")},
        Misuse{"NaNPixel", view_with("--pixel", "nan,1")},
        Misuse{"UnknownKind", box_and({"--kinds", "quads"})},
        Misuse{"UnknownKindAmongOthers", box_and({"--kinds", "lines,quads"})},
        Misuse{"UnknownPlane", box_and({"--plane", "middle"})},
        Misuse{"PlaneByNumber", box_and({"--plane", "9"})},
        Misuse{"UnknownOperation", box_and({"--op", "Merge"})},
        Misuse{"UnknownHits", box_and({"--hits", "some"})},
        Misuse{"UnknownOption", box_and({"--slow"})}),
    name_of);

TEST(SelectArguments, ARectangleAndAPixelExcludeEachOther)
{
    std::vector<std::string> words = view_with("--radius", "");
    words[1] = pavilion();
    words.insert(words.end(), {"--rect", "0,0,9,9"});
    EXPECT_EQ(run_program(words).status, 2);
}

class NoScene : public testing::TestWithParam<char const *>
{
};

TEST_P(NoScene, IsAnsweredBehindTheLogAndByStatusOne)
{
    TextFile const file("none.obj", GetParam());
    for(std::vector<std::string> words : {std::vector<std::string>{"info"},
                                          {"dump"},
                                          {"dump", "--json"},
                                          {"select", "--box", "0,0,0", "1,1,1", "--json"}})
    {
        words.insert(words.begin() + 1, file.path());
        Outcome const outcome = run_program(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        std::string const last = "tolvanite: cannot read " + file.path() + "\n";
        ASSERT_GE(outcome.err.size(), last.size());
        EXPECT_EQ(outcome.err.substr(outcome.err.size() - last.size()), last) << outcome.err;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, NoScene, testing::Values("", "# nothing\n", "no scene at all\n"));

TEST(NoScene, AFolderOrAnUnknownSuffixGivesNone)
{
    EXPECT_EQ(run_program({"info", testing::TempDir()}).status, 1);
    TextFile const file("scene.unknown", "v 0 0 0\n");
    Outcome const outcome = run_program({"info", file.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
}

TEST(Output, ThatCannotBeWrittenIsNoSuccess)
{
    Outcome const outcome = run_program_into("/dev/full", {"types", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "tolvanite: cannot write the result\n");
}
} // namespace
} // namespace Tool::Test
