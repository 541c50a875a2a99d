#include "OSGNavigatorEngine.h"

#include "OSGNavigatorEvent.h"

namespace OSG
{
namespace
{
/// Sets a flag for the length of a scope and then restores its old value.
class ScopedFlag
{
  public:
    explicit ScopedFlag(bool &flag)
        : _flag(flag)
        , _before(flag)
    {
        flag = true;
    }
    ScopedFlag(ScopedFlag const &) = delete;
    ScopedFlag &operator=(ScopedFlag const &) = delete;
    ~ScopedFlag() { _flag = _before; }

  private:
    bool &_flag;
    bool _before;
};
} // namespace

NavigatorEngine::~NavigatorEngine() = default;

void NavigatorEngine::onViewportChanged(Navigator *) {}
void NavigatorEngine::onActivation(Navigator *) {}
void NavigatorEngine::onUpdateCameraTransformation(Navigator *) {}

// The base versions of the two key operations call each other, so that a class may override either
// of them. The flags end the circle where a class overrides neither.

void NavigatorEngine::keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator)
{
    if(_inKeyPressEx)
        return;
    ScopedFlag const called(_inKeyPress);
    keyPressEx(key, 0, x, y, navigator);
}

void NavigatorEngine::keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y,
                                 Navigator *navigator)
{
    if(_inKeyPress || (modifiers & NavigatorEvent::KeyUp) != 0)
        return;
    ScopedFlag const called(_inKeyPressEx);
    keyPress(key, x, y, navigator);
}

void NavigatorEngine::mouseMove(Int16, Int16, Navigator *) {}
void NavigatorEngine::killFocus(Navigator *) {}
} // namespace OSG
