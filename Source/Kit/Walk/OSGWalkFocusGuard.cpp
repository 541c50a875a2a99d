#include "OSGWalkFocusGuard.h"

#include <algorithm>
#include <utility>

#include "OSGWIN32Window.h"

namespace OSG
{
WalkFocusGuard::WalkFocusGuard(Navigator &navigator, WASDWalkEngine &engine,
                               std::shared_ptr<Desktop> desktop)
    : _navigator(navigator)
    , _engine(engine)
    , _desktop(std::move(desktop))
{
}

void WalkFocusGuard::beforeFrame()
{
    bool const isReady = isFocused() && !_isInputTaken;
    if(_isInputTaken || (isReady && !_wasReady))
    {
        _isWaiting = true;
        _engine.setSilent(true);
    }
    _wasReady = isReady;
    if(!_isWaiting || !isReady || isAnyKeyDown())
        return;
    _isWaiting = false;
    _engine.setSilent(false);
    // With all keys up this frame moves nothing, and the next step counts from here.
    _engine.onUpdateCameraTransformation(&_navigator);
}

bool WalkFocusGuard::isFocused() const
{
    Viewport const *const view = _navigator.getViewport();
    auto const *const window =
        view != nullptr ? dynamic_cast<WIN32Window const *>(view->getParent()) : nullptr;
    return window != nullptr && _desktop->isFocused(window->getHwnd());
}

bool WalkFocusGuard::isAnyKeyDown() const
{
    auto const isDown = [this](auto const &entry) { return _desktop->isDown(entry.first); };
    WalkKeys::KeyMap const motion = WalkKeys::motion_keys();
    WalkKeys::KeyMap const options = WalkKeys::option_keys();
    return std::any_of(motion.begin(), motion.end(), isDown) ||
           std::any_of(options.begin(), options.end(), isDown);
}
} // namespace OSG
