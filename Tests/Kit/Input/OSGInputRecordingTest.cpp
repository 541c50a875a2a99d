#include "OSGInputRecording.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "OSGMemManager.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
char const *const Head = "tolvanite-events 1\n"
                         "camera perspective 45\n"
                         "from 0 2 10\n"
                         "at 0 1 0\n"
                         "up 0 1 0\n"
                         "motion-factor 0.5\n"
                         "rotation-angle 0.05\n"
                         "click-center off\n"
                         "no-intersect on\n";

RecordingResult read(std::string const &text)
{
    std::istringstream in(text);
    return read_recording(in);
}

InputRecording good(std::string const &text)
{
    RecordingResult const result = read(text);
    EXPECT_TRUE(result.recording) << result.complaint;
    return result.recording.value_or(InputRecording());
}

std::string text_of(InputRecording const &recording)
{
    std::ostringstream out;
    write_recording(out, recording);
    return out.str();
}

TEST(InputRecording, ReadsTheViewThatItBeginsIn)
{
    InputRecording const recording = good(Head);
    EXPECT_EQ(recording.projection, InputRecording::Projection::Perspective);
    EXPECT_EQ(recording.opening, 45);
    EXPECT_EQ(recording.from, Pnt3f(0, 2, 10));
    EXPECT_EQ(recording.at, Pnt3f(0, 1, 0));
    EXPECT_EQ(recording.up, Vec3f(0, 1, 0));
    EXPECT_EQ(recording.motionFactor, 0.5f);
    EXPECT_EQ(recording.rotationAngle, 0.05f);
    EXPECT_FALSE(recording.clickCenter);
    EXPECT_TRUE(recording.noIntersect);
    EXPECT_EQ(recording.near, 0.1f);
    EXPECT_EQ(recording.far, 10000.f);
    EXPECT_TRUE(recording.events.empty());
}

TEST(InputRecording, ReadsEveryKindOfEvent)
{
    InputRecording const recording = good(std::string(Head) + "0 press 0 1 2\n"
                                                              "0.5 release 1 -3 4\n"
                                                              "0.5 key 65 40 5 6\n"
                                                              "1e1 move 7 8\n"
                                                              "11 hover 9 10\n"
                                                              "12.25 idle -1 11 12\n"
                                                              "13 blur\n");
    std::vector<NavigatorEvent> const expected = {
        {NavigatorEvent::ButtonPress, 0, 0, 1, 2}, {NavigatorEvent::ButtonRelease, 1, 0, -3, 4},
        {NavigatorEvent::Key, 65, 40, 5, 6},       {NavigatorEvent::Move, 0, 0, 7, 8},
        {NavigatorEvent::Hover, 0, 0, 9, 10},      {NavigatorEvent::Idle, -1, 0, 11, 12},
        {NavigatorEvent::KillFocus, 0, 0, 0, 0}};
    double const seconds[] = {0, 0.5, 0.5, 10, 11, 12.25, 13};
    ASSERT_EQ(recording.events.size(), expected.size());
    for(std::size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(recording.events[i].event, expected[i]) << i;
        EXPECT_EQ(recording.events[i].seconds, seconds[i]) << i;
    }
}

std::string second_version(std::string const &clock)
{
    std::string text = Head;
    text.replace(text.find(" 1\n"), 3, " 2\n");
    return text + clock;
}

TEST(InputRecording, ReadsKeysFocusAndFramesOfTheSecondVersion)
{
    EXPECT_FALSE(good(Head).ticksPerSecond);
    InputRecording const recording = good(second_version("clock 1000\n") + "0 down 87\n"
                                                                           "0 focus off\n"
                                                                           "0.5 frame -16\n"
                                                                           "1 up 87\n"
                                                                           "1 focus on\n"
                                                                           "1 hover 3 4\n");
    EXPECT_EQ(recording.ticksPerSecond, 1000);
    ASSERT_EQ(recording.events.size(), 6u);
    using What = InputRecording::What;
    What const whats[] = {What::Key, What::Focus, What::Frame, What::Key, What::Focus, What::Event};
    for(std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(recording.events[i].what, whats[i]) << i;
    EXPECT_EQ(recording.events[0].code, 87);
    EXPECT_TRUE(recording.events[0].isOn);
    EXPECT_FALSE(recording.events[1].isOn);
    EXPECT_EQ(recording.events[2].ticks, -16);
    EXPECT_FALSE(recording.events[3].isOn);
    EXPECT_TRUE(recording.events[4].isOn);
    EXPECT_EQ(recording.events[5].event, (NavigatorEvent{NavigatorEvent::Hover, 0, 0, 3, 4}));
}

std::string third_version(std::string const &lines)
{
    std::string text = Head;
    text.replace(text.find(" 1\n"), 3, " 3\n");
    return text + lines;
}

TEST(InputRecording, ReadsToolsOfTheThirdVersion)
{
    InputRecording const recording = good(third_version("content-scale 1.5\n"
                                                        "0 tool band\n"
                                                        "0 held 5\n"
                                                        "0.5 press 0 1 2\n"
                                                        "1 cancel\n"
                                                        "1 tool navigate\n"
                                                        "1 tool glance shared\n"
                                                        "1 tool none\n"));
    EXPECT_EQ(recording.contentScale, 1.5f);
    EXPECT_FALSE(recording.ticksPerSecond);
    using What = InputRecording::What;
    What const whats[] = {What::Tool, What::Held, What::Event, What::Cancel,
                          What::Tool, What::Tool, What::Tool};
    ASSERT_EQ(recording.events.size(), std::size(whats));
    for(std::size_t i = 0; i < std::size(whats); ++i)
        EXPECT_EQ(recording.events[i].what, whats[i]) << i;
    EXPECT_EQ(recording.events[0].tool, "band");
    EXPECT_FALSE(recording.events[0].isOn);
    EXPECT_EQ(recording.events[1].code, 5);
    EXPECT_EQ(recording.events[4].tool, "navigate");
    for(std::size_t const shared : {4u, 5u, 6u})
        EXPECT_TRUE(recording.events[shared].isOn) << shared;
    std::string const text = text_of(recording);
    EXPECT_EQ(text_of(good(text)), text);
}

TEST(InputRecording, TheThirdVersionHoldsTheDesktopToo)
{
    InputRecording const recording =
        good(third_version("clock 1000\n0 tool pick\n0 down 87\n0 frame 16\n"));
    EXPECT_EQ(recording.ticksPerSecond, 1000);
    EXPECT_EQ(recording.events.size(), 3u);
    EXPECT_EQ(text_of(recording).rfind("tolvanite-events 3\n", 0), 0u);
}

TEST(InputRecording, IsWrittenInTheFirstVersionThatHoldsIt)
{
    InputRecording recording = good(Head);
    EXPECT_EQ(text_of(recording).rfind("tolvanite-events 1\n", 0), 0u);
    recording.ticksPerSecond = 0;
    EXPECT_EQ(text_of(recording).rfind("tolvanite-events 2\n", 0), 0u);
    EXPECT_EQ(good(text_of(recording)).ticksPerSecond, 0);
}

TEST(InputRecording, TakesCommentsBlanksAndLineEndsAsTheyCome)
{
    std::string text = std::string("# a comment\n\n \t\n") + Head;
    text += "depth 1 20 # not as deep\r\n\t 0.5 \t press  0 1\t2 # here\r\n";
    InputRecording const recording = good(text);
    EXPECT_EQ(recording.near, 1.f);
    EXPECT_EQ(recording.far, 20.f);
    EXPECT_EQ(recording.events.size(), 1u);
    // Without a line end behind the last line.
    EXPECT_EQ(good(std::string(Head) + "1 blur").events.size(), 1u);
}

TEST(InputRecording, SettingsComeInAnyOrder)
{
    InputRecording const recording = good("tolvanite-events 1\n"
                                          "no-intersect off\nclick-center on\n"
                                          "up 1 0 0\nat 1 1 1\nfrom 2 2 2\n"
                                          "rotation-angle 1\nmotion-factor 2\n"
                                          "camera orthographic 3.5\n");
    EXPECT_EQ(recording.projection, InputRecording::Projection::Orthographic);
    EXPECT_EQ(recording.opening, 3.5);
    EXPECT_TRUE(recording.clickCenter);
}

struct BadText
{
    char const *name;
    std::string text;
    char const *complaint;
};

void PrintTo(BadText const &row, std::ostream *out) { *out << row.name; }

class BadRecording : public ::testing::TestWithParam<BadText>
{
};

TEST_P(BadRecording, IsRefusedWithItsLine)
{
    RecordingResult const result = read(GetParam().text);
    EXPECT_FALSE(result.recording);
    EXPECT_EQ(result.complaint, GetParam().complaint);
}

std::string with(std::string const &line) { return Head + line + "\n"; }
/// The text without the line that begins with `word`.
std::string without(std::string const &word)
{
    std::string text = Head;
    std::size_t const begin = text.find(word);
    return text.erase(begin, text.find('\n', begin) + 1 - begin);
}

BadText const BadTexts[] = {
    {"Empty", "", "line 0: this is no recording of events"},
    {"OtherFile", "v 0 0 0\n", "line 1: this is no recording of events"},
    {"OtherVersion", "tolvanite-events 4\n", "line 1: this version of the format is not known"},
    {"VersionZero", "tolvanite-events 0\n", "line 1: this version of the format is not known"},
    {"NoVersion", "tolvanite-events\n", "line 1: something is missing at the end"},
    {"NoCamera", without("camera"), "line 8: camera is missing"},
    {"NoPose", without("up") + "0 blur\n", "line 9: up is missing"},
    {"NoSetting", without("no-intersect"), "line 8: no-intersect is missing"},
    {"UnknownSetting", with("zoom 3"), "line 10: zoom is not known"},
    {"SettingTwice", with("from 1 2 3"), "line 10: from comes twice"},
    {"SettingTooLate", with("1 blur\ndepth 1 2"), "line 11: depth comes after the first event"},
    {"UnknownCamera", "tolvanite-events 1\ncamera fisheye 90\n",
     "line 2: fisheye is neither perspective nor orthographic"},
    {"FlatCamera", "tolvanite-events 1\ncamera perspective 180\n",
     "line 2: a camera cannot open like that"},
    {"NoHeight", "tolvanite-events 1\ncamera orthographic 0\n",
     "line 2: a camera cannot open like that"},
    {"NoDepth", with("depth 2 2"), "line 10: depth wants near < far"},
    {"DepthBehindTheEye", with("depth -1 2"),
     "line 10: a perspective view wants a depth of 0 < near < far"},
    {"LooksNowhere", without("up") + "up 0 0 0\n", "line 9: from, at and up give no view"},
    {"NotANumber", "tolvanite-events 1\nfrom 1 nan 3\n", "line 2: nan is not a number here"},
    {"Infinite", "tolvanite-events 1\nfrom 1 inf 3\n", "line 2: inf is not a number here"},
    {"TooLarge", "tolvanite-events 1\nfrom 1 1e99 3\n", "line 2: 1e99 is out of range"},
    {"TooFew", "tolvanite-events 1\nfrom 1 2\n", "line 2: something is missing at the end"},
    {"TooMany", "tolvanite-events 1\nfrom 1 2 3 4\n", "line 2: 4 is too much"},
    {"NeitherOnNorOff", "tolvanite-events 1\nclick-center yes\n",
     "line 2: yes is neither on nor off"},
    {"UnknownEvent", with("1 wave 3 4"), "line 10: wave is no event"},
    {"TimeRunsBackwards", with("2 blur\n1 blur"), "line 11: time runs backwards"},
    {"TimeBelowZero", with("-1 blur"), "line 10: time runs backwards"},
    {"PixelTooFar", with("1 move 40000 4"), "line 10: 40000 is out of range"},
    {"HalfAPixel", with("1 move 4.5 4"), "line 10: 4.5 is not a number here"},
    {"NoPointer", with("1 move 4"), "line 10: something is missing at the end"},
    {"NegativeModifiers", with("1 key 65 -1 4 4"), "line 10: -1 is not a number here"},
    {"FrameInTheFirstVersion", with("1 frame 16"), "line 10: frame is no event"},
    {"KeyInTheFirstVersion", with("1 down 87"), "line 10: down is no event"},
    {"ClockInTheFirstVersion", with("clock 1000"), "line 10: clock is not known"},
    {"NoClock", second_version("") + "0 frame 0\n", "line 10: clock is missing"},
    {"ClockBackwards", second_version("clock -1\n"), "line 10: a clock cannot run like that"},
    {"FrameTooFar", second_version("clock 1\n") + "0 frame 4000000000000000001\n",
     "line 11: a frame is too far away"},
    {"KeyWithoutCode", second_version("clock 1\n") + "0 down\n",
     "line 11: something is missing at the end"},
    {"HalfAFocus", second_version("clock 1\n") + "0 focus maybe\n",
     "line 11: maybe is neither on nor off"},
    {"ToolInTheSecondVersion", second_version("clock 1\n") + "0 tool band\n",
     "line 11: tool is no event"},
    {"ScaleInTheSecondVersion", second_version("content-scale 2\n"),
     "line 10: content-scale is not known"},
    {"FrameWithoutClock", third_version("0 frame 16\n"), "line 10: frame is no event"},
    {"NoTool", third_version("0 tool\n"), "line 10: something is missing at the end"},
    {"ToolOfDigits", third_version("0 tool b4nd\n"), "line 10: b4nd is no name of a tool"},
    {"ToolThatIsElse", third_version("0 tool band mine\n"),
     "line 10: only shared may follow the name of a tool"},
    {"ToolOfThreeWords", third_version("0 tool band shared too\n"), "line 10: too is too much"},
    {"UnknownModifiers", third_version("0 held 8\n"), "line 10: these are no modifiers"},
    {"ModifiersBelowZero", third_version("0 held -1\n"), "line 10: these are no modifiers"},
    {"PoseOfNothing", third_version("0 pose 1 1 1 1 1 1 0 1 0\n"),
     "line 10: from, at and up give no view"},
    {"PoseWithoutUp", third_version("0 pose 1 1 1 2 1 1\n"),
     "line 10: something is missing at the end"},
    {"FactorOfWords", third_version("0 motion-factor on\n"), "line 10: on is not a number here"},
    {"HalfSilent", third_version("0 silent 1\n"), "line 10: 1 is neither on nor off"},
    {"PoseInTheSecondVersion", second_version("clock 1\n") + "0 pose 0 0 1 0 0 0 0 1 0\n",
     "line 11: pose is no event"},
    {"ChangeInTheFirstVersion", with("0 motion-factor 2"), "line 10: motion-factor is no event"},
    {"CancelOfWhat", third_version("0 cancel 3\n"), "line 10: 3 is too much"},
    {"NoScale", third_version("content-scale 0\n"), "line 10: a content scale is above 0"},
    {"TimeAlone", with("1"), "line 10: something is missing at the end"},
    {"Binary", with(std::string("1 \x01\x02\xff 3 4", 10)), "line 10: \\x01\\x02\xff is no event"},
    {"VeryLong", with("1 " + std::string(100000, 'x')), "line 10: more than 4096 characters"},
};

INSTANTIATE_TEST_SUITE_P(Texts, BadRecording, ::testing::ValuesIn(BadTexts),
                         [](auto const &suite) { return suite.param.name; });

TEST(InputRecording, ATextWithoutALineEndTakesLittleMemory)
{
    std::istringstream in(std::string(16 * 1024 * 1024, 'x'));
    UInt64 const before = get_mem_bytes();
    reset_mem_peak();
    RecordingResult const result = read_recording(in);
    EXPECT_LT(get_mem_peak_bytes() - before, 64u * 1024);
    EXPECT_EQ(result.complaint, "line 1: more than 4096 characters");
}

TEST(InputRecording, ReadsBackToTheSameBits)
{
    RandomNumbers random(81);
    for(int round = 0; round < 200; ++round)
    {
        InputRecording recording;
        recording.projection = round % 2 == 0 ? InputRecording::Projection::Perspective
                                              : InputRecording::Projection::Orthographic;
        recording.opening = random.real(0.001f, 179) * 1.0000000001;
        // Without perspective the view may begin behind the eye.
        bool const perspective = recording.projection == InputRecording::Projection::Perspective;
        recording.near = random.real(perspective ? 0.001f : -100.f, 1);
        recording.far = random.real(1, 1e9f);
        recording.from = random.point(-1e6f, 1e6f);
        recording.at = random.point(-1e-6f, 1e-6f);
        recording.up = random.vector();
        recording.motionFactor = random.real(-1, 1);
        recording.rotationAngle = random.real(-1, 1);
        recording.clickCenter = random.below(2) == 0;
        recording.noIntersect = random.below(2) == 0;
        bool const hasDesktop = random.below(2) == 0;
        if(hasDesktop)
            recording.ticksPerSecond = random.below(1000);
        bool const hasTools = random.below(2) == 0;
        if(hasTools)
            recording.contentScale = random.real(0.5f, 3);
        Real64 seconds = 0;
        for(int i = 0; i < 20; ++i)
        {
            seconds += random.real(0, 1);
            NavigatorEvent event;
            event.kind = NavigatorEvent::Kind(random.below(7));
            event.x = static_cast<Int16>(random.below(65536));
            event.y = static_cast<Int16>(random.below(65536));
            event.code = static_cast<Int16>(random.below(65536));
            event.modifiers = static_cast<UInt16>(random.below(65536));
            InputRecording::TimedEvent timed{seconds, event};
            if(hasDesktop)
                timed.what = InputRecording::What(random.below(4));
            timed.code = static_cast<Int16>(random.below(65536));
            if(hasTools && random.below(2) == 0)
            {
                static constexpr char const *Tools[] = {"band", "none", "navigate", "Own"};
                timed.what = InputRecording::What(4 + random.below(9));
                timed.number = random.real(-9, 9);
                timed.pose = {random.point(2, 3), random.point(-1, 1), Vec3f(0, 1, 0)};
                timed.tool = Tools[random.below(4)];
                timed.code = static_cast<Int16>(random.below(8));
            }
            timed.isOn = random.below(2) == 0;
            timed.ticks =
                Int64(random.below(1u << 31)) * Int64(random.below(1u << 30)) - 1000000000;
            recording.events.push_back(timed);
        }
        std::string const text = text_of(recording);
        InputRecording const again = good(text);
        EXPECT_EQ(text_of(again), text);
        EXPECT_EQ(again.opening, recording.opening);
        EXPECT_EQ(again.contentScale, recording.contentScale);
        EXPECT_EQ(again.from, recording.from);
        EXPECT_EQ(again.at, recording.at);
        EXPECT_EQ(again.events.back().seconds, seconds);
    }
}

void survives_any_damage(std::string const &file)
{
    std::ifstream in(TEST_SOURCE_DIR "/Models/" + file);
    std::string const whole((std::istreambuf_iterator<char>(in)), {});
    ASSERT_FALSE(whole.empty());
    int refused = 0;
    for(std::size_t cut = 0; cut < whole.size(); cut += 3)
        refused += read(whole.substr(0, cut)).recording ? 0 : 1;
    EXPECT_GT(refused, 50);
    RandomNumbers random(82);
    for(int i = 0; i < 2000; ++i)
    {
        std::string text = whole;
        for(UInt32 k = 1 + random.below(4); k > 0; --k)
            text[random.below(static_cast<UInt32>(text.size()))] =
                static_cast<char>(random.below(256));
        RecordingResult const result = read(text);
        EXPECT_EQ(result.recording.has_value(), result.complaint.empty());
    }
}

TEST(InputRecording, SurvivesAnyDamage)
{
    survives_any_damage("fly.events");
    survives_any_damage("walk.events");
}
} // namespace
