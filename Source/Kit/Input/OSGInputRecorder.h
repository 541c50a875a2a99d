#pragma once

#include <set>

#include <boost/function.hpp>

#include "OSGEventAdapter.h"
#include "OSGInputRecording.h"
#include "OSGNavigator.h"
#include "OSGWatchedDesktop.h"

namespace OSG
{
/// Records the events that a navigator handles, from its construction to its destruction.
///
///     InputRecorder recorder(navigator, seconds);
///     ...                               // the host passes events to the navigator as usual
///     write_recording(file, recorder.getRecording());
///
/// The recording begins with the navigator's camera, pose and settings. A replay shall give the
/// same poses to the last bit. So the constructor sets the engine to the engine's own pose, which
/// may round it, and records the place of the pointer as a first event, a hover. Settings of the
/// engine other than its pose are not recorded. A replay uses an engine as `create` makes it.
///
/// With the desktop that the engine was made with, the recording also holds frames and what the
/// engine asked: keys, focus and time. The engine's clock then stands still between the begin of
/// one frame and that of the next, and it is told once that no key is down and handles a hover and
/// an idle event when the recording begins, so that it begins as the engine of a replay does.
///
/// Events hold pixels of the window. The viewport has to cover its window, because a replay shows
/// the view in a window of its own.
///
/// Settings of the navigator that change, and a walk that is silenced, are recorded before the next
/// event or frame. The host tells of poses that it sets itself by takePoseOfHost().
///
/// With the adapter of the navigator it also records which tool is in hand, and the left drags that
/// a tool has for itself, so that an InputReplay gives the same clicks, bands and lassos. Tools
/// are told whole pixels there.
///
/// The recorder is the navigator's observer, the desktop's watcher and the adapter's observer until
/// it is destroyed or another one is set.
class OSG_TOLVANITEKIT_API InputRecorder : public NavigatorObserver,
                                           public ToolObserver,
                                           private WatchedDesktop::Watcher
{
  public:
    /// Gives the seconds since a fixed moment. They must not decrease.
    using Clock = boost::function<Real64()>;

    /// The navigator must have an engine and a viewport with a perspective or an orthographic
    /// camera. It must live longer than the recorder, and so must the adapter.
    InputRecorder(Navigator &navigator, Clock clock,
                  std::shared_ptr<WatchedDesktop> desktop = nullptr,
                  EventAdapter *adapter = nullptr);
    InputRecorder(InputRecorder const &) = delete;
    InputRecorder &operator=(InputRecorder const &) = delete;
    ~InputRecorder() override;

    /// To be called when the host has given the engine another pose: by a standard view, a mark, a
    /// history. Gives the engine this pose once more, as at the begin.
    void takePoseOfHost();

    void observe(NavigatorEvent const &event) override;
    void observeFrame() override;
    void observeTool(ToolEvent const &event) override;

    InputRecording const &getRecording() const { return _recording; }

  private:
    bool takeKey(Int16 code, bool isDown) override;
    bool takeFocus(bool isFocused) override;
    Int64 takeTicks(Int64 ticks) override;

    void takeCamera();
    void takePose();
    void beginWithDesktop();
    void handleFirst(NavigatorEvent::Kind kind, Int16 code);
    /// What a host may change between two events.
    struct Settings
    {
        Real32 motionFactor;
        Real32 rotationAngle;
        bool clickCenter;
        bool noIntersect;
        bool isSilent; // a walk
    };
    Settings settings() const;
    void takeSettings();
    void takeNumber(InputRecording::What what, Real32 before, Real32 now);
    void takeTruth(InputRecording::What what, bool before, bool now);
    InputRecording::Viewpoint roundPose();
    void beginWithTools();
    void add(NavigatorEvent const &event);
    void add(InputRecording::What what, Int16 code = 0);
    void takeTool(PointerTool const *tool);
    void takeDrag(ToolEvent const &event);
    void insertChange(InputRecording::TimedEvent const &change);

    Navigator &_navigator;
    Clock _clock;
    Real64 _begin;
    InputRecording _recording;
    std::shared_ptr<WatchedDesktop> _desktop;
    EventAdapter *_adapter;
    Settings _settings; // as they were recorded
    bool _isToolDown = false;
    UInt16 _held = 0; // the modifiers of the last line that tells them
    std::set<Int16> _keysDown;
    bool _hasFocus = true;
    bool _isBeginning = false; // the engine is told that it has the focus and no key is down
    Int64 _beginTicks = 0;
    Int64 _frameTicks = 0; // since the begin
};
} // namespace OSG
