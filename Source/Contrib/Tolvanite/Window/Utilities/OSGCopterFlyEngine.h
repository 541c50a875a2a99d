#pragma once

#include <utility>

#include "OSGBoxVolume.h"
#include "OSGEyePose.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
/// Flies like a helicopter, without collision.
///
/// A click starts the flight and a second click stops it. With the left button the flight goes
/// forwards, with the right one backwards. During the flight every idle event is a tick: it moves
/// or turns the camera. The farther the pointer is from the middle of the view, the more it moves
/// or turns.
///
/// The state says what a tick does. In RotateState and TranslateState the move mode says which
/// directions of the pointer count. The middle button goes on to the next move mode in these two
/// states. While the flight is stopped, return goes on to the next move mode and space to the next
/// state. The wheel changes the speed at any time; plus and minus do so while the flight is
/// stopped.
///
/// The camera starts in the origin and looks along +z.
class OSG_CONTRIBTOLVANITE_API CopterFlyEngine : public UserNavigatorEngine
{
  public:
    enum State : UInt32
    {
        MoveToState = 0,       ///< turns towards the pointer and takes a step
        MoveOnSphereState = 1, ///< circles a point that drifts towards the visible geometry
        RotateState = 2,       ///< turns without moving
        TranslateState = 3     ///< moves without turning
    };

    /// The part of the pointer's deflection that counts in RotateState and TranslateState. The
    /// deflection is the way from the middle of the view to the pointer.
    enum MoveMode : UInt32
    {
        /// Its length. It gives a roll or a step along the view, and DirMode the sign of either.
        RadialMode = 0,
        DominantAxisMode = 1, ///< the larger of its two components
        VerticalMode = 2,
        HorizontalMode = 3
    };

    enum DirMode : UInt32
    {
        ForwardDir = 0,
        BackwardDir = 1
    };

    static TransitPtr<CopterFlyEngine> create();
    static char const *getClassname() { return "CopterFlyEngine"; }

    // --- pose ---
    Pnt3f const &getFrom() override;
    Pnt3f const &getAt() override;
    Vec3f const &getUp() override;
    /// If `from` and `at` coincide or `up` is parallel to the view, the matrix of the last pose for
    /// which this was not so.
    Matrix const &getMatrix() override;
    /// Always 0.
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// Puts `at` one unit in front of the camera.
    void set(Matrix const &matrix) override;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    /// Moves the camera backwards by `distance`. No distance is stored.
    void setDistance(Real32 distance) override;

    // --- flight ---
    State getState() const { return _copter_state; }
    /// Another state stops the flight.
    void setState(State state);
    MoveMode getMoveMode() const { return _move_mode; }
    void setMoveMode(MoveMode mode) { _move_mode = mode; }
    DirMode getDirMode() const { return _dir_mode; }
    void setDirMode(DirMode mode) { _dir_mode = mode; }
    /// Whether the flight is stopped. True at first.
    bool isIdle() const { return _idle_flag; }
    /// Stops the flight.
    void setIdle() { _idle_flag = true; }

    // --- speed in percent of the maximum; the sign is ignored, and more than 100 changes nothing
    // ---
    Real32 getMotionFactor() const { return _motion_factor * 100.f / _motion_max_factor; }
    void setMotionFactor(Real32 percent);
    Real32 getRotationFactor() const { return _rot_factor * 100.f / _rot_max_factor; }
    void setRotationFactor(Real32 percent);
    Real32 getMotionMultiplier() const { return _motion_multiplier; }
    Real32 getRotationMultiplier() const { return _rot_multiplier; }

    // --- speed as factors, not checked: the factor, the ratio of a step of it, its upper limit ---
    void motion_factor(Real32 factor) { _motion_factor = factor; }
    Real32 motion_factor() const { return _motion_factor; }
    void motion_multiplier(Real32 multiplier) { _motion_multiplier = multiplier; }
    Real32 motion_multiplier() const { return _motion_multiplier; }
    void motion_max_factor(Real32 factor) { _motion_max_factor = factor; }
    Real32 motion_max_factor() const { return _motion_max_factor; }
    void rot_factor(Real32 factor) { _rot_factor = factor; }
    Real32 rot_factor() const { return _rot_factor; }
    void rot_multiplier(Real32 multiplier) { _rot_multiplier = multiplier; }
    Real32 rot_multiplier() const { return _rot_multiplier; }
    void rot_max_factor(Real32 factor) { _rot_max_factor = factor; }
    Real32 rot_max_factor() const { return _rot_max_factor; }
    /// The turn of a tick in MoveToState is divided by this.
    void rot_divider(Real32 divider) { _rot_divider = divider; }
    Real32 rot_divider() const { return _rot_divider; }

    // --- events ---
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    /// A tick, if the flight is under way.
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Does nothing during a flight.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    /// Does nothing. A flight goes on.
    void killFocus(Navigator *navigator) override;

  protected:
    explicit CopterFlyEngine(Real32 radius = 0.8f);
    ~CopterFlyEngine() override;

    // --- ticks ---
    void copter_move_to(Int16 x, Int16 y, Navigator *navigator);
    void copter_move_on_sphere(Int16 x, Int16 y, Navigator *navigator);
    void copter_rotate(Int16 x, Int16 y, Navigator *navigator);
    void copter_translate(Int16 x, Int16 y, Navigator *navigator);

    /// The box around the bounding volumes of the geometry that the camera sees, in world space.
    /// Walks the whole scene.
    BoxVolume calc_box_volume(Navigator *navigator);
    /// Makes the middle of the view the navigator's last position.
    void init_cursor_pos(Navigator *navigator);
    /// The way from the middle of the view to the pixel (x, y), divided by the coordinates that the
    /// middle has in the window. In a view that covers its window the values run from -1 to 1. (0,
    /// 0) for a view without pixels.
    std::pair<Real32, Real32> qualify_cursor_pos(Int16 x, Int16 y, Navigator *navigator);
    Real32 projectToSphere(Real32 radius, Real32 x, Real32 y);

    /// Turns to the right by `yaw`, then down by `pitch`, then tilts the camera counter-clockwise
    /// by `roll`, as seen from the camera. In radians.
    void rotate(Real32 yaw, Real32 pitch, Real32 roll);
    /// Positive steps move backwards, to the left and upwards. All return 0.
    Real32 translate_forward(Real32 step);
    Real32 translate_right(Real32 step);
    Real32 translate_up(Real32 step);

  private:
    enum class Speed
    {
        Slower,
        Faster
    };

    void start(DirMode direction, Navigator *navigator);
    void changeSpeed(Speed change);
    void nextMoveMode();
    /// The sign of a step along the view: -1 for ForwardDir, 1 for BackwardDir, 0 for other values.
    Real32 backwards() const;

    EyePose _pose;
    Matrix _matrix;
    Real32 _radius;
    bool _idle_flag = true;
    State _copter_state = MoveToState;
    MoveMode _move_mode = RadialMode;
    DirMode _dir_mode = ForwardDir;
    Real32 _motion_factor = 0.2f;
    Real32 _motion_multiplier = 1.2f;
    Real32 _motion_max_factor = 0.4f;
    Real32 _rot_factor = 0.2f;
    Real32 _rot_multiplier = 1.2f;
    Real32 _rot_max_factor = 0.4f;
    Real32 _rot_divider = 20.f;
};
} // namespace OSG
