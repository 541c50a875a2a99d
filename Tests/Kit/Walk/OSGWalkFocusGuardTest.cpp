#include "OSGWalkFocusGuard.h"

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "MathPrinters.h"
#include "OSGScriptedDesktop.h"
#include "OSGWIN32Window.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// A person in empty space, which looks along -z, in a window that has the focus.
struct Guarded : ::testing::Test
{
    Guarded()
    {
        window->setHwnd(window.get());
        window->setSize(800, 600);
        window->addPort(viewport);
        viewport->setRoot(make_group());
        viewport->setCamera(make_perspective(0.8f, 0.1f, 100));
        Desktop::setCurrent(desktop);
        engine = WASDWalkEngine::create();
        Desktop::setCurrent(nullptr);
        engine->set({0, 0, 0}, {0, 0, -1}, {0, 1, 0});
        navigator.setEngine(engine);
        navigator.setViewport(viewport);
        navigator.moveTo(0, 0);
        desktop->setFocus(window.get());
    }

    void frame(bool guarded)
    {
        desktop->advance(16);
        if(guarded)
            guard->beforeFrame();
        navigator.updateCameraTransformation();
    }
    void makeGuard() { guard = std::make_unique<WalkFocusGuard>(navigator, *engine, desktop); }
    /// The window loses the focus for ten seconds; a click brings it back and is held.
    void clickAfterTenSeconds()
    {
        desktop->setFocus(nullptr);
        frame(true);
        desktop->advance(10000);
        desktop->setKey(1, true);
        desktop->setFocus(window.get());
    }

    std::shared_ptr<ScriptedDesktop> const desktop = std::make_shared<ScriptedDesktop>();
    UnrecordedRefPtr<WIN32Window> const window{WIN32Window::create()};
    ViewportPtr const viewport{Viewport::create()};
    UnrecordedRefPtr<WASDWalkEngine> engine;
    Navigator navigator;
    std::unique_ptr<WalkFocusGuard> guard;
};

TEST_F(Guarded, WithoutAGuardTheFirstStepCountsTheTimeAway)
{
    makeGuard();
    frame(true);
    clickAfterTenSeconds();
    engine->setSilent(false);
    frame(false);
    EXPECT_LT(engine->getFrom()[2], -20);
}

TEST_F(Guarded, TheClickThatBringsTheFocusBackMovesNothing)
{
    makeGuard();
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
    clickAfterTenSeconds();
    for(int i = 0; i < 50; ++i)
        frame(true);
    EXPECT_TRUE(guard->isWaiting());
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 0));
    desktop->setKey(1, false);
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 0));
    desktop->setKey('W', true);
    frame(true);
    EXPECT_NEAR(engine->getFrom()[2], -0.032f, 1e-5);
}

TEST_F(Guarded, WaitsForKeysOfTheSettingsToo)
{
    makeGuard();
    desktop->setKey(16, true);
    frame(true);
    EXPECT_TRUE(guard->isWaiting());
    desktop->setKey(16, false);
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
}

TEST_F(Guarded, AFocusThatGoesAgainBeforeTheKeysAreUpKeepsItWaiting)
{
    makeGuard();
    frame(true);
    clickAfterTenSeconds();
    frame(true);
    desktop->setFocus(nullptr);
    desktop->setKey(1, false);
    frame(true);
    EXPECT_TRUE(guard->isWaiting());
    desktop->setFocus(window.get());
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
}

TEST_F(Guarded, WhileSomebodyElseHasTheKeysNothingMoves)
{
    makeGuard();
    frame(true);
    guard->setInputTaken(true);
    desktop->setKey('W', true);
    for(int i = 0; i < 50; ++i)
        frame(true);
    EXPECT_TRUE(guard->isWaiting());
    guard->setInputTaken(false);
    frame(true); // the key is still down
    EXPECT_EQ(engine->getFrom(), Pnt3f(0, 0, 0));
    desktop->setKey('W', false);
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
    desktop->setKey('W', true);
    frame(true);
    EXPECT_NEAR(engine->getFrom()[2], -0.032f, 1e-5);
}

TEST_F(Guarded, WithoutAWindowItWaitsForNothing)
{
    makeGuard();
    window->subPort(viewport);
    frame(true);
    EXPECT_FALSE(guard->isWaiting());
}
} // namespace
