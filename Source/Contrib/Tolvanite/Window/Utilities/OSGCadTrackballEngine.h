#pragma once

#include "OSGNavigationMath.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
class Camera;
class OrthographicCamera;

/// Orbit navigation for CAD views.
///
/// The left button turns the scene like a ball about the point that is looked at. The middle button
/// pans: the grabbed point stays under the pointer. The right button and the wheel zoom. A click
/// without motion makes the clicked point the centre of the orbit if Navigator::getClickCenter is
/// set.
///
/// With an orthographic camera, zooming changes the height of the picture, and a pan moves the
/// camera by whole pixels. This holds for cameras of exactly the type OrthographicCamera, not for
/// types derived from it.
///
/// The pose is stored as the centre of the orbit and the camera's distance from it:
///
///        y           `trackball`: the axes of the camera, with the centre as origin
///        |   z
///        |  /  distance      matrix = trackball * translation(0, 0, distance)
///     at o---------- from    `distance` has no limit; it may become 0 or negative
///         \ x
///
/// getFrom, getAt and getUp give the pose as it was at the last call of getMatrix, setDistance or
/// set. They show a turn, a pan or a zoom only after the next getMatrix.
class OSG_CONTRIBTOLVANITE_API CadTrackballEngine : public UserNavigatorEngine
{
  public:
    /// `radius` is the radius of the ball in normalised coordinates of the viewport. With 0.8 the
    /// ball nearly fills a square view.
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
    /// Puts the centre of the orbit in front of the camera, at the distance that the camera has
    /// from the world's origin.
    void set(Matrix const &matrix) override;
    /// If the three give no pose, or one that is not finite, a notice is logged and the pose stays.
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    void setDistance(Real32 distance) override;

    // --- events ---
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// The forward and backward keys zoom like the wheel. The left and right keys do nothing.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    void killFocus(Navigator *navigator) override;

    // --- motion ---
    /// Drags the ball from one place to another, both in normalised coordinates.
    void rotate(Real32 fromX, Real32 fromY, Real32 toX, Real32 toY);
    /// Moves centre and camera along the camera's x and y axes, in units of the scene.
    void translateXY(Real32 distanceX, Real32 distanceY);
    /// Adds `distance` to the camera's distance from the centre.
    void translateZ(Real32 distance);

    // --- the size of a step of the wheel or a key ---
    /// Ratio of the picture heights of an orthographic camera after and before a step; 1.2 at
    /// first.
    void wheel_factor_ortho(Real32 factor) { _wheel_factor_ortho = factor; }
    Real32 wheel_factor_ortho() const { return _wheel_factor_ortho; }
    /// Change of the distance with other cameras, in units of the navigator's motion factor; 10 at
    /// first.
    void wheel_factor_persp(Real32 factor) { _wheel_factor_persp = factor; }
    Real32 wheel_factor_persp() const { return _wheel_factor_persp; }

  protected:
    /// The kind of drag that is under way, kept in `_state`.
    enum Drag : Int32
    {
        Idle = 0,
        Rotating = 1,
        Panning = 2,
        Zooming = 3
    };

    explicit CadTrackballEngine(Real32 radius = 0.8f);
    ~CadTrackballEngine() override;

    /// How far to pan, along the camera's x and y axes, so that the grabbed point comes under the
    /// pixel (toX, toY). The start of the motion is not used, so that errors do not add up.
    void calcDeltas(Int16 fromX, Int16 fromY, Int16 toX, Int16 toY, Real32 &distanceX,
                    Real32 &distanceY, Navigator *navigator);
    /// Grabs the nearest point of the scene under the pixel (x, y). If there is none, or if
    /// Navigator::getClickNoIntersect is set, it grabs a point of the plane through the world's
    /// origin that is perpendicular to the view.
    void getIntersectionPoint(Int16 x, Int16 y, Navigator *navigator);
    /// Replaces the virtual-key codes of the arrow and page keys by navigation keys. Other keys
    /// stay as they are.
    void key_conversion(Int16 &key, UInt16 modifiers) const;
    Real32 projectToSphere(Real32 radius, Real32 x, Real32 y);
    /// Pans an orthographic camera. If the pointer has not moved, or there is no ray through the
    /// pixel, nothing moves and the result is false.
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
    Pnt3f _from_point{0.f, 0.f, 0.f}; // the getters return references to these three
    Pnt3f _at_point{0.f, 0.f, 1.f};
    Vec3f _up_vector{0.f, 1.f, 0.f};
    NavigationMath::Grip _grip; // the normal is the view axis at the press of the middle button
    Int16 _last_x = 0;          // the pointer at the last pan of an orthographic camera
    Int16 _last_y = 0;
    Real32 _wheel_factor_ortho = 1.2f;
    Real32 _wheel_factor_persp = 10.f;
};
} // namespace OSG
