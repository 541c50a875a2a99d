#include "OSGRestingClock.h"

#include <utility>

namespace OSG
{
RestingClock::RestingClock(std::shared_ptr<WatchedDesktop> desktop)
    : _desktop(std::move(desktop))
{
    _desktop->setWatcher(this);
}

RestingClock::~RestingClock()
{
    if(_desktop->getWatcher() == this)
        _desktop->setWatcher(nullptr);
}

void RestingClock::rest()
{
    if(!_isResting)
        _restBegin = _desktop->getTrueDesktop().getTicks();
    _isResting = true;
}

void RestingClock::wake()
{
    if(_isResting)
        _rested += _desktop->getTrueDesktop().getTicks() - _restBegin;
    _isResting = false;
}

bool RestingClock::takeKey(Int16, bool isDown) { return isDown; }

bool RestingClock::takeFocus(bool isFocused) { return isFocused; }

Int64 RestingClock::takeTicks(Int64 ticks) { return (_isResting ? _restBegin : ticks) - _rested; }
} // namespace OSG
