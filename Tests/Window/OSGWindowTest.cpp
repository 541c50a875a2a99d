#include "OSGWindow.h"

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "OSGWIN32Window.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
TEST(Window, IsTheParentOfItsPorts)
{
    ViewportPtr const port(Viewport::create());
    EXPECT_EQ(port->getParent(), nullptr);
    WindowPtr const window = make_window(10, 10, port);
    EXPECT_EQ(port->getParent(), window.get());
    EXPECT_EQ(window->getNPorts(), 1u);
    window->subPort(port);
    EXPECT_EQ(port->getParent(), nullptr);
    EXPECT_EQ(window->getNPorts(), 0u);
    window->subPort(port);
    window->addPort(nullptr);
    EXPECT_EQ(window->getNPorts(), 0u);
}

TEST(Window, TakesAPortFromAnotherWindow)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr const first = make_window(10, 10, port);
    WindowPtr const second = make_window(20, 20, port);
    EXPECT_EQ(port->getParent(), second.get());
    EXPECT_EQ(first->getNPorts(), 0u);
    second->addPort(port);
    EXPECT_EQ(second->getNPorts(), 1u);
}

TEST(Window, LeavesItsPortsWithoutAParent)
{
    ViewportPtr const port(Viewport::create());
    make_window(10, 10, port);
    EXPECT_EQ(port->getParent(), nullptr);
}

TEST(Window, CopiesHaveTheSizeAndNoPorts)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr const window = make_window(10, 20, port);
    UnrecordedRefPtr<FieldContainer> const copy(window->shallowCopy());
    Window const &other = dynamic_cast<Window const &>(*copy);
    EXPECT_EQ(other.getHeight(), 20);
    EXPECT_EQ(other.getNPorts(), 0u);
    EXPECT_EQ(port->getParent(), window.get());
    UnrecordedRefPtr<FieldContainer> const portCopy(port->shallowCopy());
    EXPECT_EQ(dynamic_cast<Viewport const &>(*portCopy).getParent(), nullptr);
}

TEST(Window, UnlinksAPortByItsField)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr const window = make_window(10, 20, port);
    EXPECT_FALSE(window->unlinkChild(port, Window::WidthFieldId));
    EXPECT_TRUE(window->unlinkChild(port, Window::PortsFieldId));
    EXPECT_EQ(port->getParent(), nullptr);
}

TEST(WIN32Window, KeepsTheHandleOfTheDesktop)
{
    UnrecordedRefPtr<WIN32Window> const window(WIN32Window::create());
    EXPECT_EQ(window->getHwnd(), nullptr);
    int native = 0;
    window->setHwnd(&native);
    EXPECT_EQ(window->getHwnd(), &native);
    EXPECT_TRUE(WIN32Window::getClassType().isDerivedFrom(Window::getClassType()));
}
} // namespace
