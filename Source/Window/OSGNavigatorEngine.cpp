#include "OSGNavigatorEngine.h"

namespace OSG
{
NavigatorEngine::~NavigatorEngine() = default;

void NavigatorEngine::onViewportChanged(Navigator *) {}
void NavigatorEngine::onActivation(Navigator *) {}
void NavigatorEngine::onUpdateCameraTransformation(Navigator *) {}

void NavigatorEngine::keyPressEx(Int16 key, UInt16, Int16 x, Int16 y, Navigator *navigator)
{
    keyPress(key, x, y, navigator);
}

void NavigatorEngine::mouseMove(Int16, Int16, Navigator *) {}
void NavigatorEngine::killFocus(Navigator *) {}
} // namespace OSG
