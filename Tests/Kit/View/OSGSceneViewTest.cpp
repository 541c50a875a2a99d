#include "OSGSceneView.h"

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "NeedsContext.h"
#include "OSGCadTrackballEngine.h"
#include "OSGChangeList.h"
#include "OSGFrameDemand.h"
#include "OSGOffscreenContext.h"
#include "OSGPicture.h"
#include "OSGThread.h"
#include "OSGViewFit.h"
#include "OSGWASDFlyEngine.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
WindowView const Side{{9, 1, 6}, {1, 1, 0}, {0, 1, 0}, 30, 64, 48};

WindowView flat(Real32 height)
{
    WindowView view = Side;
    view.orthographicHeight = height;
    return view;
}

struct SceneViewTest : testing::Test
{
    SceneView view;

    void SetUp() override { view.setSize(64, 48); }
};

TEST_F(SceneViewTest, GivesTheViewThatWasSetInTheSizeOfTheWindow)
{
    WindowView wanted = Side;
    wanted.width = 7;
    EXPECT_TRUE(view.setView(wanted));
    EXPECT_EQ(view.getView(), Side);
    view.setSize(10, 20);
    EXPECT_EQ(view.getView().width, 10u);
    EXPECT_EQ(view.getView().height, 20u);
    EXPECT_TRUE(view.setView(flat(3)));
    EXPECT_EQ(view.getView().orthographicHeight, 3);
    EXPECT_TRUE(view.setView(Side));
    EXPECT_FALSE(view.getView().orthographicHeight.has_value());
}

TEST_F(SceneViewTest, AViewThatIsNoneChangesNothing)
{
    view.setView(Side);
    WindowView none = Side;
    none.at = none.from;
    EXPECT_FALSE(view.setView(none));
    EXPECT_FALSE(view.setView(flat(0)));
    view.setSize(0, 9);
    view.setSize(9, 65536);
    EXPECT_EQ(view.getView(), Side);
}

TEST_F(SceneViewTest, AnEngineTakesThePoseOfTheViewAndGoesOnFromThere)
{
    view.setScene(make_triangle());
    view.setView(Side);
    view.setEngine(UnrecordedRefPtr<CadTrackballEngine>(CadTrackballEngine::create(0.8f)));
    NavigatorEngine &engine = *view.getNavigator().getEngine();
    EXPECT_NEAR((engine.getFrom() - Side.from).length(), 0, 1e-5);
    EXPECT_NEAR((engine.getAt() - Side.at).length(), 0, 1e-5);
    view.getNavigator().buttonPress(NavigatorEvent::WheelUp, 32, 24);
    EXPECT_GT((view.getView().from - Side.from).length(), 0.01);
    EXPECT_EQ(view.getView().from, engine.getFrom());
}

TEST_F(SceneViewTest, WithoutPerspectiveTheHeightGoesWithTheEnginesDistance)
{
    view.setEngine(UnrecordedRefPtr<CadTrackballEngine>(CadTrackballEngine::create(0.8f)));
    view.setView(flat(4));
    EXPECT_NEAR(*view.getView().orthographicHeight, 4, 1e-5);
    view.getNavigator().getEngine()->setDistance(5); // half as far
    EXPECT_NEAR(*view.getView().orthographicHeight, 2, 1e-5);
}

TEST_F(SceneViewTest, AnEngineWithoutADistanceKeepsTheHeight)
{
    view.setScene(make_triangle());
    view.setEngine(UnrecordedRefPtr<WASDFlyEngine>(WASDFlyEngine::create()));
    ASSERT_EQ(view.getNavigator().getEngine()->getDistance(), 0);
    EXPECT_TRUE(view.setView(flat(4)));
    EXPECT_NEAR(*view.getView().orthographicHeight, 4, 1e-5);
    EXPECT_TRUE(is_view(view.getView()));
}

TEST_F(SceneViewTest, AnIdleFrameEditsNothing)
{
    view.setScene(make_triangle());
    view.setEngine(UnrecordedRefPtr<CadTrackballEngine>(CadTrackballEngine::create(0.8f)));
    view.setView(Side);
    FrameDemand demand;
    auto const frame = [&]
    {
        view.getNavigator().updateCameraTransformation();
        view.update();
        Thread::getCurrentChangeList()->commitChanges();
        return demand.take(*view.getViewport());
    };
    EXPECT_TRUE(frame());
    EXPECT_FALSE(frame());
    EXPECT_FALSE(frame());
    view.getNavigator().buttonPress(NavigatorEvent::WheelUp, 32, 24);
    EXPECT_TRUE(frame());
    EXPECT_FALSE(frame());
    // Whatever the view: the navigator and the view pose the camera alike to the bit.
    for(int i = 1; i <= 50; ++i)
    {
        Real32 const part = static_cast<Real32>(i) / 7;
        view.setView({{part, 3 / part, 5 - part}, {1, 1, part / 9}, {part, 1, 0}, 30, 64, 48});
        frame();
        EXPECT_FALSE(frame()) << i;
    }
}

TEST_F(SceneViewTest, WithoutPerspectiveAnEnginesZoomStays)
{
    view.setScene(make_triangle());
    view.setEngine(UnrecordedRefPtr<CadTrackballEngine>(CadTrackballEngine::create(0.8f)));
    view.setView(flat(4));
    view.getNavigator().buttonPress(NavigatorEvent::WheelUp, 32, 24);
    Real32 const zoomed = *view.getView().orthographicHeight;
    EXPECT_NE(zoomed, 4);
    for(int i = 0; i < 3; ++i)
        view.update();
    EXPECT_EQ(view.getView().orthographicHeight, zoomed);
    view.setView(flat(2));
    EXPECT_EQ(view.getView().orthographicHeight, 2);
}

TEST_F(SceneViewTest, FitsTheSceneInTheDirectionOfTheView)
{
    NodePtr const scene = make_triangle({50, 0, 0});
    view.setScene(scene);
    view.setView(Side);
    view.fit();
    EXPECT_EQ(view.getView(), fit(Side, view.getBounds()));
    EXPECT_NE(view.getView(), Side);
}

TEST_F(SceneViewTest, DrawsWhatAPictureOfTheSameViewShows)
{
    OffscreenContext context(64, 48);
    OSG_NEEDS_CONTEXT(context);
    NodePtr const scene = make_triangle();
    view.setScene(scene);
    for(WindowView const &start : {Side, flat(4)})
    {
        view.setView(start);
        view.fit();
        ASSERT_TRUE(context.makeCurrent());
        view.draw();
        std::vector<UInt8> const drawn = context.readPixels();
        context.release();
        WindowView const shown = view.getView();
        PictureView picture;
        picture.camera = camera_of(shown);
        picture.depths = picture_depths(view.getBounds(), picture.camera);
        picture.fieldOfView = shown.fieldOfView;
        picture.orthographicHeight = shown.orthographicHeight;
        EXPECT_EQ(drawn, draw_picture(context, scene, picture, Color3f(1, 1, 1)).pixels);
        EXPECT_NE(drawn, std::vector<UInt8>(64 * 48 * 3, 255));
    }
}

TEST_F(SceneViewTest, WithoutASceneItShowsTheBackground)
{
    OffscreenContext context(64, 48);
    OSG_NEEDS_CONTEXT(context);
    ASSERT_TRUE(context.makeCurrent());
    view.setBackground(Color3f(0, 1, 0));
    view.setScene(make_group());
    view.draw();
    std::vector<UInt8> const drawn = context.readPixels();
    context.release();
    EXPECT_EQ(drawn[0], 0);
    EXPECT_EQ(drawn[1], 255);
    EXPECT_EQ(drawn[drawn.size() - 2], 255);
}
} // namespace
} // namespace OSG::Test
