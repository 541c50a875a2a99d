#pragma once

#include "OSGInputRecording.h"
#include "OSGNavigator.h"
#include "OSGWindow.h"

namespace OSG
{
/// Where a camera stands, as an engine tells it.
struct CameraPose
{
    Pnt3f from;
    Pnt3f at;
    Vec3f up;
    Real32 distance; ///< NavigatorEngine::getDistance

    friend bool operator==(CameraPose const &, CameraPose const &) = default;
};
/// The engine's pose, brought up to date.
OSG_TOLVANITEKIT_API CameraPose pose_of(NavigatorEngine &engine);

/// Plays a recording without a window: in a viewport of so many pixels that shows a scene through a
/// camera as the recording has it. The same recording, scene, engine and size give the same poses
/// to the last bit; the times of the events play no part.
class OSG_TOLVANITEKIT_API InputPlayer
{
  public:
    /// The engine is counted and takes the recording's pose; it should be fresh. The scene is
    /// counted, its volumes are brought up to date. The recording outlives the player.
    InputPlayer(InputRecording const &recording, NavigatorEngine *engine, Node *scene, UInt16 width,
                UInt16 height);
    InputPlayer(InputPlayer const &) = delete;
    InputPlayer &operator=(InputPlayer const &) = delete;
    ~InputPlayer();

    /// Has the navigator handle the next event. False, and nothing done, behind the last one.
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
    UnrecordedRefPtr<Window> _window; // of pixels alone
    Navigator _navigator;
};
} // namespace OSG
