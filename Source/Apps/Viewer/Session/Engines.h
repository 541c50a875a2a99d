#pragma once

#include <memory>
#include <string>

#include "OSGDesktop.h"
#include "OSGEventAdapter.h"
#include "OSGRestingClock.h"
#include "OSGSceneView.h"
#include "OSGScriptedDesktop.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"
#include "OSGWalkFocusGuard.h"

namespace Viewer
{
/// The engine that moves the camera, and what a walk needs of the window.
class Engines
{
  public:
    /// Keeps references to both, which have to outlive it. No engine moves the camera yet.
    Engines(OSG::SceneView &view, OSG::EventAdapter &events);
    ~Engines();
    Engines(Engines const &) = delete;
    Engines &operator=(Engines const &) = delete;

    /// The desktop that walks ask, and the window as it knows it. Null for none: no walk then. Set
    /// once.
    void setDesktop(std::shared_ptr<OSG::Desktop> desktop, OSG::NativeWindow window);
    /// For a recorder; null for none.
    std::shared_ptr<OSG::WatchedDesktop> const &getDesktop() const { return _desktop; }
    OSG::NativeWindow getWindow() const { return _window->getHwnd(); }
    /// While the host sleeps, the clock of a walk stands still.
    void rest();
    void wake();
    /// Why there is no walk, as half a sentence; empty where there is one.
    std::string walkMissing() const;

    /// cad, fly, copter or walk. False for another name and for a walk that is not there.
    bool choose(std::string const &name);
    std::string const &getName() const { return _name; }
    bool isWalk() const { return _walk != nullptr; }
    /// Whether a walk stands still until all keys are up.
    bool isWaiting() const { return _guard != nullptr && _guard->isWaiting(); }
    /// The person; null for another engine.
    OSG::WASDWalkEngine *getWalk() const { return _walk; }

    /// A new engine of the same kind that asks a scripted desktop, with the clock of a recording,
    /// until endReplay().
    std::shared_ptr<OSG::ScriptedDesktop>
    beginReplay(std::optional<OSG::Int64> const &ticksPerSecond);
    void endReplay();

    /// The step of the engines, by the extent of the scene.
    void fitStep();
    void setSize(OSG::UInt16 width, OSG::UInt16 height) { _window->setSize(width, height); }

  private:
    bool make(std::string const &name); // false for another name

    OSG::SceneView &_view;
    OSG::EventAdapter &_events;
    std::shared_ptr<OSG::WatchedDesktop> _resting; // its clock stands still while the host sleeps
    std::shared_ptr<OSG::WatchedDesktop> _desktop;
    std::unique_ptr<OSG::RestingClock> _clock;
    OSG::UnrecordedRefPtr<OSG::WIN32Window> _window;
    std::unique_ptr<OSG::WalkFocusGuard> _guard;
    OSG::UnrecordedRefPtr<OSG::WASDWalkEngine> _walk;
    std::string _name;
};
} // namespace Viewer
