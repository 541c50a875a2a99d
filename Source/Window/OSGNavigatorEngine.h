#pragma once

#include "OSGMatrix.h"
#include "OSGMemoryObject.h"
#include "OSGWindowApi.h"

namespace OSG
{
class Navigator;

/// What makes of input the pose of a camera. A Navigator owns one engine at a time and calls it.
///
/// The pose is a point to look from, a point to look at and a vector that points upwards;
/// `getMatrix` is the same as a matrix: columns x, y, z axis of the camera and its position, z
/// pointing from `at` towards `from`. x and y of events are window pixels from the left top corner.
class OSG_WINDOW_API NavigatorEngine : public MemoryObject
{
  public:
    // --- virtual operations, in slot order ---
    virtual Pnt3f const &getFrom() = 0;
    virtual Pnt3f const &getAt() = 0;
    virtual Vec3f const &getUp() = 0;
    virtual Matrix const &getMatrix() = 0;
    virtual Real32 getDistance() = 0;

    virtual void setFrom(Pnt3f from) = 0;
    virtual void setAt(Pnt3f at) = 0;
    virtual void setUp(Vec3f up) = 0;
    virtual void set(Matrix const &matrix) = 0;
    virtual void set(Pnt3f from, Pnt3f at, Vec3f up) = 0;
    virtual void setDistance(Real32 distance) = 0;

    virtual void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) = 0;
    virtual void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) = 0;
    virtual void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) = 0;
    /// The pointer has moved while a button is down.
    virtual void moveTo(Int16 x, Int16 y, Navigator *navigator) = 0;
    /// Between events, with the button that is down.
    virtual void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) = 0;

    /// The navigator serves another viewport. Nothing here.
    virtual void onViewportChanged(Navigator *navigator);
    /// The navigator has taken this engine. Nothing here.
    virtual void onActivation(Navigator *navigator);
    /// The navigator has read the pose for the camera: once per frame. Nothing here.
    virtual void onUpdateCameraTransformation(Navigator *navigator);

    /// A key with what is known of it beyond its code. keyPress here, without that.
    virtual void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator);
    /// The pointer has moved while no button is down. Nothing here.
    virtual void mouseMove(Int16 x, Int16 y, Navigator *navigator);
    /// The window has lost the keyboard. Nothing here.
    virtual void killFocus(Navigator *navigator);

  protected:
    NavigatorEngine() = default;
    ~NavigatorEngine() override;

    /// What the engine is at, where it keeps it here: 0 for nothing.
    Int32 _state = 0;
};
} // namespace OSG
