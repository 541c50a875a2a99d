#include "OSGViewHistory.h"

#include <deque>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "SlowView.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
WindowView view_number(int number)
{
    return {{0, 0, Real32(number + 1)}, {0, 0, 0}, {0, 1, 0}, 45, 100, 100};
}

TEST(ViewHistory, GoesBackAndForth)
{
    ViewHistory history;
    EXPECT_FALSE(history.undo());
    EXPECT_FALSE(history.getCurrent());
    for(int i = 0; i < 3; ++i)
        history.add(view_number(i));
    EXPECT_EQ(history.undo(), view_number(1));
    EXPECT_EQ(history.undo(), view_number(0));
    EXPECT_FALSE(history.canUndo());
    EXPECT_FALSE(history.undo());
    EXPECT_EQ(history.redo(), view_number(1));
    EXPECT_EQ(history.getCurrent(), view_number(1));
}

TEST(ViewHistory, ANewViewForgetsWhatWasUndone)
{
    ViewHistory history;
    for(int i = 0; i < 3; ++i)
        history.add(view_number(i));
    history.undo();
    history.add(view_number(7));
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo(), view_number(1));
}

TEST(ViewHistory, TheSameViewAndNoViewAreNotAdded)
{
    ViewHistory history;
    history.add(view_number(0));
    history.add(view_number(1));
    history.undo();
    history.add(view_number(0));
    EXPECT_TRUE(history.canRedo());
    WindowView none = view_number(5);
    none.width = 0;
    history.add(none);
    EXPECT_EQ(history.getCurrent(), view_number(0));
}

TEST(ViewHistory, ALimitOfZeroKeepsTheCurrentView)
{
    ViewHistory history(0);
    history.add(view_number(0));
    history.add(view_number(1));
    EXPECT_EQ(history.getCurrent(), view_number(1));
    EXPECT_FALSE(history.canUndo());
}

TEST(ViewHistory, AgreesWithTwoStacks)
{
    RandomNumbers random(1);
    constexpr std::size_t Limit = 5;
    ViewHistory history(Limit);
    std::deque<WindowView> before, after; // the current view is the last one before
    for(int step = 0; step < 2000; ++step)
    {
        switch(random.below(3))
        {
        case 0:
            history.add(view_number(step));
            before.push_back(view_number(step));
            after.clear();
            if(before.size() > Limit)
                before.pop_front();
            break;
        case 1:
            if(before.size() > 1)
            {
                after.push_back(before.back());
                before.pop_back();
                ASSERT_EQ(history.undo(), before.back());
            }
            else
            {
                ASSERT_FALSE(history.undo());
            }
            break;
        default:
            if(!after.empty())
            {
                before.push_back(after.back());
                after.pop_back();
                ASSERT_EQ(history.redo(), before.back());
            }
            else
            {
                ASSERT_FALSE(history.redo());
            }
        }
        ASSERT_EQ(history.canUndo(), before.size() > 1);
        ASSERT_EQ(history.canRedo(), !after.empty());
    }
    history.clear();
    EXPECT_FALSE(history.getCurrent());
    EXPECT_FALSE(history.canRedo());
}
} // namespace
