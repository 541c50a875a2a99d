// A walk behind an adapter with tools, panels and a guard plays to the same bits.

#include <sstream>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "NavigatedView.h"
#include "OSGBandTool.h"
#include "OSGInputPlayer.h"
#include "OSGInputRecorder.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWalkFocusGuard.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
constexpr Int16 Left = NavigatorEvent::LeftButton;

/// A person on a wide floor, and whoever sits before the window.
struct Walker
{
    Walker()
    {
        desktop->show(*window);
        window->setSize(640, 480);
        desktop->show(*window);
        Desktop::setCurrent(watched);
        engine = WASDWalkEngine::create();
        Desktop::setCurrent(nullptr);
        window->addPort(viewport);
        floor->updateVolume();
        viewport->setRoot(floor);
        UnrecordedRefPtr<Camera> const camera(make_perspective(0.8f, 0.1f, 100).get());
        camera->setBeacon(beacon);
        viewport->setCamera(camera);
        navigator.setEngine(engine);
        navigator.setViewport(viewport);
        engine->set(Pnt3f(0, 1.7f, 0), Pnt3f(0, 1.7f, -1), Vec3f(0, 1, 0));
        guard.emplace(navigator, *engine, watched);
        adapter.setWalkGuard(&*guard);
        adapter.setIdlesInDrags(true);
        adapter.pointerMove(320, 240);
    }
    ~Walker() { navigator.setEngine(nullptr); }

    void act(RandomNumbers &random)
    {
        static constexpr Int16 Keys[] = {'W', 'W', 'W', 'A', 'S', 'Q'};
        auto const x = static_cast<Real64>(200 + random.below(240));
        auto const y = static_cast<Real64>(200 + random.below(80));
        switch(random.below(8))
        {
        case 0:
        case 1:
        {
            Int16 const key = Keys[random.below(std::size(Keys))];
            desktop->setKey(key, !desktop->isDown(key));
            break;
        }
        case 2:
            adapter.buttonPress(Left, x, y);
            break;
        case 3:
            adapter.buttonRelease(Left, x, y);
            break;
        case 4:
            if(random.below(4) == 0)
                desktop->releaseAllKeys();
            break;
        case 5:
            if(random.below(6) == 0)
                adapter.setKeyboardTaken(isTyping = !isTyping);
            break;
        default:
            adapter.pointerMove(x, y);
        }
    }
    void frame()
    {
        desktop->advance(16);
        adapter.frame();
    }

    std::shared_ptr<ScriptedDesktop> const desktop = std::make_shared<ScriptedDesktop>();
    std::shared_ptr<WatchedDesktop> const watched = std::make_shared<WatchedDesktop>(desktop);
    NodePtr const floor =
        make_group({make_node(make_geometry(one_primitive(TrianglesPrimitive, {{-900, 0, -900},
                                                                               {-900, 0, 900},
                                                                               {900, 0, -900},
                                                                               {900, 0, -900},
                                                                               {-900, 0, 900},
                                                                               {900, 0, 900}})))});
    NodePtr const beacon = make_transform(translation(0, 0, 0));
    UnrecordedRefPtr<WIN32Window> const window{WIN32Window::create()};
    ViewportPtr const viewport{Viewport::create()};
    UnrecordedRefPtr<WASDWalkEngine> engine;
    Navigator navigator;
    std::optional<WalkFocusGuard> guard;
    EventAdapter adapter{navigator};
    bool isTyping = false;
};

std::vector<CameraPose> poses_at_frames(InputRecording const &recording, Node *scene)
{
    auto const desktop = std::make_shared<ScriptedDesktop>(*recording.ticksPerSecond);
    Desktop::setCurrent(desktop);
    UnrecordedRefPtr<NavigatorEngine> const engine(WASDWalkEngine::create());
    InputPlayer player(recording, engine, scene, 640, 480, desktop);
    Desktop::setCurrent(nullptr);
    std::vector<CameraPose> poses;
    while(player.step())
    {
        if(recording.events[player.getPosition() - 1].what == InputRecording::What::Frame)
            poses.push_back(player.getPose());
    }
    return poses;
}

TEST(InputRecorder, AWalkWithToolsAndPanelsPlaysToTheSameBits)
{
    Real32 way = 0;
    for(UInt32 seed = 1; seed <= 12; ++seed)
    {
        SCOPED_TRACE(seed);
        RandomNumbers random(seed);
        Walker walker;
        walker.adapter.setTool(std::make_shared<BandTool>(BandTool::OnBand()));
        InputRecorder const recorder(
            walker.navigator, [] { return 0.0; }, walker.watched, &walker.adapter);
        std::vector<CameraPose> seen;
        int silentFrames = 0;
        for(int i = 0; i < 600; ++i)
        {
            walker.act(random);
            walker.frame();
            seen.push_back(pose_of(*walker.engine));
            silentFrames += walker.engine->isSilent() ? 1 : 0;
        }
        EXPECT_GT(silentFrames, 20);
        way += (seen.back().from - seen.front().from).length();
        std::stringstream text;
        write_recording(text, recorder.getRecording());
        RecordingResult const read = read_recording(text);
        ASSERT_TRUE(read.recording) << read.complaint;
        std::vector<CameraPose> const played = poses_at_frames(*read.recording, walker.floor);
        ASSERT_EQ(played.size(), seen.size());
        for(std::size_t i = 0; i < seen.size(); ++i)
            ASSERT_EQ(played[i], seen[i]) << "frame " << i;
    }
    EXPECT_GT(way, 5.f);
}
} // namespace
} // namespace OSG::Test
