#pragma once

#include "OSGNavigatorEngine.h"
#include "OSGNavigatorEvent.h"
#include "OSGNavigatorObserver.h"
#include "OSGViewport.h"

namespace OSG
{
/// Turns the events of a window into motion of a camera, by the engine that it owns.
///
///     navigator.setViewport(viewport);   // with root, camera, and the camera's beacon
///     navigator.setEngine(engine);       // counted
///     navigator.buttonPress(button, x, y);
///     navigator.moveTo(x, y);            // the camera has moved
///     ...
///     navigator.updateCameraTransformation(); // once per frame
///
/// The camera is moved by its beacon: a node whose core is a Transform takes the engine's pose,
/// whatever stands above it. With any other beacon the camera stays.
///
/// While viewport, root, camera or engine is missing, events only move the pointer. A navigator
/// belongs to the thread that owns the window.
class OSG_WINDOW_API Navigator
{
  public:
    Navigator();
    Navigator(Navigator const &) = delete;
    Navigator &operator=(Navigator const &) = delete;
    virtual ~Navigator();

    // --- what it serves; counted, null for none ---
    Viewport *getViewport() const { return _viewport; }
    /// Tells the engine of another viewport.
    void setViewport(Viewport *viewport);
    NavigatorEngine *getEngine() const { return _engine; }
    /// Another engine begins with the pose of the one before it, where it takes that pose, the
    /// first one with its own. It is told of its activation.
    void setEngine(NavigatorEngine *engine);

    // --- settings ---
    /// Length of a step, 1 at first; engines multiply it by factors of their own.
    Real32 getMotionFactor() const { return _motionFactor; }
    void setMotionFactor(Real32 factor) { _motionFactor = factor; }
    /// Angle of a step in radians, 0.05 at first.
    Real32 getRotationAngle() const { return _rotationAngle; }
    void setRotationAngle(Real32 angle) { _rotationAngle = angle; }
    /// Whether a click that does not move makes the clicked point the one that is looked at; not at
    /// first.
    bool getClickCenter() const { return _clickCenter; }
    void setClickCenter(bool centers) { _clickCenter = centers; }
    /// Whether a press leaves the scene unasked for the point that was clicked; not at first.
    bool getClickNoIntersect() const { return _clickNoIntersect; }
    void setClickNoIntersect(bool leaves) { _clickNoIntersect = leaves; }

    // --- events of the window; x and y in pixels from its left top corner ---
    void buttonPress(Int16 button, Int16 x, Int16 y);
    void buttonRelease(Int16 button, Int16 x, Int16 y);
    /// A key by its navigation code or its character.
    void keyPress(Int16 key, Int16 x, Int16 y);
    /// `modifiers`: see NavigatorEvent.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y);
    /// The pointer moves, with a button down.
    void moveTo(Int16 x, Int16 y);
    /// The pointer moves, with none down.
    void mouseMove(Int16 x, Int16 y);
    /// Regularly between events; `button` is the one that is down.
    void idle(Int16 button, Int16 x, Int16 y);
    void killFocus();
    /// Any of them.
    void handle(NavigatorEvent const &event);
    /// Is shown every event before it is handled; null for nobody. Not owned: one that ends takes
    /// itself out, if it is still the one.
    void setEventObserver(NavigatorObserver *observer) { _observer = observer; }
    NavigatorObserver *getEventObserver() const { return _observer; }

    /// Puts the engine's pose onto the camera, then lets the engine do its work of a frame. Events
    /// put the pose onto the camera by themselves, without that work.
    void updateCameraTransformation();

    // --- for engines ---
    /// The pointer at the event before this one. Idle moves no pointer.
    Int16 getLastX() const { return _lastX; }
    Int16 getLastY() const { return _lastY; }
    /// Takes (x, y) for the last position, until a button from LeftButton to WheelDown is pressed
    /// or the engine is another one: what the pointer does meanwhile does not replace it. An engine
    /// that steers by the way of the pointer from a point calls this; a host may move the pointer
    /// there as well.
    virtual void setLastPosition(Int16 x, Int16 y);
    /// Whether the pointer has moved since a button went down.
    bool getMoved() const { return _moved; }
    /// Last position and (x, y) in normalised coordinates of the viewport. False, and four zeros,
    /// without a viewport of at least one pixel.
    bool calcFromTo(Int16 x, Int16 y, Real32 &fromX, Real32 &fromY, Real32 &toX, Real32 &toY) const;

  private:
    bool isReady() const;
    void pass(NavigatorEvent const &event);
    void trackPointer(NavigatorEvent const &event);
    void poseCamera();

    UnrecordedRefPtr<Viewport> _viewport;
    UnrecordedRefPtr<NavigatorEngine> _engine;
    NavigatorObserver *_observer = nullptr;
    Real32 _motionFactor = 1.f;
    Real32 _rotationAngle = 0.05f;
    Int16 _lastX = 0;
    Int16 _lastY = 0;
    Int16 _pressX = 0; // where a button last went down
    Int16 _pressY = 0;
    bool _clickCenter = false;
    bool _clickNoIntersect = false;
    bool _moved = false;
    bool _held = false; // the last position was set by an engine
};
} // namespace OSG
