// The pointer, the modes, the looks and the camera of the walk.

#include <cmath>

#include "OSGChangeList.h"
#include "OSGThread.h"
#include "WalkInput.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
// --- the pointer: console mode ---

TEST_F(Input, ConsoleModeHidesThePointerWhileAKeyMoves)
{
    desktop.setPointer({333, 222});
    view.frame({'E'}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getCapture(), view.native);
    desktop.setPointer({400, 300});
    view.frame({}, 16);
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getPointer().x, 333);
    EXPECT_EQ(desktop.getPointer().y, 222);
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

TEST_F(Input, LeavesACaptureOfAnotherWindow)
{
    int other = 0;
    desktop.setCapture(&other);
    view.frame({'E'}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), &other);
}

TEST_F(Input, TakesALostCaptureBack)
{
    walk.setGameMode();
    desktop.loseCapture();
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), view.native);
    // A capture of another window is left alone.
    int other = 0;
    desktop.setCapture(&other);
    view.frame({}, 16);
    EXPECT_EQ(desktop.getCapture(), &other);
}

// --- modes ---

TEST_F(Input, EscapeInGameModeShowsThePointerWhereItVanished)
{
    desktop.setPointer({333, 222});
    view.pressVirtual(F2);
    EXPECT_FALSE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_FALSE(desktop.isPointerVisible());
    view.frame({}, 16);
    EXPECT_FALSE(desktop.isPointerVisible());
    desktop.setPointer({1, 2});
    view.pressVirtual(Escape);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getPointer().x, 333);
    EXPECT_EQ(desktop.getPointer().y, 222);
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

TEST_F(Input, F2TogglesGameModeWithoutLooksOnIdle)
{
    walk.rotate_on_idle(true);
    view.pressVirtual(F2);
    EXPECT_FALSE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    walk.rotate_on_idle(true);
    view.pressVirtual(F2);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_TRUE(desktop.isPointerVisible());
}

TEST_F(Input, F3DigitThreeAndSetGameModeToggleTheModeWithLooksOnIdle)
{
    for(int way = 0; way < 3; ++way)
    {
        auto const toggle = [this, way]
        {
            if(way == 0)
                view.pressVirtual(F3);
            else if(way == 1)
                view.pressVirtual('3');
            else
                walk.setGameMode();
        };
        toggle();
        EXPECT_FALSE(walk.wasd_walk_console()) << way;
        EXPECT_TRUE(walk.rotate_on_idle()) << way;
        EXPECT_FALSE(desktop.isPointerVisible()) << way;
        toggle();
        EXPECT_TRUE(walk.wasd_walk_console()) << way;
        EXPECT_FALSE(walk.rotate_on_idle()) << way;
        EXPECT_TRUE(desktop.isPointerVisible()) << way;
    }
}

TEST_F(Input, LostFocusEndsGameModeAlsoWhereTheEngineIsSilent)
{
    walk.setSilent(true);
    walk.setGameMode();
    EXPECT_FALSE(walk.wasd_walk_console());
    walk.killFocus(&navigator);
    EXPECT_TRUE(walk.wasd_walk_console());
    EXPECT_FALSE(walk.rotate_on_idle());
    EXPECT_TRUE(desktop.isPointerVisible());
    EXPECT_EQ(desktop.getCapture(), nullptr);
}

// --- looks ---

TEST_F(Input, NormalisedPlacesCountFromTheLastLook)
{
    Real32 fromX, fromY, toX, toY;
    ASSERT_TRUE(walk.calcFromTo(400, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, -1.f);
    EXPECT_EQ(fromY, 1.f);
    EXPECT_EQ(toX, 0.f);
    EXPECT_EQ(toY, 0.f);
    walk.rotate_move(0, 600, 450);
    ASSERT_TRUE(walk.calcFromTo(400, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, 0.5f);
    EXPECT_EQ(fromY, -0.5f);
}

TEST_F(Input, NormalisedPlacesCountFromTheCornerOfTheView)
{
    view.viewport->setLeft(200);
    view.viewport->setRight(599);
    view.viewport->setBottom(100);
    view.viewport->setTop(299);
    Real32 fromX, fromY, toX, toY;
    ASSERT_TRUE(walk.calcFromTo(200, 300, fromX, fromY, toX, toY));
    EXPECT_EQ(fromX, -2.f);
    EXPECT_EQ(fromY, 4.f);
    EXPECT_EQ(toX, -1.f);
    EXPECT_EQ(toY, 1.f);
}

TEST_F(Input, WithoutPixelsNothingIsNormalisedAndTheNextLookStillBeginsThere)
{
    view.window->setSize(0, 0);
    Real32 numbers[4] = {1, 2, 3, 4};
    EXPECT_FALSE(walk.calcFromTo(5, 6, numbers[0], numbers[1], numbers[2], numbers[3]));
    EXPECT_EQ(numbers[0], 1.f);
    EXPECT_EQ(numbers[3], 4.f);
    Pnt3f const at = walk.getAt();
    walk.rotate_move(0, 400, 300);
    EXPECT_EQ(walk.getAt(), at);
    view.window->setSize(800, 600);
    walk.rotate_move(0, 400, 300);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
}

TEST_F(Input, IdleOnlyRemembersThePlaceUnlessTheViewIsToFollow)
{
    Pnt3f const at = walk.getAt();
    walk.idle(0, 400, 300, &navigator);
    EXPECT_EQ(walk.getAt(), at);
    walk.rotate_move(0, 400, 300); // the look begins at the place of the idle event
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
    walk.rotate_on_idle(true); // in console mode it does not follow yet
    walk.idle(0, 0, 0, &navigator);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
    view.pressVirtual(F3);
    walk.idle(0, 80, 0, &navigator); // a tenth of the width: 0.2 to the right
    EXPECT_NEAR(walk.getAt()[0] - at[0], std::sin(0.2f), 1e-5);
}

TEST_F(Input, IdleFollowsWhileAKeyMoves)
{
    walk.idle(0, 0, 0, &navigator);
    Pnt3f const at = walk.getAt();
    view.frame({'C'}, 16);
    walk.idle(0, 0, 60, &navigator); // a tenth of the height: 0.2 down
    EXPECT_NEAR(walk.getAt()[1] - at[1], -std::sin(0.2f), 1e-5);
    view.frame({}, 16);
    Pnt3f const after = walk.getAt();
    walk.idle(0, 0, 120, &navigator);
    EXPECT_EQ(walk.getAt(), after);
}

TEST_F(Input, AStepLooksFirst)
{
    walk.idle(0, 0, 0, &navigator);
    walk.moveTo(Int16(400 * 1.5707963f), 0, &navigator); // a quarter turn to the right
    view.frame({'W'}, 100);
    EXPECT_NEAR(walk.getFrom()[0], 0.2f, 1e-3);
    EXPECT_NEAR(walk.getFrom()[2], 0.f, 1e-3);
}

TEST_F(Input, APointerThatLeavesTheViewWrapsWithoutATurn)
{
    view.pressVirtual(F3);
    walk.idle(0, 400, 300, &navigator);
    Vec3f const look = walk.getAt() - walk.getFrom();
    struct
    {
        Int16 x, y;
    } const places[] = {{-1, 300}, {801, 300}, {400, -1}, {400, 601}, {-32768, 32767}};
    for(auto const &place : places)
    {
        desktop.setPointer({0, 0});
        walk.mouseMove(place.x, place.y, &navigator);
        EXPECT_EQ(desktop.getPointer().x, 500) << place.x;
        EXPECT_EQ(desktop.getPointer().y, 350) << place.x;
        walk.idle(0, 400, 300, &navigator); // where the pointer now is
        view.frame({'W'}, 16);
        EXPECT_TRUE((walk.getAt() - walk.getFrom()).equals(look, 1e-5f)) << place.x;
    }
}

TEST_F(Input, APointerInTheViewAndOnItsEdgeIsLeftAlone)
{
    view.pressVirtual(F3);
    struct
    {
        Int16 x, y;
    } const places[] = {{0, 0}, {800, 600}, {400, 300}};
    for(auto const &place : places)
    {
        desktop.setPointer({1, 2});
        walk.mouseMove(place.x, place.y, &navigator);
        walk.idle(0, place.x, place.y, &navigator);
        EXPECT_EQ(desktop.getPointer().x, 1) << place.x;
    }
}

TEST_F(Input, InConsoleModeThePointerNeverWraps)
{
    desktop.setPointer({1, 2});
    walk.mouseMove(-5, 700, &navigator);
    walk.idle(0, -5, 700, &navigator);
    EXPECT_EQ(desktop.getPointer().x, 1);
}

TEST_F(Input, AnIdleEventThatTurnsAlsoWraps)
{
    view.pressVirtual(F3);
    walk.idle(0, 810, 300, &navigator);
    EXPECT_EQ(desktop.getPointer().x, 500);
    Pnt3f const at = walk.getAt();
    walk.idle(0, 400, 300, &navigator);
    EXPECT_TRUE(walk.getAt().equals(at, 1e-6f));
}

// --- the camera ---

TEST_F(Input, TheCamerasFieldOfViewFollowsTheEngines)
{
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 45.f / 360 * 2 * 3.1415927f);
    walk.setFieldOfView(60);
    walk.setSilent(true);
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 60.f / 360 * 2 * 3.1415927f);
    view.camera->setFov(0.1f);
    view.frame({}, 16);
    EXPECT_EQ(view.camera->getFov(), 60.f / 360 * 2 * 3.1415927f);
    EXPECT_EQ(walk.getFieldOfView(), 60.f);
}

TEST_F(Input, AnEqualFieldOfViewIsNotWrittenAgain)
{
    for(Real32 const degrees : {30.f, 37.5f, 45.f, 54.f, 64.8f, 77.759995f, 111.1f, 120.f})
    {
        walk.camera_field_of_view(degrees);
        view.frame({}, 16);
        Thread::getCurrentChangeList()->commitChanges();
        view.frame({}, 16);
        EXPECT_EQ(view.camera->getChangeMask(), 0u) << degrees;
    }
}

TEST_F(Input, TheWorldIsTheRootOfTheViewport)
{
    view.viewport->setRoot(make_floor(0));
    EXPECT_FALSE(walk.can_fall(Pnt3f(0, 1, 0)));
    walk.setSilent(true);
    walk.onViewportChanged(&navigator);
    EXPECT_TRUE(walk.can_fall(Pnt3f(0, 1, 0)));
    walk.onViewportChanged(nullptr);
    EXPECT_FALSE(walk.can_fall(Pnt3f(0, 1, 0)));
}
} // namespace
