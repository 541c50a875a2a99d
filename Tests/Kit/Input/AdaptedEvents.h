#pragma once

/// \file
/// An event adapter, a navigator, and what they hear.

#include <limits>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "NavigatedView.h"
#include "OSGEventAdapter.h"

namespace OSG
{
inline void PrintTo(NavigatorEvent const &event, std::ostream *out)
{
    *out << "kind " << int(event.kind) << " code " << event.code << " at " << event.x << ", "
         << event.y;
}

namespace Test
{
inline constexpr Int16 Left = NavigatorEvent::LeftButton;
inline constexpr Int16 Middle = NavigatorEvent::MiddleButton;
inline constexpr Int16 Right = NavigatorEvent::RightButton;
inline constexpr Real64 Nan = std::numeric_limits<Real64>::quiet_NaN();

/// Keeps what a navigator hears.
struct Heard : NavigatorObserver
{
    void observe(NavigatorEvent const &event) override { events.push_back(event); }
    void observeFrame() override { ++frames; }
    std::vector<NavigatorEvent> take() { return std::exchange(events, {}); }
    std::vector<NavigatorEvent> events;
    int frames = 0;
};

inline NavigatorEvent press(Int16 button, Int16 x, Int16 y)
{
    return {NavigatorEvent::ButtonPress, button, 0, x, y};
}
inline NavigatorEvent release(Int16 button, Int16 x, Int16 y)
{
    return {NavigatorEvent::ButtonRelease, button, 0, x, y};
}
inline NavigatorEvent move(Int16 x, Int16 y) { return {NavigatorEvent::Move, 0, 0, x, y}; }
inline NavigatorEvent hover(Int16 x, Int16 y) { return {NavigatorEvent::Hover, 0, 0, x, y}; }
inline NavigatorEvent idle(Int16 button, Int16 x, Int16 y)
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
} // namespace Test
} // namespace OSG
