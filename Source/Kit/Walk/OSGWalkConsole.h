#pragma once

#include <string>
#include <utility>
#include <vector>

#include <boost/function.hpp>

#include "OSGNavigator.h"
#include "OSGPathPlot.h"
#include "OSGTickClock.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGWalkConsoleAttachment.h"

namespace OSG
{
/// The store of marks, way and home of a scene's root; null where there is none.
OSG_TOLVANITEKIT_API WalkConsoleAttachment *walk_console_of(Node const *root);

/// What a host does with the marks, the recorded way and the home of a scene: it reads the pose of
/// the navigator's engine and sets it. The data are in the WalkConsoleAttachment of the scene's
/// root, so that they are saved with the scene.
///
///     WalkConsole console(navigator);
///     console.setScene(scene);
///     console.addMark("entrance");
///     ...
///     console.update(seconds); // once per frame
///     adapter.frame();
///
/// A scene without the attachment gets one when the first thing is stored. Opening a scene edits
/// nothing. What is stored is an edit that the host commits, and so is each step of the two
/// cursors.
///
/// Without a scene or an engine the operations do nothing and return false. A stored viewpoint that
/// shows nothing (a number that is not finite, or `up` parallel to the view) is not gone to; a
/// warning says so. The camera follows the engine at the next
/// Navigator::updateCameraTransformation().
class OSG_TOLVANITEKIT_API WalkConsole
{
  public:
    /// Keeps a reference to the navigator, which has to outlive the console.
    explicit WalkConsole(Navigator &navigator);
    ~WalkConsole();
    WalkConsole(WalkConsole const &) = delete;
    WalkConsole &operator=(WalkConsole const &) = delete;

    /// Ends recording and playing where it is another scene. Keeps a reference; null for none.
    void setScene(Node *root);
    Node *getScene() const { return _scene; }
    /// Called when the console has given the engine a pose, for a recorder
    /// (InputRecorder::takePoseOfHost).
    void setMoved(boost::function<void()> moved) { _moved = std::move(moved); }
    /// Null where nothing is stored yet.
    WalkConsoleAttachment *getAttachment() const;

    // --- marks ---
    /// Appends a mark where the engine stands; it is the current one then. Where the last mark
    /// stands there already, nothing changes. Raises std::bad_alloc; nothing was added then.
    bool addMark(std::string const &label);
    bool goToFirstMark();
    bool goToLastMark();
    /// From the current mark; without one there is no next and no previous mark.
    bool goToNextMark();
    bool goToPreviousMark();
    /// False for an index that no mark has.
    bool goToMark(UInt32 index);
    /// Removes the current mark. The next one, or else the last one, is current then. The engine
    /// stays.
    bool removeMark();
    /// False where there is no mark.
    bool clearMarks();
    /// In their order, for a list in a panel.
    std::vector<std::string> getMarkLabels() const;
    /// Of the current mark; -1 where there is none.
    Int32 getMarkIndex() const;

    // --- the recorded way ---
    /// Records where the engine stands: now, and then in each tick of update(). The ticks are
    /// appended to those of earlier recordings. Ends playing. Raises std::bad_alloc; nothing is
    /// recorded then.
    bool startRecording();
    void stopRecording();
    bool isRecording() const { return _activity == Activity::Recording; }
    /// Ends recording and playing. False where nothing is recorded.
    bool clearRecording();
    /// Goes to the first tick, and on in update(). Ends recording. False where nothing is recorded.
    bool startPlaying();
    void stopPlaying();
    bool isPlaying() const { return _activity == Activity::Playing; }
    /// To be called once per frame with the seconds since a fixed moment. The ticks that are due
    /// are recorded, or are gone through, of which the engine is given the last one. At the end
    /// of the way playing ends. After a long pause a second's ticks are due at most; see TickClock.
    void update(Real64 seconds);
    /// The viewpoints of the recording in their order. Ticks in which the engine stood still are
    /// one point.
    std::vector<PathPoint> getWay() const;
    /// In milliseconds, WalkConsoleAttachment::getTickTime(). 0 stands for a tick in each frame.
    UInt32 getTickTime() const;
    bool setTickTime(UInt32 milliseconds);

    // --- home ---
    /// The direction upwards of the scene, (0, 1, 0) at first.
    void setUpward(Vec3f const &upward) { _upward = upward; }
    bool setHome();
    /// A home has no `up`. The engine is given the direction upwards of the scene, or, where home
    /// looks along that, its own `up`, or else some direction that gives a view.
    bool goHome();
    bool hasHome() const;

  private:
    enum class Activity : UInt8
    {
        None,
        Recording,
        Playing
    };
    struct Viewpoint
    {
        Pnt3f from;
        Pnt3f at;
        Vec3f up;
    };
    using MarkStep = bool (WalkConsoleAttachment::*)(Pnt3f &, Pnt3f &, Vec3f &, std::string &);

    bool goBy(MarkStep step);
    bool goTo(Viewpoint const &viewpoint);
    bool canStore() const;
    template <class StoreFunction>
    void storeBy(StoreFunction const &storeIn);
    void recordTick();
    void playTicks(UInt32 ticks);

    Navigator &_navigator;
    UnrecordedRefPtr<Node> _scene;
    Activity _activity = Activity::None;
    TickClock _clock;
    Vec3f _upward{0, 1, 0};
    boost::function<void()> _moved;
};
} // namespace OSG
