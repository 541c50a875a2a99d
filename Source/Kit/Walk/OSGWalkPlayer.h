#pragma once

#include <memory>

#include "OSGNavigator.h"
#include "OSGScriptedDesktop.h"
#include "OSGWASDWalkEngine.h"
#include "OSGWIN32Window.h"
#include "OSGWalkEvent.h"
#include "OSGWalkScript.h"

namespace OSG
{
/// The pose at the end of a frame.
struct WalkPose
{
    Int64 milliseconds = 0;
    Pnt3f from;
    Pnt3f at;
    Vec3f up;
    bool isBlocked = false; ///< a key that steps was down, and the eye has not moved
};

/// Walks through a scene by a script, with a clock and keys of its own and without a window of the
/// desktop. The view has 800 by 600 pixels and the focus, and the pointer rests in its left top
/// corner.
///
///     WalkPlayer player;
///     player.getEngine().height(1.6f);
///     player.begin(scene, from, at, up);
///     player.play({{'W'}, 2000});
///     use(player.getPoses(), player.getEvents());
///
/// The same script, scene and settings give the same poses to the last bit.
class OSG_TOLVANITEKIT_API WalkPlayer : private WalkObserver
{
  public:
    static constexpr UInt16 Width = 800;
    static constexpr UInt16 Height = 600;

    WalkPlayer();
    WalkPlayer(WalkPlayer const &) = delete;
    WalkPlayer &operator=(WalkPlayer const &) = delete;
    ~WalkPlayer() override;

    // --- settings; before begin() ---
    WASDWalkEngine &getEngine() { return *_engine; }
    Navigator &getNavigator() { return _navigator; }
    /// The time between two frames, from 1 on; 16 at first.
    void setFrameMilliseconds(UInt32 milliseconds) { _frameMilliseconds = milliseconds; }

    /// Puts the person into the scene, at time 0, as high as `from` is. Keeps a reference to the
    /// scene and updates its volumes. To be called once.
    void begin(Node *scene, Pnt3f const &from, Pnt3f const &at, Vec3f const &up);
    /// Holds the keys of a line for its time, rounded up to whole frames. Space is pressed once, at
    /// the begin.
    void play(WalkScriptLine const &line);

    // --- what has happened since begin() ---
    std::vector<WalkPose> const &getPoses() const { return _poses; }
    /// In order of time, within a frame in the order of the key codes.
    std::vector<WalkEvent> const &getEvents() const { return _events; }
    /// Box and line queries.
    UInt64 getQueries() const { return _queries; }

  private:
    void observe(WalkStep const &step) override;
    void playFrame(bool steps);

    std::shared_ptr<ScriptedDesktop> _desktop;
    UnrecordedRefPtr<WASDWalkEngine> _engine;
    UnrecordedRefPtr<Viewport> _viewport;
    UnrecordedRefPtr<WIN32Window> _window;
    Navigator _navigator;
    UInt32 _frameMilliseconds = 16;
    Int64 _milliseconds = 0;
    std::vector<WalkPose> _poses;
    std::vector<WalkEvent> _events;
    UInt64 _queries = 0;
};
} // namespace OSG
