#include "OSGAbsentDesktop.h"

#include "OSGSteadyClock.h"

namespace OSG
{
AbsentDesktop::AbsentDesktop(char const *reason)
    : _reason(reason)
{
}

AbsentDesktop::~AbsentDesktop() = default;

bool AbsentDesktop::isDown(Int16) { return false; }

bool AbsentDesktop::isFocused(NativeWindow) { return false; }

NativeWindow AbsentDesktop::getCapture() { return nullptr; }

void AbsentDesktop::setCapture(NativeWindow) {}

void AbsentDesktop::releaseCapture() {}

Desktop::Point AbsentDesktop::getPointer() { return {}; }

void AbsentDesktop::setPointer(Point) {}

void AbsentDesktop::showPointer(bool) {}

Desktop::Size AbsentDesktop::getClientSize(NativeWindow) { return {}; }

Desktop::Point AbsentDesktop::toScreen(NativeWindow, Point client) { return client; }

Int64 AbsentDesktop::getTicksPerSecond() { return SteadyTicksPerSecond; }

Int64 AbsentDesktop::getTicks() { return steady_ticks(); }

std::shared_ptr<Desktop> make_wayland_desktop()
{
    return std::make_shared<AbsentDesktop>("Wayland: no key state, no pointer control");
}
} // namespace OSG
