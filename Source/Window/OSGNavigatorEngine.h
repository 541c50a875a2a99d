#pragma once

#include "OSGMatrix.h"
#include "OSGMemoryObject.h"
#include "OSGWindowApi.h"

namespace OSG
{
class Navigator;

/// An engine turns input into the pose of a camera. A Navigator owns one engine at a time and calls
/// it.
///
/// The pose consists of the point `from` where the camera stands, the point `at` that it looks at,
/// and a vector `up`. `getMatrix` gives the same pose as a matrix from camera space to world space.
/// Its columns are the camera's x, y and z axes and its position; the z axis points from `at`
/// towards `from`. Events give x and y in window pixels, counted from the left top corner.
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
    /// A key goes down; nothing else is known of it. The base calls keyPressEx without modifiers.
    virtual void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator);
    /// The pointer has moved while a button is down.
    virtual void moveTo(Int16 x, Int16 y, Navigator *navigator) = 0;
    /// Called regularly between events. `button` is the button that is down.
    virtual void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) = 0;

    /// The navigator serves another viewport. The base does nothing.
    virtual void onViewportChanged(Navigator *navigator);
    /// The navigator has taken this engine. The base does nothing.
    virtual void onActivation(Navigator *navigator);
    /// Called once per frame, after the navigator has read the pose for the camera. The base does
    /// nothing.
    virtual void onUpdateCameraTransformation(Navigator *navigator);

    /// A key goes down or up; NavigatorEvent lists the bits of `modifiers`. The base calls keyPress
    /// unless the key goes up. An engine overrides keyPress, keyPressEx or both. An engine that
    /// overrides neither ignores keys.
    virtual void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator);
    /// The pointer has moved while no button is down. The base does nothing.
    virtual void mouseMove(Int16 x, Int16 y, Navigator *navigator);
    /// The window has lost the keyboard. The base does nothing.
    virtual void killFocus(Navigator *navigator);

  protected:
    NavigatorEngine() = default;
    ~NavigatorEngine() override;

    /// For the engine's own use, for example as the kind of drag that is under way. 0 at first.
    Int32 _state = 0;

  private:
    bool _inKeyPress = false;   // the base version of keyPress has called keyPressEx
    bool _inKeyPressEx = false; // the base version of keyPressEx has called keyPress
};
} // namespace OSG
