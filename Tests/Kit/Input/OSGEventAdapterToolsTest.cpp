// Who has a drag: the tool or the navigator.

#include "AdaptedEvents.h"
#include "OSGBandTool.h"
#include "OSGCadTrackballEngine.h"
#include "OSGMeasureTool.h"
#include "OSGPickTool.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST_F(EventAdapterTest, APressAfterALostReleaseBeginsAnotherDrag)
{
    auto const tool = setWritingTool();
    adapter.buttonPress(Left, 1, 1);
    adapter.pointerMove(2, 2);
    adapter.buttonPress(Left, 50, 50);
    adapter.buttonRelease(Left, 60, 60);
    EXPECT_EQ(tool->text, "press 1 drag 2 cancel press 50 release 60 ");
}

TEST_F(EventAdapterTest, OnAScaledScreenAClickMayMoveByAsManyUnits)
{
    int clicks = 0;
    adapter.setTool(std::make_shared<PickTool>([&](PointerTool::Event const &) { ++clicks; }));
    adapter.setContentScale(3);
    adapter.buttonPress(Left, 10, 10);
    adapter.buttonRelease(Left, 12, 10); // six device pixels
    EXPECT_EQ(clicks, 1);
    adapter.buttonPress(Left, 10, 10);
    adapter.buttonRelease(Left, 14, 10);
    EXPECT_EQ(clicks, 1);
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
} // namespace
} // namespace OSG::Test
