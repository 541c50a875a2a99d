#include "OSGWatchedDesktop.h"

#include <utility>

namespace OSG
{
WatchedDesktop::WatchedDesktop(std::shared_ptr<Desktop> desktop)
    : _desktop(desktop != nullptr ? std::move(desktop) : Desktop::current())
{
}

WatchedDesktop::~WatchedDesktop() = default;

bool WatchedDesktop::isDown(Int16 code)
{
    bool const isDown = _desktop->isDown(code);
    return _watcher != nullptr ? _watcher->takeKey(code, isDown) : isDown;
}

bool WatchedDesktop::isFocused(NativeWindow window)
{
    bool const isFocused = _desktop->isFocused(window);
    return _watcher != nullptr ? _watcher->takeFocus(isFocused) : isFocused;
}

Int64 WatchedDesktop::getTicks()
{
    Int64 const ticks = _desktop->getTicks();
    return _watcher != nullptr ? _watcher->takeTicks(ticks) : ticks;
}
} // namespace OSG
