#pragma once

#include "OSGNavigatorEngine.h"
#include "OSGNavigatorEvent.h"
#include "OSGNavigatorObserver.h"
#include "OSGViewport.h"

namespace OSG
{
/// A navigator passes the events of a window to an engine and puts the engine's pose onto a camera.
///
///     navigator.setViewport(viewport);   // with root, camera, and the camera's beacon
///     navigator.setEngine(engine);       // keeps a reference
///     navigator.buttonPress(button, x, y);
///     navigator.moveTo(x, y);            // the camera has moved
///     ...
///     navigator.updateCameraTransformation(); // once per frame
///
/// The navigator moves the camera through the camera's beacon. The beacon has to be a node whose
/// core is a Transform. Its matrix is set so that the beacon has the engine's pose in world space,
/// whatever transforms stand above it. With any other beacon the camera does not move.
///
/// While the viewport, its root, its camera or the engine is missing, the engine gets no events.
/// The navigator then only remembers where the pointer is. All calls come from the thread that owns
/// the window.
class OSG_WINDOW_API Navigator
{
  public:
    Navigator();
    Navigator(Navigator const &) = delete;
    Navigator &operator=(Navigator const &) = delete;
    virtual ~Navigator();

    // --- viewport and engine; the navigator keeps references, null stands for none ---
    Viewport *getViewport() const { return _viewport; }
    /// Calls onViewportChanged on the engine if the viewport is another one.
    void setViewport(Viewport *viewport);
    NavigatorEngine *getEngine() const { return _engine; }
    /// The first engine keeps its own pose. A later engine is given the pose of the one before it.
    /// Then onActivation is called on the new engine.
    void setEngine(NavigatorEngine *engine);

    // --- settings ---
    /// Length of a step in units of the scene, 1 at first. Engines multiply it by their own
    /// factors.
    Real32 getMotionFactor() const { return _motionFactor; }
    void setMotionFactor(Real32 factor) { _motionFactor = factor; }
    /// Angle of a step in radians, 0.05 at first.
    Real32 getRotationAngle() const { return _rotationAngle; }
    void setRotationAngle(Real32 angle) { _rotationAngle = angle; }
    /// Whether a click without motion makes the engine look at the clicked point. False at first.
    bool getClickCenter() const { return _clickCenter; }
    void setClickCenter(bool centers) { _clickCenter = centers; }
    /// Whether a press skips the intersection with the scene that finds the point under the
    /// pointer. False at first.
    bool getClickNoIntersect() const { return _clickNoIntersect; }
    void setClickNoIntersect(bool skips) { _clickNoIntersect = skips; }

    // --- events of the window; x and y in pixels from its left top corner ---
    //
    // While a button from LeftButton to RightButton is down, presses and releases of buttons that
    // NavigatorEvent does not list change nothing. The engine sees such a press, so that it can
    // report it. It does not see the release.
    void buttonPress(Int16 button, Int16 x, Int16 y);
    void buttonRelease(Int16 button, Int16 x, Int16 y);
    /// A key goes down. `key` is a navigation key or a character. Calls keyPress on the engine.
    void keyPress(Int16 key, Int16 x, Int16 y);
    /// A key goes down or up; NavigatorEvent lists the bits of `modifiers`. Calls keyPressEx on the
    /// engine.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y);
    /// The pointer moves while a button is down.
    void moveTo(Int16 x, Int16 y);
    /// The pointer moves while no button is down.
    void mouseMove(Int16 x, Int16 y);
    /// Called regularly between events. `button` is the button that is down.
    void idle(Int16 button, Int16 x, Int16 y);
    /// The window has lost the keyboard.
    void killFocus();
    /// Handles any of the events above. A key goes to the engine's keyPressEx.
    void handle(NavigatorEvent const &event);
    /// The observer sees every event before it is handled, and every frame. Null stands for no
    /// observer. The navigator does not own the observer, which has to take itself out before it is
    /// destroyed.
    void setEventObserver(NavigatorObserver *observer) { _observer = observer; }
    NavigatorObserver *getEventObserver() const { return _observer; }

    /// Puts the engine's pose onto the camera, then calls onUpdateCameraTransformation on the
    /// engine. Events put the pose onto the camera too, but without that call.
    void updateCameraTransformation();

    // --- for engines ---
    /// Where the pointer was at the event before this one. Idle events do not count.
    Int16 getLastX() const { return _lastX; }
    Int16 getLastY() const { return _lastY; }
    /// Makes (x, y) the last position and holds it: later events do not replace it until a button
    /// from LeftButton to WheelDown is pressed or another engine is set. An engine calls this if it
    /// steers by the distance of the pointer from a fixed point. A host may override it to move the
    /// pointer there as well.
    virtual void setLastPosition(Int16 x, Int16 y);
    /// Whether the pointer has moved since a button from LeftButton to WheelDown went down.
    bool getMoved() const { return _moved; }
    /// The last position and (x, y) in normalised coordinates of the viewport. Without a viewport
    /// of at least one pixel the four values are 0 and the result is false.
    bool calcFromTo(Int16 x, Int16 y, Real32 &fromX, Real32 &fromY, Real32 &toX, Real32 &toY) const;

  private:
    /// The operation of the engine that a key goes to.
    enum class KeyCall : UInt8
    {
        Plain,   ///< keyPress
        Extended ///< keyPressEx
    };

    bool isReady() const;
    void process(NavigatorEvent const &event, KeyCall keyCall);
    void pass(NavigatorEvent const &event, KeyCall keyCall);
    void trackButtons(NavigatorEvent const &event);
    void trackPointer(NavigatorEvent const &event);
    void poseCamera();

    UnrecordedRefPtr<Viewport> _viewport;
    UnrecordedRefPtr<NavigatorEngine> _engine;
    NavigatorObserver *_observer = nullptr;
    Real32 _motionFactor = 1.f;
    Real32 _rotationAngle = 0.05f;
    Int16 _lastX = 0;
    Int16 _lastY = 0;
    Int16 _pressX = 0; // where a known button last went down
    Int16 _pressY = 0;
    UInt8 _buttonsDown = 0; // bit b is set while button b, from LeftButton to RightButton, is down
    bool _clickCenter = false;
    bool _clickNoIntersect = false;
    bool _moved = false;
    bool _held = false;      // setLastPosition holds the last position
    bool _isPassing = false; // the engine handles an event
};
} // namespace OSG
