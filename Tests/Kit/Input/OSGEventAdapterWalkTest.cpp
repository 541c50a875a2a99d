// A walk behind an adapter.

#include "AdaptedEvents.h"
#include "OSGScriptedDesktop.h"
#include "OSGWIN32Window.h"
#include "OSGWalkFocusGuard.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

/// A person in empty space who looks along -z, in a window of 800 by 600 pixels with the focus.
struct WalkAdapterTest : EventAdapterTest
{
    WalkAdapterTest()
    {
        window->setHwnd(window.get());
        window->setSize(800, 600);
        window->addPort(viewport);
        viewport->setRoot(make_group());
        viewport->setCamera(make_perspective(0.8f, 0.1f, 100));
        desktop->setWindow(window.get(), {0, 0}, {800, 600});
        desktop->setFocus(window.get());
        Desktop::setCurrent(desktop);
        engine = WASDWalkEngine::create();
        Desktop::setCurrent(nullptr);
        engine->set({0, 0, 0}, {0, 0, -1}, {0, 1, 0});
        navigator.setEngine(engine);
        navigator.setViewport(viewport);
        adapter.pointerMove(10, 10); // an engine knows its navigator from the first event on
    }
    ~WalkAdapterTest() override { navigator.setEngine(nullptr); }
    /// Where the person is on the way back after five frames.
    Real32 framesLater()
    {
        for(int i = 0; i < 5; ++i)
        {
            desktop->advance(16);
            adapter.frame();
        }
        return engine->getFrom()[2];
    }

    std::shared_ptr<ScriptedDesktop> const desktop = std::make_shared<ScriptedDesktop>();
    UnrecordedRefPtr<WIN32Window> const window{WIN32Window::create()};
    ViewportPtr const viewport{Viewport::create()};
    UnrecordedRefPtr<WASDWalkEngine> engine;
};

TEST_F(WalkAdapterTest, PositionsFromBeforeTheWrapOfAPointerDoNotTurnTheView)
{
    framesLater();
    adapter.key(WalkKeys::F3, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey);
    adapter.pointerMove(600, 300);
    framesLater();
    adapter.pointerMove(700, 300);
    Pnt3f const before = engine->getAt();
    framesLater();
    Pnt3f const looking = engine->getAt();
    EXPECT_NE(looking, before); // the pointer turns the view
    // It leaves the window, and the engine puts it to the middle. Further events come late.
    adapter.pointerMove(805, 300);
    adapter.frame();
    adapter.pointerMove(807, 300);
    adapter.pointerMove(400, 300);
    framesLater();
    EXPECT_EQ(engine->getAt(), looking);
    adapter.pointerMove(410, 300);
    framesLater();
    EXPECT_NE(engine->getAt(), looking);
}

TEST_F(WalkAdapterTest, WhoAsksForThePointerIsNotTurnedByEventsThatComeAfterAWrap)
{
    adapter.setPointerQuery(
        [this](Real64 &x, Real64 &y)
        {
            x = desktop->getPointer().x;
            y = desktop->getPointer().y;
            return true;
        });
    desktop->setPointer({600, 300});
    framesLater();
    adapter.key(WalkKeys::F3, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey);
    framesLater();
    Pnt3f const before = engine->getAt();
    desktop->setPointer({700, 300}); // the event of it comes later still
    framesLater();
    Pnt3f const looking = engine->getAt();
    EXPECT_NE(looking, before);
    desktop->setPointer({805, 300});
    adapter.frame();
    EXPECT_EQ(desktop->getPointer().x, 400);
    for(Real64 const x : {805., 807., 809.})
    {
        adapter.pointerMove(x, 300);
        framesLater();
    }
    EXPECT_EQ(engine->getAt(), looking);
}

TEST_F(WalkAdapterTest, TypingAndBandsDoNotWalk)
{
    WalkFocusGuard guard(navigator, *engine, desktop);
    adapter.setWalkGuard(&guard);
    EXPECT_EQ(framesLater(), 0);
    desktop->setKey('W', true);
    EXPECT_LT(framesLater(), 0);
    desktop->setKey('W', false);
    framesLater();
    engine->set({0, 0, 0}, {0, 0, -1}, {0, 1, 0});
    desktop->setKey('W', true);
    adapter.setKeyboardTaken(true);
    EXPECT_EQ(framesLater(), 0);
    adapter.setKeyboardTaken(false);
    EXPECT_EQ(framesLater(), 0); // the key is still down
    desktop->setKey('W', false);
    EXPECT_EQ(framesLater(), 0);
    // The left button is a key of the walk.
    setWritingTool();
    desktop->setKey(1, true);
    adapter.buttonPress(Left, 10, 10);
    EXPECT_EQ(framesLater(), 0);
    adapter.buttonRelease(Left, 20, 20);
    desktop->setKey(1, false);
    EXPECT_EQ(framesLater(), 0);
    // In a panel it is a click.
    adapter.setPointerTaken(true);
    desktop->setKey(1, true);
    EXPECT_EQ(framesLater(), 0);
    desktop->setKey(1, false);
    adapter.setPointerTaken(false);
    EXPECT_EQ(framesLater(), 0);
    desktop->setKey('W', true);
    EXPECT_LT(framesLater(), 0);
    adapter.setWalkGuard(nullptr);
}
} // namespace
} // namespace OSG::Test
