#pragma once

#include "OSGInputReplay.h"
#include "OSGWIN32Window.h"

namespace OSG
{
/// The pose of an engine, see NavigatorEngine.
struct CameraPose
{
    Pnt3f from;
    Pnt3f at;
    Vec3f up;
    Real32 distance; ///< NavigatorEngine::getDistance

    friend bool operator==(CameraPose const &, CameraPose const &) = default;
};
/// Reads the pose after the engine has brought it up to date.
OSG_TOLVANITEKIT_API CameraPose pose_of(NavigatorEngine &engine);

/// Plays a recording without a window of the desktop. The player has its own viewport, window and
/// camera. The viewport covers the window; the camera is the one that the recording describes.
///
/// The same recording, scene, engine and size give the same poses to the last bit. The seconds of
/// the events are not used. The player has no tools: the drags that a tool had for itself leave the
/// camera where it is. An engine that asks the desktop is made while a scripted one is
/// current, and the player plays keys, focus and frames on that:
///
///     auto const desktop = std::make_shared<ScriptedDesktop>(recording.ticksPerSecond.value_or(1000));
///     Desktop::setCurrent(desktop);
///     InputPlayer player(recording, WASDWalkEngine::create(), scene, 640, 480, desktop);
class OSG_TOLVANITEKIT_API InputPlayer
{
  public:
    /// Keeps a reference to the engine and gives it the recording's pose. The engine should come
    /// straight from its `create`. Keeps a reference to the scene and updates its volumes. Keeps no
    /// copy of the recording, which has to live as long as the player. The window has the focus of
    /// `desktop`, whose keys are up and whose clock stands at 0; null stands for no desktop.
    InputPlayer(InputRecording const &recording, NavigatorEngine *engine, Node *scene, UInt16 width,
                UInt16 height, std::shared_ptr<ScriptedDesktop> desktop = nullptr);
    InputPlayer(InputPlayer const &) = delete;
    InputPlayer &operator=(InputPlayer const &) = delete;
    ~InputPlayer();

    /// Handles the next event, or what else the next line holds. After the last one it does nothing
    /// and returns false.
    bool step() { return _replay->step(); }
    /// Number of events handled so far.
    std::size_t getPosition() const { return _replay->getPosition(); }

    CameraPose getPose() { return pose_of(*_navigator.getEngine()); }
    Navigator &getNavigator() { return _navigator; }
    Camera &getCamera() { return *_viewport->getCamera(); }
    /// As the scripted desktop knows it; null without one.
    NativeWindow getWindow() const { return _window->getHwnd(); }

  private:
    UnrecordedRefPtr<Node> _beacon;
    UnrecordedRefPtr<Viewport> _viewport;
    UnrecordedRefPtr<WIN32Window> _window; // known to the scripted desktop alone
    Navigator _navigator;
    std::optional<InputReplay> _replay; // begins when the navigator has its engine
};
} // namespace OSG
