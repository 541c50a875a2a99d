#pragma once

#include "OSGNavigationMath.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
class Camera;
class OrthographicCamera;

/// Orbit navigation: the left button turns the scene as a ball about the point that is looked at,
/// the middle one moves it so that the grabbed point stays under the pointer, the right one and the
/// wheel go nearer and farther; a click without motion can make the clicked point the centre.
///
/// On an orthographic camera (of exactly that type) nearer means a smaller picture height, and a
/// pan moves the camera by whole pixels.
///
/// The pose is the centre of the orbit and the camera's distance from it:
///
///        y           `trackball`: axes of the camera, origin at the centre
///        |   z
///        |  /  distance      matrix = trackball * translation(0, 0, distance)
///     at o---------- from    `distance` may become 0 or negative; it is not limited
///         \ x
///
/// getFrom, getAt and getUp show the pose as getMatrix, setDistance or set last left it: a turn or
/// a pan shows in them after the next getMatrix.
class OSG_CONTRIBTOLVANITE_API CadTrackballEngine : public UserNavigatorEngine
{
  public:
    /// `radius` of the ball in normalised viewport coordinates; 0.8 is a good one.
    static TransitPtr<CadTrackballEngine> create(Real32 radius);
    static char const *getClassname() { return "CadTrackballEngine"; }

    // --- pose ---
    Pnt3f const &getFrom() override;
    Pnt3f const &getAt() override;
    Vec3f const &getUp() override;
    Matrix const &getMatrix() override;
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// The centre is put in front of the camera as far away as the world's origin is.
    void set(Matrix const &matrix) override;
    /// Where the three give no camera, a notice is logged and the pose stays.
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    void setDistance(Real32 distance) override;

    // --- events ---
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Forward and backward zoom as the wheel does, left and right do nothing.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    void killFocus(Navigator *navigator) override;

    // --- motion ---
    /// Drags the ball between two places in normalised coordinates.
    void rotate(Real32 fromX, Real32 fromY, Real32 toX, Real32 toY);
    /// Moves centre and camera along the camera's x and y axes.
    void translateXY(Real32 distanceX, Real32 distanceY);
    /// Takes the camera farther from the centre.
    void translateZ(Real32 distance);

    // --- a step of the wheel or a key: 1.2, and 10 at first ---
    /// Ratio of the picture heights on an orthographic camera.
    void wheel_factor_ortho(Real32 factor) { _wheel_factor_ortho = factor; }
    Real32 wheel_factor_ortho() const { return _wheel_factor_ortho; }
    /// Change of the distance on other cameras, in units of the navigator's motion factor.
    void wheel_factor_persp(Real32 factor) { _wheel_factor_persp = factor; }
    Real32 wheel_factor_persp() const { return _wheel_factor_persp; }

  protected:
    /// What the drag does, in `_state`.
    enum Drag : Int32
    {
        Idle = 0,
        Rotating = 1,
        Panning = 2,
        Zooming = 3
    };

    explicit CadTrackballEngine(Real32 radius = 0.8f);
    ~CadTrackballEngine() override;

    /// How far to pan, in the camera's axes, for the grabbed point to come under (toX, toY). Where
    /// it left off does not count, so that errors do not add up.
    void calcDeltas(Int16 fromX, Int16 fromY, Int16 toX, Int16 toY, Real32 &distanceX,
                    Real32 &distanceY, Navigator *navigator);
    /// Grabs what is under (x, y): a point of the scene or, where there is none or the navigator
    /// does not want it asked, of the plane through the world's origin across the view.
    void getIntersectionPoint(Int16 x, Int16 y, Navigator *navigator);
    /// Navigation keys for the virtual keys of arrows and pages; others stay as they are.
    void key_conversion(Int16 &key, UInt16 modifiers) const;
    Real32 projectToSphere(Real32 radius, Real32 x, Real32 y);
    /// Pans an orthographic camera. False, and nothing moved, for a pointer that has not moved.
    bool translateOrtho(Int16 lastX, Int16 lastY, Int16 x, Int16 y, Navigator *navigator);
    void updateFinalMatrix();

  private:
    enum class Zoom
    {
        Nearer,
        Farther
    };

    /// Takes a new orbit if it and its camera are finite. False, and nothing changed, if not.
    bool setOrbit(Matrix const &center, Real32 distance);
    void pan(Int16 x, Int16 y, Navigator *navigator);
    void zoomByDrag(Real32 way, Navigator *navigator);
    void zoomByStep(Zoom zoom, Navigator *navigator);
    void changeDistance(Real32 by);

    Real32 _radius;
    Real32 _distance;
    Matrix _trackball_matrix;
    Matrix _final_matrix;
    Pnt3f _from_point{0.f, 0.f, 0.f}; // what the getters refer to
    Pnt3f _at_point{0.f, 0.f, 1.f};
    Vec3f _up_vector{0.f, 1.f, 0.f};
    NavigationMath::Grip _grip; // what the middle button has grabbed, across the view of that time
    Int16 _last_x = 0;          // the last pan of an orthographic camera
    Int16 _last_y = 0;
    Real32 _wheel_factor_ortho = 1.2f;
    Real32 _wheel_factor_persp = 10.f;
};
} // namespace OSG
