#include "OSGViewportView.h"

#include <limits>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "MathPrinters.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A part of a window, and a beacon below a transform.
struct ViewportView : testing::Test
{
    void setCamera(Camera *camera)
    {
        camera->setBeacon(beacon);
        viewport->setCamera(camera);
    }
    /// Where the viewport's own camera shows a point: pixels from the viewport's left top corner.
    Pnt2f pixelOf(Pnt3f const &point) const
    {
        Matrix projection, viewing;
        Camera const *camera = viewport->getCamera();
        camera->getProjection(projection, 320, 240);
        camera->getViewing(viewing, 320, 240);
        Pnt3d norm;
        (Matrix4d(projection) * Matrix4d(viewing))
            .multFull(Pnt3d(point[0], point[1], point[2]), norm);
        return Pnt2f((norm[0] + 1) / 2 * 320, (1 - norm[1]) / 2 * 240);
    }

    NodePtr const beacon = make_transform(translation(0, 0, 10));
    NodePtr const above = make_transform(rotation({0, 1, 0}, 0.3f), {beacon});
    ViewportPtr const viewport = make_viewport(100, 50, 419, 289);
    WindowPtr const window = make_window(640, 480, viewport);
    UnrecordedRefPtr<Camera> const perspective{make_perspective(0.8f, 0.1f, 1000)};
    UnrecordedRefPtr<Camera> const flat{make_orthographic(12, 0.1f, 1000)};
    RandomNumbers random{12};
};

TEST_F(ViewportView, ShowsWhatTheCameraShows)
{
    for(Camera *camera : {perspective.get(), flat.get()})
    {
        setCamera(camera);
        std::optional<WindowView> const view = view_of(*viewport);
        ASSERT_TRUE(view);
        EXPECT_EQ(view->width, 320u);
        EXPECT_EQ(view->height, 240u);
        EXPECT_EQ(view->orthographicHeight.has_value(), camera == flat.get());
        EXPECT_NEAR(view->from.dist(view->at), 1, 1e-5);
        for(int i = 0; i < 50; ++i)
        {
            Pnt3f const point = random.point(-3, 3);
            Pnt2f const shown = pixelOf(point);
            EXPECT_LT(pixels_apart(slow_pixel(*view, point), shown[0], shown[1]), 0.01);
        }
    }
}

TEST_F(ViewportView, AViewThatIsShownComesBack)
{
    for(bool isOrthographic : {false, true})
    {
        setCamera(isOrthographic ? flat.get() : perspective.get());
        for(int round = 0; round < 50; ++round)
        {
            WindowView view = random_view(random, isOrthographic);
            view.width = 320;
            view.height = 240;
            ASSERT_TRUE(show_view(*viewport, view));
            auto const back = view_of(*viewport, view.from.dist(view.at));
            ASSERT_TRUE(back);
            EXPECT_LT(back->from.dist(view.from), 1e-4);
            EXPECT_LT(back->at.dist(view.at), 1e-4);
            EXPECT_EQ(back->orthographicHeight, view.orthographicHeight);
            Pnt3f const point = random.point(-3, 3);
            Pnt2f const shown = pixelOf(point);
            EXPECT_LT(pixels_apart(slow_pixel(view, point), shown[0], shown[1]), 0.01);
        }
    }
}

TEST_F(ViewportView, AnEqualViewIsNotWrittenAgain)
{
    setCamera(perspective.get());
    WindowView const view{{1, 2, 3}, {0, 0, 0}, {0, 1, 0}, 50, 320, 240};
    ASSERT_TRUE(show_view(*viewport, view));
    Thread::getCurrentChangeList()->commitChanges();
    ASSERT_TRUE(show_view(*viewport, view));
    EXPECT_FALSE(Thread::getCurrentChangeList()->hasOpenEdits());
}

TEST_F(ViewportView, IncompleteOnesHaveNone)
{
    EXPECT_FALSE(view_of(*viewport)); // no camera
    setCamera(perspective.get());
    EXPECT_TRUE(view_of(*viewport));
    EXPECT_FALSE(view_of(*viewport, -1.f));
    EXPECT_EQ(view_of(*viewport, 0.f), view_of(*viewport)); // of an engine that looks at nothing
    EXPECT_FALSE(view_of(*viewport, std::numeric_limits<Real32>::quiet_NaN()));
    perspective->setBeacon(nullptr);
    EXPECT_FALSE(view_of(*viewport));
    EXPECT_FALSE(show_view(*viewport, {{1, 2, 3}, {0, 0, 0}, {0, 1, 0}, 50, 320, 240}));
    setCamera(perspective.get());
    viewport->setRight(50);
    EXPECT_FALSE(view_of(*viewport)); // no pixels
}

TEST_F(ViewportView, ABeaconThatScalesOrMirrorsHasNone)
{
    setCamera(perspective.get());
    for(Matrix const &matrix : {scaling(2, 2, 2), scaling(-1, 1, 1), scaling(1, 1, 0)})
    {
        auto *const core = dynamic_cast<Transform *>(beacon->getCore());
        core->setMatrix(matrix);
        EXPECT_FALSE(view_of(*viewport));
    }
}

TEST_F(ViewportView, AnotherProjectionOrNoViewIsNotShown)
{
    setCamera(perspective.get());
    WindowView view{{1, 2, 3}, {0, 0, 0}, {0, 1, 0}, 50, 320, 240};
    view.orthographicHeight = 3;
    EXPECT_FALSE(show_view(*viewport, view));
    setCamera(flat.get());
    EXPECT_TRUE(show_view(*viewport, view));
    view.orthographicHeight.reset();
    EXPECT_FALSE(show_view(*viewport, view));
    view.fieldOfView = 0;
    setCamera(perspective.get());
    EXPECT_FALSE(show_view(*viewport, view));
}

TEST_F(ViewportView, FarFromTheOriginTheDirectionStays)
{
    setCamera(perspective.get());
    dynamic_cast<Transform *>(above->getCore())->setMatrix(translation(1e6f, 0, 0));
    auto const view = view_of(*viewport);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->from, Pnt3f(1e6f, 0, 10));
    EXPECT_NEAR(view->at[0], 1e6f, 1);
    EXPECT_LT(view->at[2], -60000);
}
} // namespace
