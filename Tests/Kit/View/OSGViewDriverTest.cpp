#include "OSGViewDriver.h"

#include <gtest/gtest.h>

#include "OSGCadTrackballEngine.h"
#include "OSGViewFit.h"
#include "OSGViewMoves.h"
#include "OSGViewProjection.h"
#include "OperationScenes.h"

namespace OSG::Test
{
namespace
{
WindowView const Begin{{9, 1, 6}, {1, 1, 0}, {0, 1, 0}, 30, 640, 480};
WindowView const End{{-4, 3, 2}, {0, 1, 1}, {0, 0, 1}, 30, 640, 480};

/// As an engine keeps it: with `up` perpendicular to the view.
WindowView upright(WindowView view)
{
    Matrix const camera = camera_of(view);
    view.up = Vec3f(camera[1][0], camera[1][1], camera[1][2]);
    return view;
}

bool is_near(WindowView const &a, WindowView const &b)
{
    constexpr Real32 Tolerance = 1e-5f;
    return (a.from - b.from).length() < Tolerance && (a.at - b.at).length() < Tolerance &&
           (upright(a).up - upright(b).up).length() < Tolerance &&
           a.orthographicHeight.has_value() == b.orthographicHeight.has_value();
}

#define EXPECT_AT(wanted) EXPECT_PRED2(is_near, view.getView(), wanted)
#define EXPECT_NOT_AT(wanted) EXPECT_FALSE(is_near(view.getView(), wanted))

struct ViewDriverTest : testing::Test
{
    SceneView view;
    ViewDriver driver{view};
    NodePtr scene = make_triangle({2, 1, 0});

    void SetUp() override
    {
        view.setSize(640, 480);
        view.setScene(scene);
        view.setEngine(UnrecordedRefPtr<CadTrackballEngine>(CadTrackballEngine::create(0.8f)));
        view.setView(Begin);
    }
    /// Some frames in which nothing happens, so that the view is one of the history.
    void rest(Real64 seconds)
    {
        driver.update(seconds, true);
        driver.update(seconds, true);
    }
};

TEST_F(ViewDriverTest, GoesThereInTheTimeOfTheWayAndIsThereThen)
{
    driver.goTo(End);
    EXPECT_TRUE(driver.isOnWay());
    EXPECT_AT(Begin);
    driver.update(10, true);
    EXPECT_AT(Begin);
    driver.update(10 + ViewDriver::DefaultWaySeconds / 2, true);
    EXPECT_NOT_AT(Begin);
    EXPECT_NOT_AT(End);
    driver.update(10 + ViewDriver::DefaultWaySeconds, true);
    EXPECT_FALSE(driver.isOnWay());
    EXPECT_AT(End);
}

TEST_F(ViewDriverTest, AUserWhoMovesTheViewEndsTheWay)
{
    driver.goTo(End);
    driver.update(0, true);
    driver.update(0.1, true);
    WindowView moved = view.getView();
    moved.from[0] += 1;
    view.setView(moved);
    driver.update(0.15, true);
    driver.update(9, true);
    EXPECT_FALSE(driver.isOnWay());
    EXPECT_AT(moved);
}

TEST_F(ViewDriverTest, MovesThatFollowOneAnotherQuicklyAddUp)
{
    driver.goTo(End);
    driver.fit();
    driver.update(0, true);
    driver.update(1, true);
    EXPECT_AT(fit(End, view.getBounds()));
}

TEST_F(ViewDriverTest, WithoutATimeForTheWayItIsThereAtOnce)
{
    for(Real64 const seconds : {0., -1., std::numeric_limits<Real64>::quiet_NaN()})
    {
        driver.setWaySeconds(seconds);
        view.setView(Begin);
        driver.goTo(End);
        EXPECT_AT(End);
        EXPECT_FALSE(driver.isOnWay());
    }
}

TEST_F(ViewDriverTest, GoesBackToWhereTheUserRestedAndForthAgain)
{
    driver.setWaySeconds(0);
    rest(0);
    driver.jumpTo(End);
    driver.update(1, false); // a drag is under way
    EXPECT_FALSE(driver.canUndo());
    rest(2);
    ASSERT_TRUE(driver.canUndo());
    driver.undo();
    EXPECT_AT(Begin);
    rest(3);
    EXPECT_FALSE(driver.canUndo());
    EXPECT_TRUE(driver.canRedo());
    driver.redo();
    EXPECT_AT(End);
    driver.forget();
    EXPECT_FALSE(driver.canUndo());
    driver.undo();
    EXPECT_AT(End);
}

TEST_F(ViewDriverTest, TheWayBackEndsInTheHistory)
{
    rest(0);
    view.setView(End);
    rest(1);
    driver.undo();
    driver.update(2, true);
    driver.update(2.1, true);
    driver.update(9, true);
    rest(10);
    EXPECT_AT(Begin);
    EXPECT_TRUE(driver.canRedo());
}

TEST_F(ViewDriverTest, StandardViewsShowTheWholeSceneWithEitherAxisUpwards)
{
    driver.setWaySeconds(0);
    for(SceneUp const sceneUp : {SceneUp::Y, SceneUp::Z})
    {
        driver.setSceneUp(sceneUp);
        driver.look(StandardView::Top);
        WindowView const shown = view.getView();
        Vec3f const back = shown.from - shown.at;
        Vec3f const direction = back / back.length();
        EXPECT_NEAR(direction.dot(standard_direction(StandardView::Top, sceneUp)), 1, 1e-5);
        EXPECT_AT(fit(shown, view.getBounds()));
    }
}

TEST_F(ViewDriverTest, FitsIntoWhatPanelsLeaveFreeOfTheWidth)
{
    driver.setWaySeconds(0);
    driver.setFreeWidth(200);
    driver.fit();
    for(Pnt3f const &corner : {Pnt3f(2, 1, 0), Pnt3f(3, 1, 0), Pnt3f(2, 2, 0)})
    {
        Pnt2f const shown = *pixel_of(view.getView(), corner);
        EXPECT_GT(shown[0], 220);
        EXPECT_LT(shown[0], 420);
    }
    EXPECT_EQ(view.getView().width, 640u);
    for(UInt32 const all : {0U, 640U, 9999U})
    {
        driver.setFreeWidth(all);
        EXPECT_EQ(driver.fitted(Begin), fit(Begin, view.getBounds()));
    }
}

TEST_F(ViewDriverTest, ChangesTheProjectionInPlace)
{
    EXPECT_FALSE(driver.isOrthographic());
    driver.setOrthographic(true);
    EXPECT_TRUE(driver.isOrthographic());
    EXPECT_AT(to_orthographic(Begin));
    driver.goTo(Begin); // there is no way between projections
    EXPECT_AT(Begin);
}

TEST_F(ViewDriverTest, ZoomKeepsThePointUnderThePointerAlsoWhereThereIsNone)
{
    Pnt2f const pixel(200, 300);
    Pnt3f const point(2.5f, 1.25f, 0);
    driver.zoomAt(*pixel_of(Begin, point), point, 1.5f);
    EXPECT_LT((*pixel_of(view.getView(), point) - *pixel_of(Begin, point)).length(), 0.01);
    WindowView const before = view.getView();
    Pnt3f const nothing = *point_under(before, pixel, before.at);
    driver.zoomAt(pixel, {}, 2);
    EXPECT_NOT_AT(before);
    EXPECT_LT((*pixel_of(view.getView(), nothing) - pixel).length(), 0.01);
}

TEST_F(ViewDriverTest, AViewThatIsNoneAndAnEmptyBoxChangeNothing)
{
    WindowView none = End;
    none.up = none.from - none.at;
    driver.goTo(none);
    driver.jumpTo(none);
    driver.fit(BoxVolume());
    driver.update(0, true);
    driver.update(1, true);
    EXPECT_AT(Begin);
}
} // namespace
} // namespace OSG::Test
