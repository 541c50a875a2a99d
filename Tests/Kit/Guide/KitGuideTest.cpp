// The code of the guide to the Kit, as hosts write it. The guide shows these lines, and a test
// looks whether it still does.

#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "NavigatedView.h"
#include "OSGBandTool.h"
#include "OSGCadTrackballEngine.h"
#include "OSGChangeList.h"
#include "OSGEventAdapter.h"
#include "OSGFrameDemand.h"
#include "OSGHover.h"
#include "OSGPickSelector.h"
#include "OSGSceneView.h"
#include "OSGScriptedDesktop.h"
#include "OSGStandardView.h"
#include "OSGThread.h"
#include "OSGViewFit.h"
#include "OSGViewHistory.h"
#include "OSGViewMoves.h"
#include "OSGViewProjection.h"
#include "OSGViewWay.h"
#include "OSGViewportView.h"
#include "OSGWalkFocusGuard.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
void next_frame(SceneView &view, EventAdapter &events, FrameDemand &demand)
{
    events.frame();
    view.update();
    Thread::getCurrentChangeList()->commitChanges();
    if(demand.take(*view.getViewport()))
        view.draw();
}

struct KitGuide : testing::Test
{
    NavigatedView navigated;
    Node *const scene = navigated.root;
    Viewport *const viewport = navigated.viewport;
    Navigator &navigator = navigated.navigator;
    WindowView view{{0, -9, 3}, {0, 0, 0}, {0, 0, 1}, 45, 640, 480};
    FrameDemand demand;
    EventAdapter adapter{navigator};
};

TEST_F(KitGuide, AViewPutTogether)
{
    SceneView shown;
    EventAdapter events(shown.getNavigator());
    FrameDemand frames;
    shown.setScene(scene);
    EXPECT_TRUE(frames.take(*shown.getViewport()));
    next_frame(shown, events, frames); // nothing has changed: it needs no context
    EXPECT_FALSE(frames.take(*shown.getViewport()));
}

TEST_F(KitGuide, Views)
{
    view = standard_view(view, StandardView::Isometric, SceneUp::Z);
    view = fit(view, bounds_of(scene));
    EXPECT_TRUE(pixel_of(view, Pnt3f(0, 9, 0)));

    WindowView const before = view;
    view = to_orthographic(view);
    view = to_perspective(view);
    EXPECT_NEAR(view.from.dist(before.from), 0, 1e-4);

    std::optional<Pnt3f> picked;
    Pnt2f const pointer(100, 200);
    Pnt3f const kept = picked ? *picked : point_under(view, pointer, view.at).value_or(view.at);
    view = zoom_at(view, kept, pointer, 1.2f);
    EXPECT_NE(view, before);

    WindowView const viewAtPress = view;
    Real32 const wayX = 30;
    Real32 const wayY = -20;
    view = orbit_upright(viewAtPress, kept, Vec3f(0, 0, 1), -wayX * 0.01f, wayY * 0.01f);
    EXPECT_NE(view, viewAtPress);
}

TEST_F(KitGuide, WaysAndHistories)
{
    WindowView const before = view;
    WindowView const after = fit(view, bounds_of(scene));
    ViewHistory history;
    history.add(before);
    Real32 const share = 0.5f;
    WindowView const shown = view_between(before, after, share);
    history.add(after);
    if(std::optional<WindowView> const last = history.undo())
        view = *last;
    EXPECT_EQ(view, before);
    EXPECT_NE(shown, before);
}

TEST_F(KitGuide, ViewsOfCameras)
{
    UnrecordedRefPtr<CadTrackballEngine> const engine(CadTrackballEngine::create(0.8f));
    if(std::optional<WindowView> const current = view_of(*viewport, engine->getDistance()))
        show_view(*viewport, fit(*current, bounds_of(scene)));
    EXPECT_GT(navigated.beacon->getToWorld()[3][2], 10);
}

TEST_F(KitGuide, SelectionSets)
{
    SelectionSet selection;
    FrameDemand highlighter;
    highlighter.take(*viewport);
    NodePath const path(navigated.root->getChild(0));
    NodePath const otherPath(navigated.root);
    auto const isVisible = [](NodePath const &) { return true; };
    selection.addObserver(&highlighter);
    selection.setFilter({SelectionFunctor::SelectTriangles, isVisible});
    selection.replace({{path, SelectionFunctor::SelectTriangles}});
    selection.toggle({{path}, {otherPath}});
    EXPECT_THAT(selection.getPaths(), testing::ElementsAre(otherPath));

    Thread::getCurrentChangeList()->commitChanges();
    selection.prune(scene);
    EXPECT_EQ(selection.size(), 1u);
    EXPECT_TRUE(highlighter.take(*viewport));
    selection.removeObserver(&highlighter);
}

TEST_F(KitGuide, EventsAndTools)
{
    PickSettings settings;
    PixelArea area{};
    adapter.setContentScale(2);
    adapter.setTool(std::make_shared<BandTool>(
        [&](BandTool::Band const &band)
        {
            settings.enclosed = band.direction == BandTool::Direction::LeftToRight;
            area = band.area;
        }));
    adapter.buttonPress(NavigatorEvent::LeftButton, 10, 10);
    adapter.buttonRelease(NavigatorEvent::LeftButton, 20, 30);
    EXPECT_TRUE(settings.enclosed);
    EXPECT_EQ(area.bottom, 60);
}

TEST_F(KitGuide, Frames)
{
    RenderActionBase *const action = nullptr; // this host has no OpenGL
    Real64 const x = 3;
    Real64 const y = 4;
    adapter.pointerMove(x, y);
    adapter.frame();
    Thread::getCurrentChangeList()->commitChanges();
    if(demand.take(*viewport))
        viewport->render(action);
    EXPECT_FALSE(demand.take(*viewport));
}

TEST_F(KitGuide, Walks)
{
    auto const desktop = std::make_shared<ScriptedDesktop>();
    UnrecordedRefPtr<WASDWalkEngine> const walk(WASDWalkEngine::create());
    navigator.setEngine(walk);
    WalkFocusGuard guard(navigator, *walk, desktop);
    adapter.setWalkGuard(&guard);
    adapter.setIdlesInDrags(true);
    adapter.frame();
    adapter.setWalkGuard(nullptr);
}

TEST_F(KitGuide, Hovers)
{
    auto const pathUnder = [this](Pnt2f const &) { return std::optional(NodePath(scene)); };
    Hover<NodePath> hover([&](Pnt2f const &pixel) { return pathUnder(pixel); });
    hover.moveTo(adapter.getPointer());
    if(hover.update(*viewport))
        demand.request();
    EXPECT_EQ(hover.getAnswer(), NodePath(scene));
}

// --- the guide ---

std::string without_indents(std::istream &in)
{
    std::string text;
    for(std::string line; std::getline(in, line);)
        text += line.substr(std::min(line.find_first_not_of(' '), line.size())) + '\n';
    return text;
}

/// The C++ blocks of a document.
std::vector<std::string> blocks_of(std::string const &document)
{
    std::vector<std::string> blocks;
    std::string const open = "```cpp\n";
    for(std::size_t at = document.find(open); at != std::string::npos; at = document.find(open, at))
    {
        at += open.size();
        std::size_t const end = document.find("```\n", at);
        blocks.push_back(document.substr(at, end - at));
        at = end;
    }
    return blocks;
}

TEST(KitGuideText, ShowsCodeThatIsCompiledHere)
{
    std::string sources;
    for(auto const &entry : std::filesystem::recursive_directory_iterator(TEST_DATA_DIR))
    {
        std::ifstream in(entry.path());
        if(entry.path().extension() == ".cpp")
            sources += without_indents(in);
    }
    std::ifstream guide(TEST_SOURCE_DIR "/Docs/kit.md");
    std::vector<std::string> const blocks = blocks_of(without_indents(guide));
    EXPECT_GT(blocks.size(), 10u);
    for(std::string const &block : blocks)
        EXPECT_NE(sources.find(block), std::string::npos) << block;
}
} // namespace
