#pragma once

#include <memory>

#include "OSGDesktop.h"
#include "OSGNavigator.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGWASDWalkEngine.h"

namespace OSG
{
/// Keeps a walk still while somebody else has the keys, and when its window gets the focus back,
/// until the user has let go of all keys and buttons.
///
/// Without it the first step counts all the time that the window was without the focus: the click
/// that brings the focus back walks forwards by as much. The guard calls setSilent() of the engine,
/// which then belongs to it.
class OSG_TOLVANITEKIT_API WalkFocusGuard
{
  public:
    /// Keeps references to the first two, which have to outlive it. `desktop` is the one that was
    /// current when the engine was made.
    WalkFocusGuard(Navigator &navigator, WASDWalkEngine &engine, std::shared_ptr<Desktop> desktop);

    /// To be called once per frame, before Navigator::updateCameraTransformation.
    void beforeFrame();
    /// Says whether somebody else has the keys or the buttons: a panel that is typed into, a tool
    /// with a drag. A walk asks the desktop for keys, so that it would hear of them all the same.
    /// False at first.
    void setInputTaken(bool isTaken) { _isInputTaken = isTaken; }
    /// Whether the engine is silent until the keys are up.
    bool isWaiting() const { return _isWaiting; }

  private:
    bool isFocused() const;
    bool isAnyKeyDown() const;

    Navigator &_navigator;
    WASDWalkEngine &_engine;
    std::shared_ptr<Desktop> _desktop;
    bool _isInputTaken = false;
    bool _wasReady = false;
    bool _isWaiting = false;
};
} // namespace OSG
