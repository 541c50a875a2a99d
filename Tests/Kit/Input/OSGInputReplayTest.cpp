// Sessions with tools are recorded through an adapter and played in another view.

#include "OSGInputReplay.h"

#include <fstream>
#include <limits>
#include <numbers>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "NavigatedView.h"
#include "OSGBandTool.h"
#include "OSGInputPlayer.h"
#include "OSGInputRecorder.h"
#include "OSGLassoTool.h"
#include "OSGMeasureTool.h"
#include "OSGNamedEngine.h"
#include "OSGSceneFileHandler.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using EnginePtr = UnrecordedRefPtr<NavigatorEngine>;
using ToolPtr = std::shared_ptr<PointerTool>;

constexpr Int16 Left = NavigatorEvent::LeftButton;

std::string shown(Pnt2f const &pixel)
{
    return testing::PrintToString(pixel[0]) + ',' + testing::PrintToString(pixel[1]);
}

/// A tool of the host's own that shares the left drag.
struct SharingTool : PickTool
{
    using PickTool::PickTool;
    bool sharesDrag() const override { return true; }
    char const *getName() const override { return "glance"; }
};

/// A view with an engine and tools, and what the tools have given.
struct Host
{
    explicit Host(char const *engineName)
        : engine(make_engine(engineName))
    {
        view.navigator.setEngine(engine);
        engine->set(Pnt3f(0, 1, 12), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
        view.navigator.updateCameraTransformation();
        view.navigator.setMotionFactor(0.1f);
    }

    ToolPtr makeTool(std::string const &name)
    {
        auto const onClick = [this](PointerTool::Event const &click)
        { results << "click " << shown(click.pixel) << ' ' << click.modifiers << '\n'; };
        auto const onBand = [this](BandTool::Band const &band)
        {
            results << "band " << band.area.left << ' ' << band.area.bottom << ' '
                    << int(band.direction) << ' ' << band.modifiers << '\n';
        };
        auto const onLasso = [this](LassoTool::Lasso const &lasso)
        {
            results << "lasso " << lasso.modifiers;
            for(Pnt2f const &corner : lasso.corners)
                results << ' ' << shown(corner);
            results << '\n';
        };
        auto const pick = [](PointerTool::Event const &click)
        { return std::optional(Pnt3f(click.pixel[0], click.pixel[1], 0)); };
        auto const onMeasured = [this](std::vector<Pnt3f> const &points)
        { results << "measured " << points[0][0] << ' ' << points[1][1] << '\n'; };
        if(name == "navigate")
            return std::make_shared<NavigateTool>(onClick);
        if(name == "glance")
            return std::make_shared<SharingTool>(onClick);
        if(name == "pick")
            return std::make_shared<PickTool>(onClick);
        if(name == "band")
            return std::make_shared<BandTool>(onBand, onClick);
        if(name == "lasso")
            return std::make_shared<LassoTool>(onLasso, onClick);
        if(name == "measure")
            return std::make_shared<MeasureTool>(2, pick, onMeasured);
        return nullptr;
    }

    /// One random thing that a user does.
    void act(RandomNumbers &random)
    {
        x = random.below(3) == 0 ? x : static_cast<Real64>(random.below(640));
        y = random.below(3) == 0 ? y : static_cast<Real64>(random.below(480));
        auto const modifiers = static_cast<UInt16>(random.below(8));
        static constexpr char const *Tools[] = {"navigate", "pick",   "band", "lasso",
                                                "measure",  "glance", "none"};
        auto const button = static_cast<Int16>(random.below(4) == 0 ? random.below(3) : 0);
        switch(random.below(14))
        {
        case 12:
            if(random.below(8) == 0)
                change(random);
            break;
        case 0:
        case 1:
            adapter.buttonPress(button, x, y, modifiers);
            break;
        case 2:
        case 3:
            adapter.buttonRelease(button, x, y, modifiers);
            break;
        case 4:
            adapter.buttonPress(Left, x, y, modifiers);
            adapter.buttonRelease(Left, x, y, modifiers);
            break;
        case 5:
            adapter.wheel(random.below(2) == 0 ? 1 : -1, x, y);
            break;
        case 6:
            if(random.below(3) == 0)
                adapter.setTool(makeTool(Tools[random.below(7)]));
            break;
        case 7:
            if(random.below(4) == 0)
                adapter.key(27, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey);
            else if(random.below(4) == 0)
                adapter.focusLost();
            break;
        case 8:
            adapter.frame();
            break;
        default:
            adapter.pointerMove(x, y, modifiers);
        }
    }

    /// What a host changes by its panels.
    void change(RandomNumbers &random)
    {
        Navigator &navigator = view.navigator;
        switch(random.below(5))
        {
        case 0:
            navigator.setMotionFactor(random.real(0.01f, 0.2f));
            break;
        case 1:
            navigator.setRotationAngle(random.real(0.01f, 0.2f));
            break;
        case 2:
            navigator.setClickCenter(!navigator.getClickCenter());
            break;
        case 3:
            navigator.setClickNoIntersect(!navigator.getClickNoIntersect());
            break;
        default:
            set_pose(navigator, random.point(-9, 9), random.point(-1, 1), Vec3f(0, 1, 0.1f));
            recorder->takePoseOfHost();
        }
    }

    CameraPose pose() const { return pose_of(*engine); }

    EnginePtr engine;
    InputRecorder *recorder = nullptr;
    NavigatedView view;
    EventAdapter adapter{view.navigator};
    std::ostringstream results;
    Real64 x = 0;
    Real64 y = 0;
};

InputRecording through_text(InputRecording const &recording)
{
    std::stringstream text;
    write_recording(text, recording);
    RecordingResult const read = read_recording(text);
    EXPECT_TRUE(read.recording) << read.complaint;
    return read.recording.value_or(InputRecording());
}

InputReplay::Host tools_of(Host &host)
{
    return {[&host](std::string const &name) { return host.makeTool(name); }};
}

// --- sessions ---

class ReplayOf : public testing::TestWithParam<char const *>
{
};

INSTANTIATE_TEST_SUITE_P(Engines, ReplayOf, testing::Values("cad", "fly", "copter"));

struct Seen
{
    std::size_t lines;
    CameraPose pose;
};

void play_and_compare(InputRecording const &recording, std::vector<Seen> const &seen,
                      char const *engine, std::string const &results)
{
    Host other(engine);
    InputReplay replay(recording, other.view.navigator, tools_of(other));
    InputPlayer player(recording, EnginePtr(make_engine(engine)), other.view.root, 640, 480);
    for(Seen const &moment : seen)
    {
        while(replay.getPosition() < moment.lines)
        {
            ASSERT_TRUE(replay.step());
            player.step();
        }
        ASSERT_EQ(other.pose(), moment.pose) << "line " << moment.lines;
        ASSERT_EQ(player.getPose(), moment.pose) << "line " << moment.lines;
    }
    EXPECT_TRUE(replay.isAtEnd());
    EXPECT_EQ(other.results.str(), results);
}

TEST_P(ReplayOf, ASessionWithToolsGivesThePosesAndResultsThatItGave)
{
    std::size_t results = 0;
    for(UInt32 seed = 1; seed <= 8 && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE(seed);
        RandomNumbers random(seed);
        Host host(GetParam());
        InputRecorder recorder(
            host.view.navigator, [] { return 0.0; }, nullptr, &host.adapter);
        host.recorder = &recorder;
        host.adapter.setTool(host.makeTool("band"));
        std::vector<Seen> seen;
        for(int i = 0; i < 800; ++i)
        {
            host.act(random);
            seen.push_back({recorder.getRecording().events.size(), host.pose()});
        }
        results += host.results.str().size();
        play_and_compare(through_text(recorder.getRecording()), seen, GetParam(),
                         host.results.str());
    }
    EXPECT_GT(results, 3000u);
}

TEST(InputRecorder, WritesToolsTheirDragsAndTheirModifiers)
{
    Host host("fly");
    Real64 now = 1;
    host.adapter.setContentScale(2);
    InputRecorder const recorder(
        host.view.navigator, [&now] { return now; }, nullptr, &host.adapter);
    now = 1.5;
    host.adapter.setTool(host.makeTool("band"));
    now = 2;
    host.adapter.buttonPress(Left, 10, 20, PointerTool::Shift);
    host.adapter.pointerMove(15.3, 25, PointerTool::Shift);
    host.adapter.buttonRelease(Left, 20, 30);
    now = 3;
    host.adapter.buttonPress(Left, 1, 2);
    host.adapter.key(27, NavigatorEvent::KeyDown);
    host.adapter.setTool(host.makeTool("glance"));
    host.adapter.buttonPress(Left, 3, 4, PointerTool::Control);
    host.adapter.buttonRelease(Left, 3, 4, PointerTool::Control);
    host.adapter.setTool(nullptr);
    std::ostringstream text;
    write_recording(text, recorder.getRecording());
    std::string const lines = text.str();
    EXPECT_EQ(lines.substr(0, lines.find('\n')), "tolvanite-events 3");
    EXPECT_EQ(lines.substr(lines.find("content-scale")), "content-scale 2\n"
                                                         "0 hover 0 0\n"
                                                         "0.5 tool band\n"
                                                         "1 held 1\n"
                                                         "1 press 0 20 40\n"
                                                         "1 move 30 50\n"
                                                         "1 held 0\n"
                                                         "1 release 0 40 60\n"
                                                         "2 press 0 2 4\n"
                                                         "2 cancel\n"
                                                         "2 tool glance shared\n"
                                                         "2 held 2\n"
                                                         "2 press 0 6 8\n"
                                                         "2 release 0 6 8\n"
                                                         "2 tool none\n");
}

TEST(InputRecorder, WritesWhatTheHostChangesBeforeTheNextEvent)
{
    Host host("fly");
    Navigator &navigator = host.view.navigator;
    InputRecorder recorder(navigator, [] { return 0.0; });
    navigator.setMotionFactor(2);
    navigator.setRotationAngle(0.5f);
    navigator.setClickCenter(true);
    navigator.setClickNoIntersect(true);
    navigator.mouseMove(1, 1);
    navigator.setClickCenter(false);
    set_pose(navigator, Pnt3f(1, 2, 3), Pnt3f(4, 2, 3), Vec3f(0, 0, 1));
    recorder.takePoseOfHost();
    navigator.setMotionFactor(std::numeric_limits<Real32>::quiet_NaN()); // is no number of a file
    navigator.mouseMove(2, 2);
    std::ostringstream text;
    write_recording(text, recorder.getRecording());
    std::string const lines = text.str();
    EXPECT_EQ(lines.substr(lines.find("0 hover")), "0 hover 0 0\n"
                                                   "0 motion-factor 2\n"
                                                   "0 rotation-angle 0.5\n"
                                                   "0 click-center on\n"
                                                   "0 no-intersect on\n"
                                                   "0 hover 1 1\n"
                                                   "0 click-center off\n"
                                                   "0 pose 1 2 3 4 2 3 0 0 1\n"
                                                   "0 hover 2 2\n");
}

TEST(InputRecorder, WithoutToolsASessionIsOfTheFirstVersion)
{
    Host host("fly");
    host.adapter.setContentScale(2);
    InputRecorder const recorder(
        host.view.navigator, [] { return 0.0; }, nullptr, &host.adapter);
    host.adapter.buttonPress(Left, 3, 4);
    std::ostringstream text;
    write_recording(text, recorder.getRecording());
    EXPECT_EQ(text.str().rfind("tolvanite-events 1\n", 0), 0u);
}

TEST(InputRecorder, TheToolInHandIsTheFirstLineAndTheRestOfItsDragMeansNothing)
{
    Host host("fly");
    host.adapter.setTool(host.makeTool("pick"));
    host.adapter.buttonPress(Left, 3, 4);
    {
        InputRecorder const recorder(
            host.view.navigator, [] { return 0.0; }, nullptr, &host.adapter);
        host.adapter.pointerMove(5, 5);
        host.adapter.buttonRelease(Left, 5, 5);
        auto const &events = recorder.getRecording().events;
        ASSERT_EQ(events.size(), 2u);
        EXPECT_EQ(events[1].what, InputRecording::What::Tool);
        EXPECT_EQ(events[1].tool, "pick");
    }
    EXPECT_EQ(host.adapter.getToolObserver(), nullptr);
}

TEST(InputRecorder, TheDragOfAToolThatIsNeverBusyIsCancelledToo)
{
    struct Calm : PickTool
    {
        using PickTool::PickTool;
        bool isBusy() const override { return false; }
    };
    Host host("fly");
    InputRecorder const recorder(
        host.view.navigator, [] { return 0.0; }, nullptr, &host.adapter);
    host.adapter.setTool(std::make_shared<Calm>(PickTool::OnClick()));
    host.adapter.buttonPress(Left, 3, 4);
    host.adapter.setTool(nullptr);
    auto const &events = recorder.getRecording().events;
    ASSERT_EQ(events.size(), 5u);
    EXPECT_EQ(events[3].what, InputRecording::What::Cancel);
}

TEST(InputRecorder, AToolByANameThatMeansSomethingElseIsATool)
{
    struct Misnamed : PickTool
    {
        using PickTool::PickTool;
        char const *getName() const override { return name; }
        char const *name = "";
    };
    Host host("fly");
    InputRecorder const recorder(
        host.view.navigator, [] { return 0.0; }, nullptr, &host.adapter);
    for(char const *name : {"navigate", "none", "two words", ""})
    {
        auto const tool = std::make_shared<Misnamed>(PickTool::OnClick());
        tool->name = name;
        host.adapter.setTool(tool);
        EXPECT_EQ(recorder.getRecording().events.back().tool, "tool") << name;
    }
}

// --- recordings without tools ---

InputRecording clicks()
{
    InputRecording recording;
    recording.from = Pnt3f(0, 1, 12);
    recording.at = Pnt3f(0, 0, 0);
    recording.events = {{0, {NavigatorEvent::ButtonPress, 0, 0, 30, 40}},
                        {0.5, {NavigatorEvent::ButtonRelease, 0, 0, 30, 40}},
                        {1, {NavigatorEvent::ButtonPress, 0, 0, 30, 40}},
                        {1, {NavigatorEvent::Move, 0, 0, 90, 70}},
                        {2, {NavigatorEvent::ButtonRelease, 0, 0, 90, 70}}};
    return recording;
}

TEST(InputReplay, APressAndAReleaseAtOnePlaceAreAClickOfTheToolInHand)
{
    InputRecording const recording = clicks();
    for(char const *name : {"navigate", "pick"})
    {
        Host host("cad");
        InputReplay::Host tools;
        tools.tool = host.makeTool(name);
        InputReplay replay(recording, host.view.navigator, tools);
        CameraPose const before = host.pose();
        while(replay.step())
        {
        }
        EXPECT_EQ(host.results.str(), "click 30,40 0\n") << name;
        EXPECT_EQ(host.pose() == before, std::string(name) == "pick") << name;
    }
}

TEST(InputReplay, TellsWhenTheNextLineIsDue)
{
    InputRecording const recording = clicks();
    Host host("cad");
    InputReplay replay(recording, host.view.navigator);
    EXPECT_EQ(replay.nextSeconds(), 0);
    replay.step();
    EXPECT_EQ(replay.nextSeconds(), 0.5);
    EXPECT_EQ(replay.getPosition(), 1u);
    EXPECT_FALSE(replay.isAtEnd());
    while(replay.step())
    {
    }
    EXPECT_EQ(replay.getPosition(), 5u);
    EXPECT_TRUE(replay.isAtEnd());
    EXPECT_FALSE(replay.nextSeconds());
    EXPECT_FALSE(replay.step());
}

TEST(InputReplay, SetsPoseAndSettingsAndNeedsNoEngine)
{
    InputRecording recording = clicks();
    recording.motionFactor = 3;
    recording.rotationAngle = 0.25f;
    recording.clickCenter = recording.noIntersect = true;
    Host host("fly");
    InputReplay replay(recording, host.view.navigator);
    EXPECT_EQ(host.pose().from, Pnt3f(0, 1, 12));
    EXPECT_EQ(host.view.navigator.getMotionFactor(), 3);
    EXPECT_EQ(host.view.navigator.getRotationAngle(), 0.25f);
    EXPECT_TRUE(host.view.navigator.getClickCenter());
    EXPECT_TRUE(host.view.navigator.getClickNoIntersect());
    Navigator empty;
    InputReplay other(recording, empty);
    while(other.step())
    {
    }
}

TEST(InputReplay, APoseMovesTheCameraAtOnceAndIsNoFrame)
{
    struct Frames : NavigatorObserver
    {
        void observe(NavigatorEvent const &) override { ++count; }
        void observeFrame() override { ++count; }
        int count = 0;
    } frames;
    Host host("cad");
    host.view.navigator.setEventObserver(&frames);
    set_pose(host.view.navigator, Pnt3f(3, 4, 5), Pnt3f(3, 4, 0), Vec3f(0, 1, 0));
    EXPECT_NEAR(host.view.beacon->getToWorld()[3][0], 3, 1e-5);
    EXPECT_NEAR(host.pose().from[2], 5, 1e-5);
    EXPECT_EQ(frames.count, 0);
    host.view.navigator.setEventObserver(nullptr);
    Navigator empty;
    set_pose(empty, Pnt3f(3, 4, 5), Pnt3f(3, 4, 0), Vec3f(0, 1, 0));
}

TEST(InputReplay, GivesTheViewInWhichARecordingBegins)
{
    InputRecording recording = clicks();
    recording.opening = 30;
    WindowView const view = view_of(recording, 64, 48);
    EXPECT_EQ(view.from, recording.from);
    EXPECT_EQ(view.fieldOfView, 30);
    EXPECT_EQ(view.height, 48u);
    EXPECT_FALSE(view.orthographicHeight);
    recording.projection = InputRecording::Projection::Orthographic;
    EXPECT_EQ(view_of(recording, 64, 48).orthographicHeight, 30);
}

// --- the recordings of the models ---

struct ModelRow
{
    char const *name;
    char const *engine;
};
ModelRow const ModelRows[] = {{"cad", "cad"},
                              {"cad-orthographic", "cad"},
                              {"fly", "fly"},
                              {"copter", "copter"},
                              {"walk", "walk"}};

struct Desk
{
    explicit Desk(InputRecording const &recording)
        : desktop(std::make_shared<ScriptedDesktop>(recording.ticksPerSecond.value_or(1000)))
    {
        Desktop::setCurrent(desktop);
    }
    ~Desk() { Desktop::setCurrent(nullptr); }
    std::shared_ptr<ScriptedDesktop> desktop;
};

std::vector<CameraPose> poses_of_player(InputRecording const &recording, ModelRow const &row,
                                        Node *scene)
{
    Desk const desk(recording);
    InputPlayer player(recording, EnginePtr(make_engine(row.engine)), scene, 640, 480,
                       desk.desktop);
    std::vector<CameraPose> poses;
    while(player.step())
        poses.push_back(player.getPose());
    return poses;
}

std::vector<CameraPose> poses_of_host(InputRecording const &recording, ModelRow const &row,
                                      Node *scene, ToolPtr const &tool)
{
    Desk const desk(recording);
    bool const isFlat = recording.projection == InputRecording::Projection::Orthographic;
    auto const opening = static_cast<Real32>(isFlat ? recording.opening
                                                    : recording.opening * std::numbers::pi / 180);
    UnrecordedRefPtr<Camera> camera;
    if(isFlat)
        camera = make_orthographic(opening, recording.near, recording.far).get();
    else
        camera = make_perspective(opening, recording.near, recording.far).get();
    NodePtr const beacon = make_transform(translation(0, 0, 10));
    camera->setBeacon(beacon);
    ViewportPtr const viewport(Viewport::create());
    viewport->setCamera(camera);
    viewport->setRoot(scene);
    UnrecordedRefPtr<WIN32Window> const window(WIN32Window::create());
    window->setSize(640, 480);
    window->addPort(viewport);
    desk.desktop->show(*window);
    Navigator navigator;
    EnginePtr const engine(make_engine(row.engine));
    navigator.setEngine(engine);
    navigator.setViewport(viewport);
    InputReplay::Host host;
    host.tool = tool;
    host.desktop = desk.desktop;
    host.window = window->getHwnd();
    InputReplay replay(recording, navigator, host);
    std::vector<CameraPose> poses;
    while(replay.step())
        poses.push_back(pose_of(*engine));
    return poses;
}

TEST(InputReplay, TheRecordingsOfTheModelsGiveThePosesOfThePlayer)
{
    UnrecordedRefPtr<Node> const scene(
        SceneFileHandlerBase::the()->read(TEST_SOURCE_DIR "/Models/pavilion.obj"));
    scene->updateVolume();
    for(ModelRow const &row : ModelRows)
    {
        std::ifstream in(TEST_SOURCE_DIR "/Models/" + std::string(row.name) + ".events");
        RecordingResult const read = read_recording(in);
        ASSERT_TRUE(read.recording) << read.complaint;
        std::vector<CameraPose> const expected = poses_of_player(*read.recording, row, scene);
        EXPECT_FALSE(expected.front() == expected.back()) << row.name;
        EXPECT_EQ(poses_of_host(*read.recording, row, scene, nullptr), expected) << row.name;
        auto const navigate = std::make_shared<NavigateTool>(PickTool::OnClick());
        EXPECT_EQ(poses_of_host(*read.recording, row, scene, navigate), expected) << row.name;
    }
}
} // namespace
} // namespace OSG::Test
