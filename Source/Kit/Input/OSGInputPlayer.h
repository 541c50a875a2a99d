#pragma once

#include "OSGInputRecording.h"
#include "OSGNavigator.h"
#include "OSGWindow.h"

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
/// The same recording, scene, engine and size give the same poses to the last bit. The times of the
/// events are not used.
class OSG_TOLVANITEKIT_API InputPlayer
{
  public:
    /// Keeps a reference to the engine and gives it the recording's pose. The engine should come
    /// straight from its `create`. Keeps a reference to the scene and updates its volumes. Keeps no
    /// copy of the recording, which has to live as long as the player.
    InputPlayer(InputRecording const &recording, NavigatorEngine *engine, Node *scene, UInt16 width,
                UInt16 height);
    InputPlayer(InputPlayer const &) = delete;
    InputPlayer &operator=(InputPlayer const &) = delete;
    ~InputPlayer();

    /// Handles the next event. After the last one it does nothing and returns false.
    bool step();
    /// Number of events handled so far.
    std::size_t getPosition() const { return _position; }

    CameraPose getPose() { return pose_of(*_navigator.getEngine()); }
    Navigator &getNavigator() { return _navigator; }
    Camera &getCamera() { return *_viewport->getCamera(); }

  private:
    InputRecording const &_recording;
    std::size_t _position = 0;
    UnrecordedRefPtr<Node> _beacon;
    UnrecordedRefPtr<Viewport> _viewport;
    UnrecordedRefPtr<Window> _window; // has a size, but is no window of the desktop
    Navigator _navigator;
};
} // namespace OSG
