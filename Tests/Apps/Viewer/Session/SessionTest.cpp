#include "Session.h"

#include <sstream>

#include <gtest/gtest.h>

using namespace Viewer;

namespace
{
struct SessionTest : testing::Test
{
    std::ostringstream out;
    Session session{{out, out}};

    void SetUp() override
    {
        session.setSize(100, 80);
        session.applySettings();
    }
    void drag(double x0, double y0, double x1, double y1)
    {
        session.events.buttonPress(OSG::NavigatorEvent::LeftButton, x0, y0);
        session.events.pointerMove(x1, y1);
    }
};

TEST_F(SessionTest, ABandIsDrawnAsARectangleUntilTheButtonComesUp)
{
    session.tools.take(ToolBox::Tool::Band);
    EXPECT_TRUE(session.tools.drawnShape().empty());
    drag(10, 20, 50, 60);
    EXPECT_EQ(session.tools.drawnShape().size(), 4u);
    EXPECT_TRUE(session.tools.drawsEnclosed());
    session.events.pointerMove(2, 60);
    EXPECT_FALSE(session.tools.drawsEnclosed());
    session.events.buttonRelease(OSG::NavigatorEvent::LeftButton, 2, 60);
    EXPECT_TRUE(session.tools.drawnShape().empty());
}

TEST_F(SessionTest, AnotherToolEndsWhatTheOneBeforeWasAt)
{
    session.tools.take(ToolBox::Tool::Lasso);
    drag(10, 20, 50, 60);
    EXPECT_FALSE(session.tools.drawnShape().empty());
    session.tools.take(ToolBox::Tool::Navigate);
    EXPECT_TRUE(session.tools.drawnShape().empty());
    EXPECT_FALSE(session.events.isDragging());
}

TEST_F(SessionTest, EachToolIsFoundByTheNameThatRecordingsHave)
{
    using Kind = ToolBox::Tool;
    for(Kind const kind : {Kind::Navigate, Kind::Pick, Kind::Band, Kind::Lasso, Kind::Distance,
                           Kind::Angle, Kind::Zoom})
    {
        session.tools.take(kind);
        std::string const name = session.tools.getPointerTool()->getName();
        session.tools.take(Kind::Navigate);
        EXPECT_TRUE(session.tools.takeNamed(name)) << name;
        EXPECT_EQ(session.tools.getTool(), kind) << name;
    }
    EXPECT_FALSE(session.tools.takeNamed("hammer"));
}

TEST_F(SessionTest, ABandOfTheZoomIsWhatTheWindowShowsThen)
{
    session.driver.setWaySeconds(0);
    OSG::WindowView const before = session.view.getView();
    session.tools.take(ToolBox::Tool::Zoom);
    drag(25, 20, 75, 60);
    session.events.buttonRelease(OSG::NavigatorEvent::LeftButton, 75, 60);
    OSG::WindowView const after = session.view.getView();
    EXPECT_LT((after.at - after.from).length(), 0.6f * (before.at - before.from).length());
    EXPECT_TRUE(session.picking.getSelection().isEmpty());
}

TEST_F(SessionTest, WithoutASceneEveryToolGivesNothing)
{
    using Kind = ToolBox::Tool;
    for(Kind const kind : {Kind::Navigate, Kind::Pick, Kind::Band, Kind::Lasso, Kind::Distance,
                           Kind::Angle, Kind::Zoom})
    {
        session.tools.take(kind);
        drag(10, 20, 50, 60);
        session.events.buttonRelease(OSG::NavigatorEvent::LeftButton, 50, 60);
        drag(10, 20, 10, 20);
        session.events.buttonRelease(OSG::NavigatorEvent::LeftButton, 10, 20);
        session.frame(0);
        EXPECT_TRUE(session.picking.getSelection().isEmpty());
        EXPECT_TRUE(session.picking.getMeasured().empty());
    }
}

TEST_F(SessionTest, ARecordingThatIsNoneIsOneLineAndLeavesTheView)
{
    OSG::WindowView const before = session.view.getView();
    EXPECT_FALSE(session.play("/nothing.events", Recordings::Pace::AtOnce));
    EXPECT_EQ(out.str(), "tolvanite: /nothing.events: is no regular file\n");
    EXPECT_FALSE(session.recordings.isPlaying());
    EXPECT_EQ(session.view.getView(), before);
}

TEST_F(SessionTest, NothingIsSavedWithoutASceneOrAFormat)
{
    session.save("/tmp/nothing.obj");
    EXPECT_EQ(out.str(), "tolvanite: cannot write /tmp/nothing.obj: there is no scene\n");
}
} // namespace
