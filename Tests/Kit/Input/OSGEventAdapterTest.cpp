// Positions, frames, panels and the wheel.

#include "AdaptedEvents.h"
#include "LogCapture.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;
using testing::IsEmpty;

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
} // namespace
} // namespace OSG::Test
