// The code of the guide to the Kit about files, recordings, ways and measures, as hosts write it.

#include <sstream>
#include <thread>

#include <gtest/gtest.h>

#include "NavigatedView.h"
#include "OSGGraphOpFactory.h"
#include "OSGInputRecorder.h"
#include "OSGInputReplay.h"
#include "OSGMeasure.h"
#include "OSGMeasureTool.h"
#include "OSGNamedEngine.h"
#include "OSGSceneDocument.h"
#include "OSGSceneView.h"
#include "OSGViewMoves.h"
#include "OSGWalkConsole.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A window that is closed when the model is there.
struct HostWindow
{
    bool isClosed() const { return progress == 1 || !shown.empty(); }
    Real64 seconds() const { return 0; }
    void show(std::string const &message) { shown = message; }
    void drawFrame(Real32 readSoFar)
    {
        progress = isReady ? 1 : readSoFar < 1 ? readSoFar : 0.99f;
        std::this_thread::yield();
    }
    std::string shown;
    Real32 progress = 0;
    bool isReady = false;
};

struct ShownScene
{
    void setScene(Node *node)
    {
        scene = node;
        window.isReady = true;
    }
    HostWindow &window;
    Node *scene = nullptr;
};

TEST(HostGuide, Documents)
{
    std::string const file = TEST_SOURCE_DIR "/Models/pavilion.obj";
    SceneDocument document;
    HostWindow window;
    ShownScene view{window};
    document.setReloads(true);
    document.open(file);
    while(!window.isClosed())
    {
        if(document.update(window.seconds()))
            view.setScene(document.getScene());
        if(std::string const message = document.takeMessage(); !message.empty())
            window.show(message);
        window.drawFrame(document.getProgress());
    }
    ASSERT_NE(view.scene, nullptr) << window.shown;

    UnrecordedRefPtr<GraphOp> const operation(GraphOpFactoryBase::the()->create("Mrg"));
    std::optional<GraphOpAccount> const account = document.apply(*operation);
    if(account && account->removed > 100)
        document.undo();
    EXPECT_TRUE(account);
}

struct HostGuideView : testing::Test
{
    NavigatedView navigated;
    Node *const scene = navigated.root;
    Navigator &navigator = navigated.navigator;
    EventAdapter adapter{navigator};
};

TEST_F(HostGuideView, RecordingsAndEngines)
{
    UnrecordedRefPtr<NavigatorEngine> const engine(make_engine("cad"));
    navigator.setEngine(engine);
    engine->set(Pnt3f(0, 0, 9), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
    InputRecording recording;
    {
        auto const seconds = [] { return 0.5; };
        InputRecorder recorder(navigator, seconds, nullptr, &adapter);
        WindowView const view{{0, 0, 8}, {0, 0, 0}, {0, 1, 0}, 45, 640, 480};
        set_pose(navigator, view.from, view.at, view.up);
        recorder.takePoseOfHost();
        adapter.buttonPress(NavigatorEvent::LeftButton, 1, 1);
        adapter.buttonRelease(NavigatorEvent::LeftButton, 9, 9);
        recording = recorder.getRecording();
    }
    Real64 const now = 1;
    auto const toolOf = [](std::string const &) { return std::shared_ptr<PointerTool>(); };
    InputReplay replay(recording, navigator,
                       {[&](std::string const &name) { return toolOf(name); }});
    while(replay.nextSeconds() && *replay.nextSeconds() <= now)
        replay.step();
    EXPECT_TRUE(replay.isAtEnd());
}

TEST_F(HostGuideView, Ways)
{
    UnrecordedRefPtr<NavigatorEngine> const engine(make_engine("fly"));
    navigator.setEngine(engine);
    WalkConsole console(navigator);
    Real64 const seconds = 3;
    std::ostringstream out;
    console.setScene(scene);
    console.addMark("entrance");
    console.goToFirstMark();
    console.startRecording();
    console.update(seconds);
    console.stopRecording();
    write_path_plot(out, scene, console.getWay());
    EXPECT_EQ(console.getWay().size(), 1u);
    EXPECT_FALSE(out.str().empty());
}

TEST(HostGuide, Measures)
{
    std::optional<Real64> angle;
    auto const pick = [](PointerTool::Event const &click)
    { return std::optional(Pnt3f(click.pixel[0], click.pixel[1], 0)); };
    MeasureTool tool(3, pick,
                     [&](std::vector<Pnt3f> const &points)
                     { angle = angle_between(points[0], points[1], points[2]); });
    for(Pnt2f const &pixel : {Pnt2f(1, 0), Pnt2f(0, 0), Pnt2f(0, 7)})
    {
        tool.press({pixel});
        tool.release({pixel});
    }
    EXPECT_EQ(angle, 90);
}

TEST(HostGuide, SpaceMice)
{
    struct
    {
        Vec3f shift{0, 0, -1};
        Vec3f turn{0, 0.5f, 0};
    } const mouse;
    Real32 const speed = 2;
    Real32 const seconds = 0.25f;
    std::optional<Pnt3f> const selectionCenter;
    WindowView view{{0, -9, 3}, {0, 0, 0}, {0, 0, 1}, 45, 640, 480};
    WindowView const before = view;
    view = move_by(view, mouse.shift * speed * seconds, mouse.turn * seconds, selectionCenter);
    EXPECT_NE(view, before);
}
} // namespace
