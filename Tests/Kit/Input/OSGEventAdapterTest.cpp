#include "OSGEventAdapter.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LogCapture.h"
#include "NavigatedView.h"
#include "OSGBandTool.h"
#include "OSGCadTrackballEngine.h"
#include "OSGMeasureTool.h"
#include "OSGPickTool.h"
#include "OSGScriptedDesktop.h"
#include "OSGWIN32Window.h"
#include "OSGWalkFocusGuard.h"
#include "RandomNumbers.h"

namespace OSG
{
static void PrintTo(NavigatorEvent const &event, std::ostream *out)
{
    *out << "kind " << int(event.kind) << " code " << event.code << " at " << event.x << ", "
         << event.y;
}
} // namespace OSG

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
constexpr Int16 Left = NavigatorEvent::LeftButton;
constexpr Int16 Middle = NavigatorEvent::MiddleButton;
constexpr Int16 Right = NavigatorEvent::RightButton;
constexpr Real64 Nan = std::numeric_limits<Real64>::quiet_NaN();

/// Keeps what a navigator hears.
struct Heard : NavigatorObserver
{
    void observe(NavigatorEvent const &event) override { events.push_back(event); }
    void observeFrame() override { ++frames; }
    std::vector<NavigatorEvent> take() { return std::exchange(events, {}); }
    std::vector<NavigatorEvent> events;
    int frames = 0;
};

NavigatorEvent press(Int16 button, Int16 x, Int16 y)
{
    return {NavigatorEvent::ButtonPress, button, 0, x, y};
}
NavigatorEvent release(Int16 button, Int16 x, Int16 y)
{
    return {NavigatorEvent::ButtonRelease, button, 0, x, y};
}
NavigatorEvent move(Int16 x, Int16 y) { return {NavigatorEvent::Move, 0, 0, x, y}; }
NavigatorEvent hover(Int16 x, Int16 y) { return {NavigatorEvent::Hover, 0, 0, x, y}; }
NavigatorEvent idle(Int16 button, Int16 x, Int16 y)
{
    return {NavigatorEvent::Idle, button, 0, x, y};
}

/// Writes down what it is told.
struct WritingTool : PointerTool
{
    void press(Event const &event) override { write("press", event); }
    void drag(Event const &event) override { write("drag", event); }
    void release(Event const &event) override
    {
        write("release", event);
        isDown = false;
    }
    void cancel() override
    {
        text += "cancel ";
        isDown = false;
    }
    bool isBusy() const override { return isDown; }
    bool sharesDrag() const override { return isShared; }

    void write(char const *what, Event const &event)
    {
        isDown = true;
        text += std::string(what) + ' ' + std::to_string(int(event.pixel[0])) + ' ';
    }
    std::string text;
    bool isDown = false;
    bool isShared = false;
};

struct EventAdapterTest : testing::Test
{
    EventAdapterTest() { navigator.setEventObserver(&heard); }
    ~EventAdapterTest() override { navigator.setEventObserver(nullptr); }
    std::vector<NavigatorEvent> frame()
    {
        adapter.frame();
        return heard.take();
    }
    std::shared_ptr<WritingTool> setWritingTool(bool isShared = false)
    {
        auto const tool = std::make_shared<WritingTool>();
        tool->isShared = isShared;
        adapter.setTool(tool);
        return tool;
    }

    Navigator navigator;
    Heard heard;
    EventAdapter adapter{navigator};
};

// --- positions ---

TEST_F(EventAdapterTest, LogicalPixelsBecomeDevicePixels)
{
    adapter.setContentScale(1.5);
    adapter.buttonPress(Right, 11, 7);
    EXPECT_THAT(heard.take(), ElementsAre(press(Right, 16, 10)));
    EXPECT_EQ(adapter.getPointer(), Pnt2f(16.5f, 10.5f));
}

TEST_F(EventAdapterTest, FractionsAreCutOffDownwards)
{
    adapter.buttonPress(Right, -0.25, 7.99);
    EXPECT_THAT(heard.take(), ElementsAre(press(Right, -1, 7)));
}

TEST_F(EventAdapterTest, WhatDoesNotFitIntoSixteenBitsIsTheNearestThatDoes)
{
    adapter.buttonPress(Right, 40000, -1e9);
    EXPECT_THAT(heard.take(), ElementsAre(press(Right, 32767, -32768)));
}

TEST_F(EventAdapterTest, APositionThatIsNoneIsDroppedButEndsADrag)
{
    adapter.buttonPress(Right, Nan, 1);
    adapter.pointerMove(1, std::numeric_limits<Real64>::infinity());
    adapter.wheel(1, Nan, 1);
    EXPECT_THAT(heard.take(), IsEmpty());
    adapter.buttonPress(Right, 5, 6);
    adapter.buttonRelease(Right, Nan, Nan);
    EXPECT_THAT(heard.take(), ElementsAre(press(Right, 5, 6), release(Right, 5, 6)));
}

TEST_F(EventAdapterTest, AContentScaleThatIsNoneIsRefused)
{
    LogCapture log;
    adapter.setContentScale(2);
    adapter.setContentScale(0);
    adapter.setContentScale(-1);
    adapter.setContentScale(Nan);
    EXPECT_EQ(adapter.getContentScale(), 2);
    EXPECT_EQ(log.messages().size(), 3u);
}

// --- motion ---

TEST_F(EventAdapterTest, AFrameBringsTheNewestMotionOrAnIdleEvent)
{
    adapter.pointerMove(1, 1);
    adapter.pointerMove(2, 2);
    EXPECT_TRUE(adapter.hasMotion());
    EXPECT_THAT(heard.take(), IsEmpty());
    EXPECT_THAT(frame(), ElementsAre(hover(2, 2)));
    EXPECT_FALSE(adapter.hasMotion());
    EXPECT_THAT(frame(), ElementsAre(idle(-1, 2, 2)));
    EXPECT_THAT(frame(), ElementsAre(idle(-1, 2, 2)));
    EXPECT_EQ(heard.frames, 3);
}

TEST_F(EventAdapterTest, APointerThatNeverRestsBringsIdleEventsInEverySecondFrame)
{
    for(Int16 i = 0; i < 10; i += 2)
    {
        adapter.pointerMove(i, 0);
        EXPECT_THAT(frame(), ElementsAre(hover(i, 0)));
        adapter.pointerMove(i + 1, 0);
        EXPECT_THAT(frame(), ElementsAre(idle(-1, static_cast<Int16>(i + 1), 0)));
    }
}

TEST_F(EventAdapterTest, ADragBringsAMotionInEachFrame)
{
    adapter.buttonPress(Middle, 0, 0);
    heard.take();
    for(Int16 i = 1; i < 5; ++i)
    {
        adapter.pointerMove(i, 0);
        EXPECT_THAT(frame(), ElementsAre(move(i, 0)));
    }
    EXPECT_THAT(frame(), ElementsAre(idle(Middle, 4, 0)));
    adapter.setIdlesInDrags(true);
    adapter.pointerMove(6, 0);
    EXPECT_THAT(frame(), ElementsAre(move(6, 0)));
    adapter.pointerMove(7, 0);
    EXPECT_THAT(frame(), ElementsAre(idle(Middle, 7, 0)));
    EXPECT_THAT(frame(), ElementsAre(move(7, 0)));
}

TEST_F(EventAdapterTest, TheEndOfADragBringsItsLastMotion)
{
    adapter.buttonPress(Middle, 0, 0);
    adapter.pointerMove(5, 5);
    adapter.buttonRelease(Middle, 6, 6);
    EXPECT_THAT(heard.take(), ElementsAre(press(Middle, 0, 0), move(6, 6), release(Middle, 6, 6)));
    // That was the motion of this frame.
    adapter.pointerMove(8, 8);
    EXPECT_THAT(frame(), IsEmpty());
    EXPECT_THAT(frame(), ElementsAre(idle(-1, 8, 8)));
    EXPECT_THAT(frame(), ElementsAre(hover(8, 8)));
}

TEST_F(EventAdapterTest, NoFrameBringsTwoMotionsOrAMotionAndAnIdleEvent)
{
    RandomNumbers random(31);
    std::shared_ptr<WritingTool> const own = setWritingTool();
    auto const shared = std::make_shared<WritingTool>();
    shared->isShared = true;
    for(int i = 0; i < 5000; ++i)
    {
        Real64 const x = random.below(100);
        switch(random.below(9))
        {
        case 0:
            adapter.buttonPress(static_cast<Int16>(random.below(3)), x, 0);
            break;
        case 1:
            adapter.buttonRelease(static_cast<Int16>(random.below(3)), x, 0);
            break;
        case 2:
        {
            std::size_t motions = 0;
            for(NavigatorEvent const &event : frame())
            {
                motions += event.kind == NavigatorEvent::Move ||
                           event.kind == NavigatorEvent::Hover ||
                           event.kind == NavigatorEvent::Idle;
            }
            ASSERT_LE(motions, 1u) << i;
            break;
        }
        case 3:
            adapter.setPointerTaken(random.below(2) == 0);
            break;
        case 4:
            adapter.key(27, NavigatorEvent::KeyDown);
            break;
        case 5:
            if(random.below(10) == 0)
                adapter.setTool(random.below(2) == 0 ? own : shared);
            if(random.below(10) == 0)
                adapter.setIdlesInDrags(random.below(2) == 0);
            break;
        default:
            adapter.pointerMove(x, 0);
        }
    }
}

// --- tools ---

TEST_F(EventAdapterTest, AToolOwnsTheLeftDrag)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool();
    adapter.buttonPress(Left, 1, 0);
    adapter.pointerMove(2, 0);
    adapter.pointerMove(3, 0); // each motion
    EXPECT_TRUE(adapter.isDragging());
    EXPECT_THAT(frame(), IsEmpty());
    adapter.buttonPress(Middle, 4, 0);
    adapter.buttonRelease(Middle, 4, 0);
    adapter.wheel(1, 4, 0);
    adapter.buttonRelease(Left, 5, 0);
    EXPECT_THAT(heard.take(), IsEmpty());
    EXPECT_EQ(tool->text, "press 1 drag 2 drag 3 release 5 ");
    EXPECT_FALSE(adapter.isDragging());
    adapter.buttonPress(Right, 6, 0);
    EXPECT_THAT(heard.take(), ElementsAre(press(Right, 6, 0)));
}

TEST_F(EventAdapterTest, ABandDoesNotOrbit)
{
    NavigatedView view;
    UnrecordedRefPtr<CadTrackballEngine> const engine(CadTrackballEngine::create(0.8f));
    view.navigator.setEngine(engine);
    engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
    EventAdapter events(view.navigator);
    auto const drag = [&]
    {
        events.buttonPress(Left, 100, 100);
        events.pointerMove(300, 250);
        events.frame();
        events.buttonRelease(Left, 300, 250);
        events.frame();
        return engine->getMatrix();
    };
    Matrix const before = engine->getMatrix();
    int bands = 0;
    events.setTool(std::make_shared<BandTool>([&](BandTool::Band const &) { ++bands; }));
    EXPECT_EQ(drag(), before);
    EXPECT_EQ(bands, 1);
    events.setTool(nullptr);
    EXPECT_FALSE(drag() == before);
    EXPECT_EQ(bands, 1);
}

TEST_F(EventAdapterTest, AToolThatSharesLetsTheNavigatorHearAll)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool(true);
    adapter.buttonPress(Left, 1, 0);
    adapter.pointerMove(2, 0);
    EXPECT_THAT(frame(), ElementsAre(press(Left, 1, 0), move(2, 0)));
    adapter.buttonRelease(Left, 3, 0);
    EXPECT_THAT(heard.take(), ElementsAre(release(Left, 3, 0)));
    EXPECT_EQ(tool->text, "press 1 drag 2 release 3 ");
}

TEST_F(EventAdapterTest, ADragOfTheNavigatorIsNotBrokenByATool)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool();
    adapter.buttonPress(Middle, 1, 0);
    adapter.buttonPress(Left, 2, 0);
    adapter.buttonRelease(Left, 3, 0);
    adapter.buttonRelease(Middle, 4, 0);
    EXPECT_EQ(tool->text, "");
    EXPECT_THAT(heard.take(), ElementsAre(press(Middle, 1, 0), release(Middle, 4, 0)));
}

TEST_F(EventAdapterTest, EscapeAndALostFocusEndADragOfAToolWithoutAResult)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool();
    adapter.buttonPress(Left, 1, 0);
    adapter.key(27, NavigatorEvent::KeyDown | NavigatorEvent::VirtualKey);
    adapter.pointerMove(2, 0);
    adapter.buttonRelease(Left, 3, 0);
    EXPECT_EQ(tool->text, "press 1 cancel ");
    EXPECT_THAT(heard.take(), IsEmpty());
    // A second Escape is the navigator's.
    adapter.key(27, NavigatorEvent::KeyDown);
    EXPECT_EQ(heard.take().size(), 1u);
    tool->text.clear();
    adapter.buttonPress(Left, 4, 0);
    adapter.focusLost();
    adapter.buttonRelease(Left, 5, 0);
    EXPECT_EQ(tool->text, "press 4 cancel ");
    ASSERT_EQ(heard.events.size(), 1u);
    EXPECT_EQ(heard.events[0].kind, NavigatorEvent::KillFocus);
}

TEST_F(EventAdapterTest, EscapeEndsADragWhileAPanelHasTheKeyboard)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool();
    adapter.buttonPress(Left, 1, 0);
    adapter.setKeyboardTaken(true);
    adapter.key(27, NavigatorEvent::KeyDown);
    EXPECT_EQ(tool->text, "press 1 cancel ");
}

TEST_F(EventAdapterTest, ALostFocusEndsADragOfTheNavigatorWithoutAClick)
{
    NavigatedView view;
    UnrecordedRefPtr<CadTrackballEngine> const engine(CadTrackballEngine::create(0.8f));
    view.navigator.setEngine(engine);
    view.navigator.setClickCenter(true);
    engine->set(Pnt3f(0, 0, 10), Pnt3f(0, 0, 0), Vec3f(0, 1, 0));
    EventAdapter events(view.navigator);
    Matrix const before = engine->getMatrix();
    events.buttonPress(Left, 300, 300);
    events.focusLost();
    EXPECT_EQ(engine->getMatrix(), before); // the clicked point is not the new centre
    EXPECT_TRUE(view.navigator.getClickCenter());
    events.pointerMove(400, 300);
    events.frame();
    EXPECT_EQ(engine->getMatrix(), before);
    events.buttonPress(Left, 300, 300);
    events.buttonRelease(Left, 300, 300);
    EXPECT_FALSE(engine->getMatrix() == before);
}

TEST_F(EventAdapterTest, AnotherToolEndsTheDragAndMayBeSetByAResult)
{
    std::shared_ptr<WritingTool> const tool = setWritingTool();
    adapter.buttonPress(Left, 1, 0);
    std::weak_ptr<PointerTool> clicking;
    {
        auto const click = std::make_shared<PickTool>([&](PointerTool::Event const &)
                                                      { adapter.setTool(nullptr); });
        clicking = click;
        adapter.setTool(click);
    }
    EXPECT_EQ(tool->text, "press 1 cancel ");
    adapter.buttonRelease(Left, 2, 0); // of the tool before
    EXPECT_EQ(adapter.getTool(), clicking.lock().get());
    adapter.buttonPress(Left, 3, 0);
    adapter.buttonRelease(Left, 3, 0);
    EXPECT_EQ(adapter.getTool(), nullptr);
    EXPECT_TRUE(clicking.expired());
}

TEST_F(EventAdapterTest, EscapeForgetsAMeasurementBetweenItsClicks)
{
    int measured = 0;
    adapter.setTool(std::make_shared<MeasureTool>(
        2, [](PointerTool::Event const &) { return Pnt3f(1, 2, 3); },
        [&](std::vector<Pnt3f> const &) { ++measured; }));
    auto const click = [&]
    {
        adapter.buttonPress(Left, 1, 1);
        adapter.buttonRelease(Left, 1, 1);
    };
    click();
    adapter.key(27, NavigatorEvent::KeyDown);
    EXPECT_THAT(heard.take(), IsEmpty());
    click();
    EXPECT_EQ(measured, 0);
    click();
    EXPECT_EQ(measured, 1);
}

// --- panels, wheel and keys ---

TEST_F(EventAdapterTest, APanelHasThePointerUntilItGivesItBack)
{
    adapter.pointerMove(3, 3);
    frame();
    adapter.setPointerTaken(true);
    adapter.pointerMove(9, 9);
    adapter.buttonPress(Left, 9, 9);
    adapter.buttonRelease(Left, 9, 9);
    adapter.wheel(1, 9, 9);
    EXPECT_THAT(frame(), ElementsAre(idle(-1, 3, 3)));
    adapter.setPointerTaken(false);
    adapter.buttonPress(Left, 5, 5);
    adapter.setPointerTaken(true); // a drag that began in the view goes on
    adapter.pointerMove(9, 9);
    adapter.buttonRelease(Left, 9, 9);
    EXPECT_THAT(heard.take(), ElementsAre(press(Left, 5, 5), move(9, 9), release(Left, 9, 9)));
}

TEST_F(EventAdapterTest, WhatIsTypedIntoAPanelIsNotTheNavigators)
{
    adapter.setKeyboardTaken(true);
    adapter.key('W', NavigatorEvent::KeyDown);
    EXPECT_THAT(heard.take(), IsEmpty());
    adapter.setKeyboardTaken(false);
    adapter.pointerMove(4, 5);
    adapter.key('W', NavigatorEvent::KeyDown);
    EXPECT_THAT(heard.take(), ElementsAre(NavigatorEvent{NavigatorEvent::Key, 'W',
                                                         NavigatorEvent::KeyDown, 4, 5}));
}

TEST_F(EventAdapterTest, FractionsOfWheelStepsAreCollected)
{
    adapter.wheel(0.6, 1, 1);
    EXPECT_THAT(heard.take(), IsEmpty());
    adapter.wheel(0.6, 1, 1);
    EXPECT_THAT(heard.take(), ElementsAre(press(NavigatorEvent::WheelUp, 1, 1)));
    adapter.wheel(-2.4, 1, 1);
    EXPECT_EQ(heard.take().size(), 2u);
    adapter.wheel(Nan, 1, 1);
    adapter.wheel(-1e30, 1, 1);
    std::vector<NavigatorEvent> const steps = heard.take();
    EXPECT_EQ(steps.size(), 100u);
    EXPECT_EQ(steps.back(), press(NavigatorEvent::WheelDown, 1, 1));
}

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
    desktop->setKey('W', true);
    EXPECT_LT(framesLater(), 0);
    adapter.setWalkGuard(nullptr);
}
} // namespace
