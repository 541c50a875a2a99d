#include "OSGWindow.h"

#include <optional>

#include <gtest/gtest.h>

#include "CameraBuilders.h"
#include "OSGAspectLink.h"
#include "OSGChangeList.h"
#include "OSGThread.h"
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

// --- in another aspect ---

/// A link of this thread, which is on the other aspect whenever the link works.
class OtherAspect
{
  public:
    OtherAspect()
    {
        commit();
        Thread::setCurrentAspect(Aspect);
        _link.emplace(Thread::getCurrentChangeList(), 0u);
        Thread::setCurrentAspect(0);
    }
    ~OtherAspect()
    {
        Thread::setCurrentAspect(Aspect);
        _link.reset();
        Thread::setCurrentAspect(0);
    }

    void receive()
    {
        commit();
        Thread::setCurrentAspect(Aspect);
        _link->receive();
        Thread::setCurrentAspect(0);
    }
    template <class T>
    T *copyOf(T *container) const
    {
        return dynamic_cast<T *>(container->getAspectStore()->getPtr(Aspect));
    }

  private:
    static void commit() { Thread::getCurrentChangeList()->commitChanges(); }

    static constexpr UInt32 Aspect = 1;
    std::optional<AspectLink> _link;
};

TEST(Window, CopiesOfAnotherAspectAreTheParentsOfTheirPorts)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr const window = make_window(640, 480, port);
    OtherAspect other;
    Window *const copy = other.copyOf(window.get());
    ASSERT_EQ(copy->getNPorts(), 1u);
    EXPECT_EQ(copy->getPort(0), other.copyOf(port.get()));
    EXPECT_EQ(copy->getPort(0)->getParent(), copy);
    EXPECT_EQ(copy->getPort(0)->calcPixelWidth(), 640);
    EXPECT_EQ(copy->getPort(0)->calcPixelHeight(), 480);
    EXPECT_EQ(port->getParent(), window.get());
}

TEST(Window, PortsThatComeAndGoAreReceived)
{
    ViewportPtr const first(Viewport::create());
    ViewportPtr const second(Viewport::create());
    WindowPtr const window = make_window(640, 480, first);
    OtherAspect other;
    window->addPort(second);
    window->subPort(first);
    other.receive();
    Window *const copy = other.copyOf(window.get());
    ASSERT_EQ(copy->getNPorts(), 1u);
    EXPECT_EQ(copy->getPort(0), other.copyOf(second.get()));
    EXPECT_EQ(other.copyOf(second.get())->getParent(), copy);
    EXPECT_EQ(other.copyOf(first.get())->getParent(), nullptr);
    EXPECT_EQ(other.copyOf(second.get())->getRefCount(), 2);
}

TEST(Window, APortThatMovesHasOneParentInTheOtherAspect)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr const left = make_window(640, 480, port);
    WindowPtr const right = make_window(320, 240, nullptr);
    OtherAspect other;
    // The new parent's change stands before the old one's in one of the rounds.
    for(Window *to : {right.get(), left.get()})
    {
        right->setWidth(right->getWidth() + 1);
        left->setWidth(left->getWidth() + 1);
        to->addPort(port);
        other.receive();
        EXPECT_EQ(other.copyOf(port.get())->getParent(), other.copyOf(to));
        EXPECT_EQ(other.copyOf(right.get())->getNPorts(), right->getNPorts());
        EXPECT_EQ(other.copyOf(left.get())->getNPorts(), left->getNPorts());
    }
}

TEST(Window, ACopyEndsWithItsSourceAndLeavesItsPorts)
{
    ViewportPtr const port(Viewport::create());
    WindowPtr window = make_window(640, 480, port);
    OtherAspect other;
    window = nullptr;
    other.receive();
    EXPECT_EQ(other.copyOf(port.get())->getParent(), nullptr);
}

TEST(WIN32Window, SynchronisesItsPortsLikeAnyWindow)
{
    ViewportPtr const port(Viewport::create());
    UnrecordedRefPtr<WIN32Window> const window(WIN32Window::create());
    window->addPort(port);
    OtherAspect other;
    EXPECT_EQ(other.copyOf(port.get())->getParent(), other.copyOf(window.get()));
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
