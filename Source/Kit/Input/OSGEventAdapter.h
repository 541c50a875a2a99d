#pragma once

#include <memory>

#include <boost/function.hpp>

#include "OSGNavigator.h"
#include "OSGTolvaniteKitApi.h"
#include "OSGToolObserver.h"
#include "OSGWheelSteps.h"

namespace OSG
{
class WalkFocusGuard;

/// Between the events of a toolkit's window and a navigator.
///
///     EventAdapter adapter(navigator);
///     adapter.setContentScale(window.devicePixelRatio());
///     adapter.setTool(std::make_shared<BandTool>(onBand));
///     ...
///     adapter.pointerMove(event.x, event.y);      // as the events come
///     adapter.buttonPress(NavigatorEvent::LeftButton, event.x, event.y);
///     ...
///     adapter.frame();                            // once per frame, before drawing
///
/// Who hears what:
///
/// - The tool owns the left drag. While it has one, the navigator hears neither buttons nor motion,
///   the wheel or idle events. Without a tool, and with one that shares (NavigateTool), the left
///   button is the navigator's as the others are.
/// - Within a frame the engine hears of one motion at most, the newest, or of one idle event, never
///   of both. Toolkits deliver positions late, and those from before an engine has put the pointer
///   elsewhere would turn the view.
/// - After a frame with a motion the next one brings an idle event, however the pointer moves,
///   because some engines look around or fly in idle events. In a drag each frame brings the
///   motion; see setIdlesInDrags().
/// - While a panel has the pointer, presses, wheel and motion are the panel's. A drag that began in
///   the view goes on to its end. While a panel has the keyboard, keys are the panel's.
///
/// Positions are in the toolkit's units, from the left top corner of the window, y downwards. The
/// navigator gets whole device pixels, as near as 16 bits can hold them. An event with a position
/// that is NaN or infinite is dropped, but for a release, which counts where the pointer was last.
/// All calls come from the thread of the window.
class OSG_TOLVANITEKIT_API EventAdapter
{
  public:
    /// Keeps a reference to the navigator, which has to outlive the adapter.
    explicit EventAdapter(Navigator &navigator);
    ~EventAdapter();
    EventAdapter(EventAdapter const &) = delete;
    EventAdapter &operator=(EventAdapter const &) = delete;

    // --- settings ---
    /// Device pixels per unit of the toolkit: 1 for events in device pixels. 1 at first. One that
    /// is not above 0 or not finite is refused with a warning.
    void setContentScale(Real64 scale);
    Real64 getContentScale() const { return _scale; }
    /// Ends what the tool before was at, without a result. Null navigates. A tool may set another
    /// one while it tells its result.
    void setTool(std::shared_ptr<PointerTool> tool);
    PointerTool *getTool() const { return _tool.get(); }
    /// Sees what tools hear. Not owned; it has to take itself out before it ends. Null for none.
    void setToolObserver(ToolObserver *observer) { _toolObserver = observer; }
    ToolObserver *getToolObserver() const { return _toolObserver; }
    /// For a walk: called in each frame, and told when a panel or a tool has keys and buttons. Not
    /// owned; null for none.
    void setWalkGuard(WalkFocusGuard *guard) { _guard = guard; }
    /// Whether a drag with motion in each frame brings idle events in every second one too. False
    /// at first. For a walk, whose person goes and looks around while a button is down.
    void setIdlesInDrags(bool idles) { _idlesInDrags = idles; }
    /// Where the pointer is now, in the toolkit's units; false where the toolkit cannot tell.
    using PointerQuery = boost::function<bool(Real64 &x, Real64 &y)>;
    /// Asked in each frame, and believed instead of the last event. For a walk, which puts the
    /// pointer back into the window: an event from before that would turn the view. Empty at first.
    void setPointerQuery(PointerQuery query) { _pointerQuery = std::move(query); }

    // --- panels of the host ---
    void setPointerTaken(bool isTaken) { _isPointerTaken = isTaken; }
    void setKeyboardTaken(bool isTaken) { _isKeyboardTaken = isTaken; }

    // --- events; `modifiers` has bits of PointerTool::Modifier ---
    void pointerMove(Real64 x, Real64 y, UInt16 modifiers = 0);
    /// `button` is one of NavigatorEvent::Button, or another number.
    void buttonPress(Int16 button, Real64 x, Real64 y, UInt16 modifiers = 0);
    /// The release of a button whose press went elsewhere is dropped.
    void buttonRelease(Int16 button, Real64 x, Real64 y, UInt16 modifiers = 0);
    /// Above 0 away from the user. Fractions of steps are collected, and a call counts for 100
    /// steps at most.
    void wheel(Real64 steps, Real64 x, Real64 y);
    /// As Navigator::keyPressEx takes it, where the pointer is. Escape first ends a drag, whoever
    /// has the keyboard; if that was a tool's, nobody else hears of it.
    void key(Int16 code, UInt16 navigatorModifiers);
    /// The window has lost the keyboard: ends what is under way without a result.
    void focusLost();
    /// Once per frame: the motion or the idle event, then Navigator::updateCameraTransformation. To
    /// be called when no event of the toolkit waits any more: the newest position is then where the
    /// pointer is, also after an engine has put it elsewhere.
    void frame();

    // --- looking ---
    /// Where the pointer is, in device pixels.
    Pnt2f getPointer() const;
    /// Whether a motion is waiting for the next frame.
    bool hasMotion() const { return _hasMotion; }
    /// Whether a drag is under way, the navigator's or the tool's.
    bool isDragging() const { return _isToolDrag || _buttonsDown != 0; }

  private:
    bool moveTo(Real64 x, Real64 y); // false, and nothing moved, where it is no position
    bool ownsDrag() const;
    PointerTool::Event toolEvent(UInt16 modifiers) const;
    void tellObserver(ToolEvent::Kind kind, UInt16 modifiers = 0) const;
    void askForPointer();
    void sendMotion();
    void sendMotionOrIdle();
    bool cancelTool();
    void endNavigatorDrag();
    Int16 pixelX() const;
    Int16 pixelY() const;

    Navigator &_navigator;
    std::shared_ptr<PointerTool> _tool;
    ToolObserver *_toolObserver = nullptr;
    WalkFocusGuard *_guard = nullptr;
    PointerQuery _pointerQuery;
    Real64 _scale = 1;
    Real64 _x = 0; // in device pixels
    Real64 _y = 0;
    WheelSteps _wheel;
    UInt8 _buttonsDown = 0; // bit b: the navigator knows that button b is down
    bool _isToolDrag = false;
    bool _hasMotion = false;     // that the engine has not heard of
    bool _wasMotionSent = false; // in this frame
    bool _isIdleDue = false;     // the last frame brought a motion
    bool _idlesInDrags = false;
    bool _isPointerTaken = false;
    bool _isKeyboardTaken = false;
};
} // namespace OSG
