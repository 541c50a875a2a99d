#include "OSGInputPlayer.h"

#include <fstream>
#include <functional>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "NavigatedView.h"
#include "OSGCadTrackballEngine.h"
#include "OSGCopterFlyEngine.h"
#include "OSGInputRecorder.h"
#include "OSGSceneFileHandler.h"
#include "OSGWASDFlyEngine.h"
#include "RandomNumbers.h"
#include "SlowEngines.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using EnginePtr = UnrecordedRefPtr<NavigatorEngine>;

struct EngineRow
{
    char const *name; ///< of the recording too
    EnginePtr (*create)();
    std::unique_ptr<SlowEngine> (*createSlow)();
    UInt32 seed;
};

EnginePtr make_cad() { return EnginePtr(CadTrackballEngine::create(0.8f)); }
EnginePtr make_fly() { return EnginePtr(WASDFlyEngine::create()); }
EnginePtr make_copter() { return EnginePtr(CopterFlyEngine::create()); }
template <class Engine>
std::unique_ptr<SlowEngine> make_slow()
{
    return std::make_unique<Engine>();
}

EngineRow const Rows[] = {{"cad", make_cad, make_slow<SlowTrackball>, 71},
                          {"cad-orthographic", make_cad, make_slow<SlowTrackball>, 72},
                          {"fly", make_fly, make_slow<SlowFly>, 73},
                          {"copter", make_copter, make_slow<SlowCopter>, 74}};

void PrintTo(EngineRow const &row, std::ostream *out) { *out << row.name; }

Node *pavilion()
{
    static UnrecordedRefPtr<Node> const scene(
        SceneFileHandlerBase::the()->read(TEST_SOURCE_DIR "/Models/pavilion.obj"));
    return scene;
}

SlowScene const &slow_pavilion()
{
    static SlowScene const scene(pavilion());
    return scene;
}

InputRecording recording_of(std::string const &name)
{
    std::ifstream in(TEST_SOURCE_DIR "/Models/" + name + ".events");
    RecordingResult const result = read_recording(in);
    EXPECT_TRUE(result.recording) << result.complaint;
    return *result.recording;
}

std::vector<CameraPose> play(InputRecording const &recording, EngineRow const &row)
{
    InputPlayer player(recording, row.create(), pavilion(), 640, 480);
    std::vector<CameraPose> poses;
    while(player.step())
        poses.push_back(player.getPose());
    return poses;
}

class InputPlayerOf : public ::testing::TestWithParam<EngineRow>
{
};

INSTANTIATE_TEST_SUITE_P(Engines, InputPlayerOf, ::testing::ValuesIn(Rows),
                         [](auto const &suite)
                         {
                             std::string name = suite.param.name;
                             name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                             return name;
                         });

// --- the engines against the slow ones ---

void expect_near(V3 const &slow, Real32 const *fast, double tolerance)
{
    EXPECT_NEAR(slow.x, fast[0], tolerance);
    EXPECT_NEAR(slow.y, fast[1], tolerance);
    EXPECT_NEAR(slow.z, fast[2], tolerance);
}

void hold_against_slow(InputRecording const &recording, EngineRow const &row, double tolerance)
{
    InputPlayer player(recording, row.create(), pavilion(), 640, 480);
    SlowPlayer slow(recording, row.createSlow(), slow_pavilion(), 640, 480);
    auto const *camera = dynamic_cast<OrthographicCamera const *>(&player.getCamera());
    for(auto const &timed : recording.events)
    {
        ASSERT_TRUE(player.step());
        slow.step(timed.event);
        CameraPose const fast = player.getPose();
        SlowPose const expected = slow.pose();
        expect_near(expected.from, fast.from.values(), tolerance);
        expect_near(expected.at, fast.at.values(), tolerance);
        expect_near(expected.up, fast.up.values(), tolerance);
        EXPECT_NEAR(expected.distance, fast.distance, tolerance);
        if(camera != nullptr)
        {
            EXPECT_NEAR(slow.opening(), camera->getVerticalSize(), tolerance);
        }
        if(::testing::Test::HasFailure())
        {
            ADD_FAILURE() << "at event " << player.getPosition() - 1;
            return;
        }
    }
    EXPECT_FALSE(player.step());
}

TEST_P(InputPlayerOf, PlaysItsRecordingAsTheSlowEngineDoes)
{
    hold_against_slow(recording_of(GetParam().name), GetParam(), 1e-3);
}

/// Random events of all kinds. A button that goes down goes up again.
InputRecording random_recording(EngineRow const &row, RandomNumbers &random)
{
    InputRecording recording = recording_of(row.name);
    recording.events.clear();
    recording.clickCenter = random.below(2) == 0;
    recording.noIntersect = random.below(2) == 0;
    recording.motionFactor = 0.05f;
    Int16 x = 320;
    Int16 y = 240;
    auto const add = [&](NavigatorEvent::Kind kind, UInt32 code, UInt16 modifiers = 0) {
        recording.events.push_back({0, {kind, static_cast<Int16>(code), modifiers, x, y}});
    };
    static constexpr UInt32 keys[] = {0, 1, 2, 3, 4, 5, '+', '-', 13, 32, 38, 40};
    for(int i = 0; i < 40; ++i)
    {
        x = static_cast<Int16>(100 + random.below(440));
        y = static_cast<Int16>(60 + random.below(360));
        switch(random.below(4))
        {
        case 0:
            add(NavigatorEvent::Key, keys[random.below(12)],
                static_cast<UInt16>(random.below(8) << 3));
            break;
        case 1:
            add(NavigatorEvent::Hover, 0);
            for(int tick = 0; tick < 5; ++tick)
                add(NavigatorEvent::Idle, 0);
            break;
        default:
        {
            UInt32 const button = random.below(5);
            add(NavigatorEvent::ButtonPress, button);
            for(UInt32 move = random.below(5); move > 0; --move)
            {
                x = static_cast<Int16>(x + static_cast<Int32>(random.below(41)) - 20);
                y = static_cast<Int16>(y + static_cast<Int32>(random.below(41)) - 20);
                add(NavigatorEvent::Move, 0);
            }
            add(NavigatorEvent::ButtonRelease, button);
        }
        }
    }
    return recording;
}

TEST_P(InputPlayerOf, PlaysRandomEventsAsTheSlowEngineDoes)
{
    RandomNumbers random(GetParam().seed);
    for(int round = 0; round < 60 && !::testing::Test::HasFailure(); ++round)
    {
        SCOPED_TRACE(round);
        hold_against_slow(random_recording(GetParam(), random), GetParam(), 2e-2);
    }
}

// --- the same bits ---

TEST_P(InputPlayerOf, PlaysTheSameBitsEveryTime)
{
    InputRecording const recording = recording_of(GetParam().name);
    EXPECT_EQ(play(recording, GetParam()), play(recording, GetParam()));
}

/// Passes events to a navigator, records some more, plays the recording and compares the poses. The
/// first recorded events use the camera at once.
void record_rest_and_play(EngineRow const &row)
{
    // These events come before the recording, so that it does not begin with the engine's first
    // pose.
    InputRecording const session = recording_of(row.name);
    InputPlayer live(session, row.create(), pavilion(), 640, 480);
    for(int i = 0; i < 16; ++i)
        live.step();
    live.getNavigator().buttonRelease(0, 10, 10);
    Real64 now = 5;
    InputRecorder const recorder(live.getNavigator(), [&now] { return now += 0.25; });
    std::vector<CameraPose> seen{live.getPose()};
    auto const see = [&seen, &live] { seen.push_back(live.getPose()); };
    live.getNavigator().buttonPress(NavigatorEvent::MiddleButton, 330, 250);
    see();
    live.getNavigator().moveTo(341, 262);
    see();
    live.getNavigator().buttonRelease(NavigatorEvent::MiddleButton, 341, 262);
    see();
    while(live.step())
        see();
    std::ostringstream text;
    write_recording(text, recorder.getRecording());
    std::istringstream in(text.str());
    RecordingResult const read = read_recording(in);
    ASSERT_TRUE(read.recording) << read.complaint;
    EXPECT_EQ(play(*read.recording, row), seen) << row.name;
}

// Not for the copter: its flight has begun before the recording, and only the pose is recorded.
TEST(InputRecorder, ASessionUnderWayPlaysToTheSameBits)
{
    for(int i = 0; i < 3; ++i)
        record_rest_and_play(Rows[i]);
}

TEST(InputRecorder, ANewOneIsNotSilencedByTheEndOfTheOldOne)
{
    InputRecording const session = recording_of("fly");
    InputPlayer live(session, make_fly(), pavilion(), 640, 480);
    auto recorder = std::make_unique<InputRecorder>(live.getNavigator(), [] { return 0.0; });
    recorder = std::make_unique<InputRecorder>(live.getNavigator(), [] { return 0.0; });
    live.step();
    EXPECT_EQ(recorder->getRecording().events.size(), 2u);
    recorder = nullptr;
    EXPECT_EQ(live.getNavigator().getEventObserver(), nullptr);
}

TEST(InputRecorder, RecordsAFlightOfTheCopterToTheSameBits)
{
    InputRecording const session = recording_of("copter");
    InputPlayer live(session, make_copter(), pavilion(), 640, 480);
    InputRecorder const recorder(live.getNavigator(), [] { return 0.0; });
    std::vector<CameraPose> seen{live.getPose()};
    while(live.step())
        seen.push_back(live.getPose());
    EXPECT_EQ(play(recorder.getRecording(), Rows[3]), seen);
}

TEST(InputRecorder, WritesDownViewSettingsPoseAndEvents)
{
    NavigatedView view(make_orthographic(7, 0.5f, 90).get());
    EnginePtr const engine = make_fly();
    engine->set(Pnt3f(1, 2, 3), Pnt3f(4, 5, 6), Vec3f(0, 0, 1));
    view.navigator.setEngine(engine);
    view.navigator.setMotionFactor(2);
    view.navigator.setRotationAngle(0.1f);
    view.navigator.setClickCenter(true);
    view.navigator.mouseMove(33, 44);
    Real64 now = 10;
    {
        InputRecorder const recorder(view.navigator, [&now] { return now; });
        now = 10.5;
        view.navigator.keyPressEx(65, 8, 35, 46);
        now = 11;
        view.navigator.killFocus();
        std::ostringstream text;
        write_recording(text, recorder.getRecording());
        EXPECT_EQ(text.str(), "tolvanite-events 1\n"
                              "camera orthographic 7\n"
                              "depth 0.5 90\n"
                              "from 1 2 3\n"
                              "at 4 5 6\n"
                              "up 0 0 1\n"
                              "motion-factor 2\n"
                              "rotation-angle 0.1\n"
                              "click-center on\n"
                              "no-intersect off\n"
                              "0 hover 33 44\n"
                              "0.5 key 65 8 35 46\n"
                              "1 blur\n");
    }
    view.navigator.mouseMove(1, 1); // nobody watches any more
}

TEST(InputPlayer, ServesAViewOfAnySize)
{
    InputRecording recording;
    recording.events = {{0, {NavigatorEvent::Hover, 0, 0, 1, 1}}};
    for(UInt16 const size : {UInt16(1), UInt16(2), UInt16(3), UInt16(32767)})
    {
        InputPlayer player(recording, make_fly(), nullptr, size, size);
        EXPECT_EQ(player.getNavigator().getViewport()->calcPixelWidth(), size);
        EXPECT_EQ(player.getNavigator().getViewport()->calcPixelHeight(), size);
        EXPECT_TRUE(player.step());
        EXPECT_FALSE(player.step());
    }
}
} // namespace
