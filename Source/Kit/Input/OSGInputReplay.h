#pragma once

#include <memory>
#include <optional>

#include <boost/function.hpp>

#include "OSGInputRecording.h"
#include "OSGNavigator.h"
#include "OSGPointerTool.h"
#include "OSGScriptedDesktop.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGWindowView.h"

namespace OSG
{
/// Plays a recording in a view of the host, on its navigator and with its tools. An InputPlayer
/// plays in a view of its own.
///
///     view.setEngine(make_engine("cad")); // a new one
///     view.setView(view_of(recording, width, height));
///     InputReplay replay(recording, view.getNavigator(), {takeTool});
///     // once per frame, at the pace of the recording
///     while(replay.nextSeconds() && *replay.nextSeconds() <= seconds)
///         replay.step();
///
/// The poses have the bits of the recorded session where the engine is as its `create` makes it and
/// the camera, the scene and the size of the window are those of the session. The engine hears of
/// nothing else meanwhile: an EventAdapter of the navigator is told that the pointer and the
/// keyboard are taken, and is not asked for frames.
class OSG_TOLVANITEKIT_API InputReplay
{
  public:
    /// The tool of that name, which the host takes in hand: "navigate", "pick", "band", "lasso",
    /// "measure", the name of a tool of its own, or "none". Null where there is none; the drags
    /// that a tool has for itself are then passed over.
    using TakeTool = boost::function<std::shared_ptr<PointerTool>(std::string const &name)>;
    struct Host
    {
        TakeTool takeTool = {};
        /// In hand until the recording names another one. In a recording without tools it has the
        /// left drags: a press and a release at one place are a click of a NavigateTool and of a
        /// PickTool.
        std::shared_ptr<PointerTool> tool = nullptr;
        /// For engines that ask it: the desktop that was current when the engine was made, and the
        /// window whose focus the recording tells of.
        std::shared_ptr<ScriptedDesktop> desktop = nullptr;
        NativeWindow window = nullptr;
    };

    /// Gives the navigator the settings of the recording, and its engine the pose. Keeps references
    /// to the recording and to the navigator, which have to outlive the replay.
    InputReplay(InputRecording const &recording, Navigator &navigator, Host host);
    InputReplay(InputRecording const &recording, Navigator &navigator);
    ~InputReplay();
    InputReplay(InputReplay const &) = delete;
    InputReplay &operator=(InputReplay const &) = delete;

    /// Plays the next line. After the last one it does nothing and returns false.
    bool step();
    /// Number of lines played so far.
    std::size_t getPosition() const { return _position; }
    bool isAtEnd() const { return _position >= _recording.events.size(); }
    /// When the next line is due, counted from the begin of the recording. No value at the end.
    std::optional<Real64> nextSeconds() const;

  private:
    void play(InputRecording::TimedEvent const &line);
    void playChange(InputRecording::TimedEvent const &line);
    void playEvent(NavigatorEvent const &event);
    void playToolDrag(PointerTool &tool, NavigatorEvent const &event);
    void cancelTool();

    InputRecording const &_recording;
    Navigator &_navigator;
    Host _host;
    std::size_t _position = 0;
    bool _ownsDrag;           // the navigator does not hear of left drags
    bool _isToolDown = false; // a left drag is under way
    UInt16 _modifiers = 0;
};

/// Gives the engine of a navigator a pose, and the camera at once, without a frame. Nothing happens
/// without an engine.
OSG_TOLVANITEKIT_API void set_pose(Navigator &navigator, Pnt3f const &from, Pnt3f const &at,
                                   Vec3f const &up);
/// The view in which a recording begins, in a window of the host's size.
OSG_TOLVANITEKIT_API WindowView view_of(InputRecording const &recording, UInt32 width,
                                        UInt32 height);
} // namespace OSG
