#pragma once

#include <utility>

#include "OSGBoxVolume.h"
#include "OSGEyePose.h"
#include "OSGUserNavigatorEngine.h"

namespace OSG
{
/// Flies like a helicopter: a click starts the flight, a second one stops it, and in between every
/// idle event moves or turns the camera, the more the farther the pointer stands from the middle of
/// the window. The left button flies forwards, the right one backwards.
///
/// What a tick does is the flight's state; in two of the states the move mode picks the directions
/// of the pointer that count. The middle button, or return while the flight is stopped, goes on to
/// the next mode, space to the next state; wheel, plus and minus change the speed. There is no
/// collision. Starts in the origin, looking along +z.
class OSG_CONTRIBTOLVANITE_API CopterFlyEngine : public UserNavigatorEngine
{
  public:
    enum State : UInt32
    {
        MoveToState = 0,       ///< turns towards the pointer and takes a step
        MoveOnSphereState = 1, ///< circles a point that drifts to what can be seen
        RotateState = 2,       ///< turns on the spot
        TranslateState = 3     ///< moves without a turn
    };

    /// What of the pointer's deflection counts in RotateState and TranslateState.
    enum MoveMode : UInt32
    {
        RadialMode = 0,       ///< all of it: a roll, or a step along the view, by DirMode
        DominantAxisMode = 1, ///< the larger of its two directions
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
    /// Where `from` and `at` coincide or `up` runs along the view, the last one there was.
    Matrix const &getMatrix() override;
    /// Always 0.
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// Looks at a point one unit in front of the camera.
    void set(Matrix const &matrix) override;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    /// A step backwards, no setting.
    void setDistance(Real32 distance) override;

    // --- flight ---
    State getState() const { return _copter_state; }
    /// Another state stops the flight.
    void setState(State state);
    MoveMode getMoveMode() const { return _move_mode; }
    void setMoveMode(MoveMode mode) { _move_mode = mode; }
    DirMode getDirMode() const { return _dir_mode; }
    void setDirMode(DirMode mode) { _dir_mode = mode; }
    /// Whether the flight is stopped, as it is at first.
    bool isIdle() const { return _idle_flag; }
    void setIdle() { _idle_flag = true; }

    // --- speed in percent of the maximum; one beyond 100, either way, is not taken ---
    Real32 getMotionFactor() const { return _motion_factor * 100.f / _motion_max_factor; }
    void setMotionFactor(Real32 percent);
    Real32 getRotationFactor() const { return _rot_factor * 100.f / _rot_max_factor; }
    void setRotationFactor(Real32 percent);
    Real32 getMotionMultiplier() const { return _motion_multiplier; }
    Real32 getRotationMultiplier() const { return _rot_multiplier; }

    // --- the same in numbers, untested: scale, ratio of a step of it, its limit ---
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
    /// Divides the way of the pointer in MoveToState.
    void rot_divider(Real32 divider) { _rot_divider = divider; }
    Real32 rot_divider() const { return _rot_divider; }

    // --- events ---
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    /// A tick of the flight.
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Nothing while the flight runs.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    /// Nothing: a flight goes on.
    void killFocus(Navigator *navigator) override;

  protected:
    explicit CopterFlyEngine(Real32 radius = 0.8f);
    ~CopterFlyEngine() override;

    // --- ticks ---
    void copter_move_to(Int16 x, Int16 y, Navigator *navigator);
    void copter_move_on_sphere(Int16 x, Int16 y, Navigator *navigator);
    void copter_rotate(Int16 x, Int16 y, Navigator *navigator);
    void copter_translate(Int16 x, Int16 y, Navigator *navigator);

    /// Box of the geometry that the camera sees, by bounding volumes; walks the whole scene.
    BoxVolume calc_box_volume(Navigator *navigator);
    /// Makes the middle of the view the navigator's last position.
    void init_cursor_pos(Navigator *navigator);
    /// The pointer's way from the middle, in units of the middle's own coordinates: in a view that
    /// begins in the window's corner from -1 to 1. (0, 0) in a view without pixels.
    std::pair<Real32, Real32> qualify_cursor_pos(Int16 x, Int16 y, Navigator *navigator);
    Real32 projectToSphere(Real32 radius, Real32 x, Real32 y);

    /// To the right, down and clockwise, in radians.
    void rotate(Real32 yaw, Real32 pitch, Real32 roll);
    /// Backwards, to the left and upwards for positive steps. They return 0.
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
    /// -1 forwards, 1 backwards, 0 for a direction that is none.
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
