// The code of the guide to the Kit about what is drawn besides a scene, as hosts write it.

#include <filesystem>

#include <gtest/gtest.h>

#include "NeedsContext.h"
#include "OSGChangeList.h"
#include "OSGFrameDemand.h"
#include "OSGFrameImage.h"
#include "OSGGLObjectStore.h"
#include "OSGMarkers.h"
#include "OSGOffscreenContext.h"
#include "OSGSceneView.h"
#include "OSGThread.h"
#include "OSGViewCube.h"
#include "OperationScenes.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
struct BesidesGuide : testing::Test
{
    UInt32 const width = 64;
    UInt32 const height = 48;

    SceneView view;
    FrameDemand demand;
    NodePtr const scene = make_triangle();

    BesidesGuide()
    {
        view.setScene(scene);
        view.setSize(width, height);
        view.update();
        isDue();
    }
    bool isDue()
    {
        Thread::getCurrentChangeList()->commitChanges();
        return demand.take(*view.getViewport());
    }
};

TEST_F(BesidesGuide, Styles)
{
    EXPECT_FALSE(isDue());
    view.setStyle(DrawStyle::ShadedWithWires);
    view.setLineColor(Color3f(0.2f, 0.2f, 0.2f));
    demand.request();
    EXPECT_TRUE(isDue());
    EXPECT_EQ(view.getStyle(), DrawStyle::ShadedWithWires);
}

TEST_F(BesidesGuide, Overlays)
{
    NodePtr const grid = make_triangle();
    NodePtr const handles = make_triangle();
    view.setOverlay(grid);
    view.setOverlayOnTop(handles);
    demand.request();
    EXPECT_EQ(view.getOverlay(), grid);
    EXPECT_EQ(view.getOverlayOnTop(), handles);
    EXPECT_TRUE(isDue());
}

TEST_F(BesidesGuide, Markers)
{
    Markers markers;
    Pnt3f const first(0, 0, 0);
    Pnt3f const second(1, 0, 0);
    markers.clear();
    markers.addPoint(first, Color3f(1, 0, 0));
    markers.addPoint(second, Color3f(1, 0, 0), 13);
    markers.addLine(first, second, Color3f(1, 0, 0));
    view.setOverlayOnTop(markers.getNode());
    EXPECT_EQ(markers.size(), 3u);
}

TEST_F(BesidesGuide, ViewCube)
{
    WindowView shown{{0, -9, 3}, {0, 0, 0}, {0, 0, 1}, 45, 640, 480};
    WindowView const before = shown;
    Pnt2f const pointer(580, 60);
    int faces = 0;
    int lines = 0;
    auto const fillPolygon = [&faces](ViewCube::Polygon const &, Real32) { ++faces; };
    auto const drawLine = [&lines](UInt32, Vec2f const &) { ++lines; };

    ViewCube const cube(shown, Pnt2f(580, 60), 100, SceneUp::Z);
    for(ViewCube::Face const &face : cube.getFaces())
        fillPolygon(face.corners, face.shade);
    if(std::optional<CubePart> const part = cube.partAt(pointer))
        shown = cube.viewFrom(shown, *part);
    for(TriadAxis const &axis : triad_of(shown, 40))
        drawLine(axis.axis, axis.tip);
    EXPECT_EQ(faces, 2);
    EXPECT_EQ(lines, 3);
    EXPECT_EQ(shown, standard_view(before, StandardView::Front, SceneUp::Z));
}

TEST_F(BesidesGuide, SharpEdgesAndScreenshots)
{
    OffscreenContext context(width, height);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    for(int frame = 0; frame < 3; ++frame)
    {
        view.showEdges(Color3f(0, 0, 0));
        view.draw();
        if(!view.isComplete())
            demand.request();
        EXPECT_EQ(view.isComplete(), frame > 0) << frame;
        EXPECT_EQ(isDue(), frame == 0) << frame;
    }

    TempFolder const folder;
    std::filesystem::path const former = std::filesystem::current_path();
    std::filesystem::current_path(folder.path(""));
    std::vector<UInt8> const pixels = read_frame(width, height);
    if(UnrecordedRefPtr<Image> const image{image_of(pixels, width, height)})
        image->write("screenshot.png");
    EXPECT_TRUE(std::filesystem::exists("screenshot.png"));
    std::filesystem::current_path(former);
    GLObjectStore::releaseCurrent();
    context.release();
}
} // namespace
