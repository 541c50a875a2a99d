#include "OSGHover.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "MathPrinters.h"
#include "NavigatedView.h"
#include "OSGChangeList.h"
#include "OSGThread.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
void commit() { Thread::getCurrentChangeList()->commitChanges(); }

struct HoverTest : testing::Test
{
    HoverTest() { commit(); }
    NavigatedView view;
    int asked = 0;
    bool isNothingThere = false;
    bool isThrowing = false;
    Hover<Pnt2f> hover{[this](Pnt2f const &pixel) -> std::optional<Pnt2f>
                       {
                           ++asked;
                           if(isThrowing)
                               throw std::bad_alloc();
                           return isNothingThere ? std::nullopt : std::optional(pixel);
                       }};
};

TEST_F(HoverTest, AsksOnceAFrameForTheNewestPlace)
{
    EXPECT_FALSE(hover.update(*view.viewport)); // nobody has come yet
    hover.moveTo({1, 1});
    hover.moveTo({2, 2});
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_EQ(hover.getAnswer(), Pnt2f(2, 2));
    EXPECT_EQ(asked, 1);
}

TEST_F(HoverTest, AnAnswerStandsUntilSomethingChanges)
{
    hover.moveTo({1, 1});
    hover.update(*view.viewport);
    for(int i = 0; i < 5; ++i)
    {
        commit();
        hover.moveTo({1, 1});
        EXPECT_FALSE(hover.update(*view.viewport));
    }
    EXPECT_EQ(asked, 1);
    hover.moveTo({3, 1});
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_EQ(asked, 2);
}

TEST_F(HoverTest, NothingIsAnAnswerToo)
{
    isNothingThere = true;
    hover.moveTo({1, 1});
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_FALSE(hover.getAnswer());
    EXPECT_FALSE(hover.update(*view.viewport));
    EXPECT_EQ(asked, 1);
}

TEST_F(HoverTest, AsksAgainForAnotherViewAndAfterACommit)
{
    hover.moveTo({1, 1});
    hover.update(*view.viewport);
    dynamic_cast<Transform *>(view.beacon->getCore())->setMatrix(translation(0, 0, 12));
    EXPECT_TRUE(hover.update(*view.viewport));
    commit();
    hover.update(*view.viewport);
    EXPECT_FALSE(hover.update(*view.viewport));
    view.window->setSize(600, 480);
    EXPECT_TRUE(hover.update(*view.viewport));
    view.root->addChild(make_group());
    commit();
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_FALSE(hover.update(*view.viewport));
}

TEST_F(HoverTest, APointerThatLeavesTakesTheAnswerWithIt)
{
    hover.moveTo({1, 1});
    hover.update(*view.viewport);
    hover.leave();
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_FALSE(hover.getAnswer());
    EXPECT_FALSE(hover.update(*view.viewport));
    EXPECT_EQ(asked, 1);
    hover.moveTo({1, 1});
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_EQ(asked, 2);
}

TEST_F(HoverTest, AQueryThatThrowsIsAskedAgain)
{
    hover.moveTo({1, 1});
    hover.update(*view.viewport);
    hover.moveTo({2, 1});
    isThrowing = true;
    EXPECT_THROW(hover.update(*view.viewport), std::bad_alloc);
    EXPECT_FALSE(hover.getAnswer());
    isThrowing = false;
    EXPECT_TRUE(hover.update(*view.viewport));
    EXPECT_EQ(hover.getAnswer(), Pnt2f(2, 1));
}

TEST_F(HoverTest, WithoutAQueryThereIsNothing)
{
    Hover<int> none({});
    none.moveTo({1, 1});
    none.update(*view.viewport);
    EXPECT_FALSE(none.getAnswer());
}
} // namespace
