// A walk on a desktop is recorded with what the engine asked, and plays to the same bits.

#include "OSGWatchedDesktop.h"

#include <sstream>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "OSGInputPlayer.h"
#include "OSGInputRecorder.h"
#include "OSGWASDWalkEngine.h"
#include "RandomNumbers.h"
#include "SceneBuilders.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
using EnginePtr = UnrecordedRefPtr<NavigatorEngine>;

/// A floor with some walls, so that steps are shortened and the person is set down.
NodePtr make_maze()
{
    std::vector<Pnt3f> corners = {{-50, 0, -50}, {-50, 0, 50}, {50, 0, -50},
                                  {50, 0, -50},  {-50, 0, 50}, {50, 0, 50}};
    RandomNumbers random(5);
    for(int wall = 0; wall < 60; ++wall)
    {
        Pnt3f const foot(random.real(-20, 20), 0, random.real(-20, 20));
        Vec3f const along(random.real(-4, 4), 0, random.real(-4, 4));
        Real32 const height = random.real(0.1f, 3);
        Pnt3f const other = foot + along;
        corners.insert(corners.end(), {foot, other, other + Vec3f(0, height, 0), foot,
                                       foot + Vec3f(0, height, 0), other + Vec3f(0, height, 0)});
    }
    return make_group({make_node(make_geometry(one_primitive(TrianglesPrimitive, corners)))});
}

/// The host of a walk: a clock that also runs while the engine computes, keys, events.
class Host
{
  public:
    explicit Host(NodePtr const &scene, Int64 ticksPerSecond = 1000000)
        : inner(std::make_shared<RunningDesktop>(ticksPerSecond))
        , watched(std::make_shared<WatchedDesktop>(inner))
    {
        start.from = Pnt3f(0, 1.7f, 0);
        start.at = Pnt3f(0, 1.7f, -1);
        start.motionFactor = 1;
        Desktop::setCurrent(watched);
        player.emplace(start, EnginePtr(WASDWalkEngine::create()), scene, UInt16(640), UInt16(480),
                       inner);
    }
    ~Host() { Desktop::setCurrent(nullptr); }

    Navigator &navigator() { return player->getNavigator(); }

    /// One random thing that a user or the system does.
    void act(RandomNumbers &random)
    {
        static constexpr Int16 Keys[] = {'W', 'W', 'W', 'S', 'A', 'D', 'Q',
                                         'E', 'C', 16,  17,  1,   38};
        auto const x = static_cast<Int16>(static_cast<Int32>(random.below(700)) - 30);
        auto const y = static_cast<Int16>(200 + random.below(80));
        switch(random.below(8))
        {
        case 0:
        case 1:
        case 2:
        {
            Int16 const key = Keys[random.below(std::size(Keys))];
            inner->setKey(key, !inner->isDown(key));
            break;
        }
        case 3:
            navigator().mouseMove(x, y);
            break;
        case 4:
            navigator().idle(-1, x, y);
            break;
        case 5:
            navigator().keyPressEx(random.below(2) == 0 ? 32 : 114,
                                   NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey, x, y);
            break;
        case 6:
            navigator().buttonPress(random.below(2) == 0 ? 3 : 4, x, y);
            break;
        default:
            if(random.below(4) == 0)
                inner->setFocus(inner->isFocused(&other) ? player->getWindow() : &other);
        }
    }

    void frame()
    {
        inner->advance(16667);
        navigator().updateCameraTransformation();
    }

    class RunningDesktop : public ScriptedDesktop
    {
      public:
        using ScriptedDesktop::ScriptedDesktop;
        Int64 getTicks() override
        {
            advance(perQuestion);
            return ScriptedDesktop::getTicks();
        }

        Int64 perQuestion = 37; // a clock never stands still
    };

    int other = 0; // a window of somebody else
    InputRecording start;
    std::shared_ptr<RunningDesktop> inner;
    std::shared_ptr<WatchedDesktop> watched;
    std::optional<InputPlayer> player;
};

std::vector<CameraPose> play(InputRecording const &recording, Node *scene)
{
    auto const desktop = std::make_shared<ScriptedDesktop>(*recording.ticksPerSecond);
    Desktop::setCurrent(desktop);
    InputPlayer player(recording, EnginePtr(WASDWalkEngine::create()), scene, 640, 480, desktop);
    std::vector<CameraPose> poses;
    while(player.step())
    {
        if(recording.events[player.getPosition() - 1].what == InputRecording::What::Frame)
            poses.push_back(player.getPose());
    }
    Desktop::setCurrent(nullptr);
    return poses;
}

InputRecording through_text(InputRecording const &recording)
{
    std::stringstream text;
    write_recording(text, recording);
    RecordingResult const read = read_recording(text);
    EXPECT_TRUE(read.recording) << read.complaint;
    return read.recording.value_or(InputRecording());
}

void record_and_play(Int64 ticksPerSecond, bool isUnderWay)
{
    NodePtr const maze = make_maze();
    RandomNumbers random(static_cast<UInt32>(7 + ticksPerSecond % 100));
    Host host(maze, ticksPerSecond);
    // Before the recording the host has walked; a replay knows the pose alone, so no setting
    // changes.
    if(isUnderWay)
    {
        host.navigator().idle(-1, 320, 240);
        host.inner->setKey('W', true);
        for(int i = 0; i < 20; ++i)
            host.frame();
    }
    InputRecorder const recorder(
        host.navigator(), [] { return 0.0; }, host.watched);
    std::vector<CameraPose> seen;
    for(int i = 0; i < 600; ++i)
    {
        host.act(random);
        if(i % 2 == 0)
        {
            host.frame();
            seen.push_back(host.player->getPose());
        }
    }
    InputRecording const recording = through_text(recorder.getRecording());
    EXPECT_EQ(recording.ticksPerSecond, ticksPerSecond);
    std::vector<CameraPose> const played = play(recording, maze);
    ASSERT_EQ(played.size(), seen.size());
    for(std::size_t i = 0; i < seen.size(); ++i)
        ASSERT_EQ(played[i], seen[i]) << "frame " << i;
    EXPECT_GT((seen.back().from - seen.front().from).length(), 1.f);
}
} // namespace

TEST(InputRecorder, AWalkPlaysToTheSameBits) { record_and_play(1000000, false); }

TEST(InputRecorder, AWalkWithAClockWithoutAFrequencyPlaysToTheSameBits)
{
    record_and_play(0, false);
}

TEST(InputRecorder, AWalkUnderWayPlaysToTheSameBits) { record_and_play(1000000, true); }

TEST(InputRecorder, WritesAKeyBeforeTheFrameThatAskedForIt)
{
    NodePtr const maze = make_maze();
    Host host(maze);
    host.inner->perQuestion = 0;
    Real64 now = 0;
    InputRecorder const recorder(
        host.navigator(), [&now] { return now; }, host.watched);
    now = 1;
    host.inner->setKey('W', true);
    host.inner->setKey(200, true); // nobody asks for it
    host.frame();
    now = 2;
    host.inner->setFocus(nullptr);
    host.inner->setKey('W', false); // nobody asks without the focus
    host.frame();
    std::ostringstream text;
    write_recording(text, recorder.getRecording());
    std::string const lines = text.str();
    EXPECT_EQ(lines.substr(lines.find("clock")), "clock 1000000\n"
                                                 "0 hover 0 0\n"
                                                 "0 idle -1 0 0\n"
                                                 "1 down 87\n"
                                                 "1 frame 16667\n"
                                                 "2 focus off\n"
                                                 "2 frame 33334\n");
}

TEST(WatchedDesktop, HandsEverythingOn)
{
    auto const inner = std::make_shared<ScriptedDesktop>(77);
    WatchedDesktop desktop(inner);
    int window = 0;
    inner->setWindow(&window, {10, 20}, {30, 40});
    inner->setFocus(&window);
    inner->setKey('W', true);
    inner->setTicks(5);
    EXPECT_EQ(desktop.missing(), nullptr);
    EXPECT_TRUE(desktop.isDown('W'));
    EXPECT_TRUE(desktop.isFocused(&window));
    EXPECT_EQ(desktop.getTicks(), 5);
    EXPECT_EQ(desktop.getTicksPerSecond(), 77);
    EXPECT_EQ(desktop.getClientSize(&window).height, 40);
    EXPECT_EQ(desktop.toScreen(&window, {1, 2}).y, 22);
    desktop.setCapture(&window);
    EXPECT_EQ(inner->getCapture(), &window);
    EXPECT_EQ(desktop.getCapture(), &window);
    desktop.releaseCapture();
    EXPECT_EQ(inner->getCapture(), nullptr);
    desktop.setPointer({7, 8});
    EXPECT_EQ(inner->getPointer().x, 7);
    EXPECT_EQ(desktop.getPointer().y, 8);
    desktop.showPointer(false);
    EXPECT_FALSE(inner->isPointerVisible());
    desktop.writeDebugText("text");
    EXPECT_EQ(inner->getDebugText(), "text");
}

TEST(WatchedDesktop, WithoutOneIsTheCurrentOne)
{
    auto const current = std::make_shared<ScriptedDesktop>(3);
    Desktop::setCurrent(current);
    WatchedDesktop const desktop(nullptr);
    Desktop::setCurrent(nullptr);
    EXPECT_EQ(const_cast<WatchedDesktop &>(desktop).getTicksPerSecond(), 3);
}
