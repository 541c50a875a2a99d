#pragma once

#include <memory>
#include <utility>

#include <boost/optional.hpp>

#include "OSGEyePose.h"
#include "OSGUserNavigatorEngine.h"
#include "OSGWalkBody.h"
#include "OSGWalkKeys.h"
#include "OSGWalkMotion.h"
#include "OSGWalkPointer.h"
#include "OSGWalkScene.h"
#include "OSGWalkSettings.h"

namespace OSG
{
class Viewport;
class WIN32Window;

/// A person walks through the model.
///
/// Keys step and turn, the pointer looks around. Walls stop the person, the floor carries it, it
/// climbs stairs, and after Space it may jump once. The person is a box of `width` by `fatness` by
/// `height`; the eye is `height_eye` above its feet. Lengths are in the units of the scene, whose
/// up is the engine's up.
///
///     UnrecordedRefPtr<WASDWalkEngine> walk(WASDWalkEngine::create());
///     navigator.setEngine(walk);
///     navigator.setViewport(viewport); // its root is the world, its window a WIN32Window
///     ...events...
///     navigator.updateCameraTransformation(); // each frame: the engine polls keys and moves
///
/// The engine polls the keys of Desktop::current() as it was when the engine was made. It acts only
/// while the window of the last event's navigator has the focus. Where that desktop does not serve
/// everything, one warning says so at the first use.
///
/// Console mode leaves the pointer to the host and hides it while a key moves the person. Game mode
/// (F2, F3) hides and captures it until Escape, and F3 lets every motion of the pointer turn the
/// view. The pointer is put to the middle of the window only when it has left the view.
///
/// There is no velocity and no gravity: a step is tried, then tried raised, then both with half the
/// length, up to `num_step_loop` times, and the person is set down on the floor at once. Turns are
/// not tested against the scene. A setting is stored as it is given. A pose that is not finite is
/// not taken, nor is a motion whose result is not finite.
class OSG_CONTRIBTOLVANITE_API WASDWalkEngine : public UserNavigatorEngine
{
  public:
    static TransitPtr<WASDWalkEngine> create();
    static char const *getClassname() { return "WASDWalkEngine"; }

    // --- pose ---
    Pnt3f const &getFrom() override;
    Pnt3f const &getAt() override;
    Vec3f const &getUp() override;
    /// Like that of WASDFlyEngine.
    Matrix const &getMatrix() override;
    /// Always 0.
    Real32 getDistance() override;
    void setFrom(Pnt3f from) override;
    void setAt(Pnt3f at) override;
    void setUp(Vec3f up) override;
    /// Puts `at` one unit in front of the camera.
    void set(Matrix const &matrix) override;
    void set(Pnt3f from, Pnt3f at, Vec3f up) override;
    /// Takes a step backwards; no distance is stored.
    void setDistance(Real32 distance) override;

    // --- events ---
    /// The wheel changes the speed, with Shift that of turns, with Ctrl the field of view.
    void buttonPress(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    void buttonRelease(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Without modifiers, so that keyPressEx does nothing.
    void keyPress(Int16 key, Int16 x, Int16 y, Navigator *navigator) override;
    void moveTo(Int16 x, Int16 y, Navigator *navigator) override;
    void idle(Int16 button, Int16 x, Int16 y, Navigator *navigator) override;
    /// Takes the root of the navigator's viewport as the world.
    void onViewportChanged(Navigator *navigator) override;
    /// Moves the person by the keys that are down, then sets the field of view of a perspective
    /// camera.
    void onUpdateCameraTransformation(Navigator *navigator) override;
    /// Knows the keys of the settings, when they go down.
    void keyPressEx(Int16 key, UInt16 modifiers, Int16 x, Int16 y, Navigator *navigator) override;
    void mouseMove(Int16 x, Int16 y, Navigator *navigator) override;
    /// Back to console mode, also where the engine is silent.
    void killFocus(Navigator *navigator) override;

    // --- the scene ---
    /// Not owned. Where it is null the person is alone in empty space.
    void setWorld(Node *const world) { _scene.setWorld(world); }
    /// The observer sees every step. Null, the default, stands for none. Not owned.
    void setWalkObserver(WalkObserver *observer) { _observer = observer; }
    WalkObserver *getWalkObserver() const { return _observer; }

    // --- settings; see WalkSettings for what they mean ---
    Vec3f const &normal() const { return _settings.normal; }
    void normal(Vec3f const &value) { _settings.normal = value; }
    Real32 height() const { return _settings.height; }
    void height(Real32 value) { _settings.height = value; }
    Real32 height_eye() const { return _settings.heightEye; }
    void height_eye(Real32 value) { _settings.heightEye = value; }
    Real32 width() const { return _settings.width; }
    void width(Real32 value) { _settings.width = value; }
    Real32 fatness() const { return _settings.fatness; }
    void fatness(Real32 value) { _settings.fatness = value; }
    Real32 ground_distance() const { return _settings.groundDistance; }
    void ground_distance(Real32 value) { _settings.groundDistance = value; }
    Real32 wall_distance() const { return _settings.wallDistance; }
    void wall_distance(Real32 value) { _settings.wallDistance = value; }
    Real32 jump_strength() const { return _settings.jumpStrength; }
    void jump_strength(Real32 value) { _settings.jumpStrength = value; }
    Real32 jump_staircase_strength() const { return _settings.jumpStaircaseStrength; }
    void jump_staircase_strength(Real32 value) { _settings.jumpStaircaseStrength = value; }
    bool walk_mode() const { return _settings.walkMode; }
    void walk_mode(bool value) { _settings.walkMode = value; }
    bool god_mode() const { return _settings.godMode; }
    void god_mode(bool value) { _settings.godMode = value; }
    bool staircase_mode() const { return _settings.staircaseMode; }
    void staircase_mode(bool value) { _settings.staircaseMode = value; }
    Real32 motion_factor() const { return _settings.motionFactor; }
    void motion_factor(Real32 value) { _settings.motionFactor = value; }
    Real32 motion_delta() const { return _settings.motionDelta; }
    void motion_delta(Real32 value) { _settings.motionDelta = value; }
    Real32 motion_multiplier() const { return _settings.motionMultiplier; }
    void motion_multiplier(Real32 value) { _settings.motionMultiplier = value; }
    Real32 motion_max_factor() const { return _settings.motionMaxFactor; }
    void motion_max_factor(Real32 value) { _settings.motionMaxFactor = value; }
    Real32 fast_motion_factor() const { return _settings.fastMotionFactor; }
    void fast_motion_factor(Real32 value) { _settings.fastMotionFactor = value; }
    Real32 slow_motion_factor() const { return _settings.slowMotionFactor; }
    void slow_motion_factor(Real32 value) { _settings.slowMotionFactor = value; }
    Real32 rot_factor() const { return _settings.rotFactor; }
    void rot_factor(Real32 value) { _settings.rotFactor = value; }
    Real32 rot_delta() const { return _settings.rotDelta; }
    void rot_delta(Real32 value) { _settings.rotDelta = value; }
    Real32 rot_multiplier() const { return _settings.rotMultiplier; }
    void rot_multiplier(Real32 value) { _settings.rotMultiplier = value; }
    Real32 rot_max_factor() const { return _settings.rotMaxFactor; }
    void rot_max_factor(Real32 value) { _settings.rotMaxFactor = value; }
    Real32 fast_rot_factor() const { return _settings.fastRotFactor; }
    void fast_rot_factor(Real32 value) { _settings.fastRotFactor = value; }
    Real32 slow_rot_factor() const { return _settings.slowRotFactor; }
    void slow_rot_factor(Real32 value) { _settings.slowRotFactor = value; }
    UInt32 num_step_loop() const { return _settings.numStepLoop; }
    void num_step_loop(UInt32 value) { _settings.numStepLoop = value; }
    bool out_of_camera_console() const { return _settings.outOfCameraConsole; }
    void out_of_camera_console(bool value) { _settings.outOfCameraConsole = value; }
    bool god_perspecitve_console() const { return _settings.godPerspectiveConsole; }
    void god_perspecitve_console(bool value) { _settings.godPerspectiveConsole = value; }
    /// True for console mode. The setter leaves the pointer alone.
    bool wasd_walk_console() const { return _settings.walkConsole; }
    void wasd_walk_console(bool value) { _settings.walkConsole = value; }
    bool rotate_on_idle() const { return _settings.rotateOnIdle; }
    void rotate_on_idle(bool value) { _settings.rotateOnIdle = value; }
    Real32 camera_field_of_view() const { return _settings.cameraFieldOfView; }
    void camera_field_of_view(Real32 value) { _settings.cameraFieldOfView = value; }

    // --- the same settings by other names, in groups, and in percent ---
    void setNormal(Vec3f const &value) { normal(value); }
    Real32 getGroundDistance() const { return ground_distance(); }
    void setGroundDistance(Real32 value) { ground_distance(value); }
    Real32 getMinWallDistance() const { return wall_distance(); }
    void setMinWallDistance(Real32 value) { wall_distance(value); }
    void getPersonDimensions(Real32 &height, Real32 &heightEye, Real32 &width,
                             Real32 &fatness) const;
    void setPersonDimensions(Real32 height, Real32 heightEye, Real32 width, Real32 fatness);
    Real32 getFieldOfView() const { return camera_field_of_view(); }
    Real32 getFieldOfViewFac() const { return WalkSettings::FieldOfViewFactor; }
    Real32 getFieldOfViewMax() const { return WalkSettings::FieldOfViewMax; }
    Real32 getFieldOfViewMin() const { return WalkSettings::FieldOfViewMin; }
    /// Takes the nearer of the two limits where the absolute value is beyond them.
    void setFieldOfView(Real32 degrees) { _settings.setFieldOfView(degrees); }
    /// In percent of `motion_max_factor`.
    Real32 getMotionFactor() const;
    /// From 0 to 100 percent; what lies beyond counts as these.
    void setMotionFactor(Real32 percent);
    /// In percent of `rot_max_factor`.
    Real32 getRotationFactor() const;
    void setRotationFactor(Real32 percent);
    Real32 getMotionMultiplier() const { return motion_multiplier(); }
    Real32 getRotationMultiplier() const { return rot_multiplier(); }

    // --- modes ---
    /// A silent engine ignores events and keys, but not killFocus.
    void setSilent(bool silent) { _silent = silent; }
    bool isSilent() const { return _silent; }
    /// Changes between console mode and game mode, in which every motion of the pointer turns.
    void setGameMode();

    // --- for hosts; the engine itself calls none of these ---
    void getFrame(Pnt3f &position, Vec3f &back, Vec3f &left, Vec3f &upDir) const;
    /// Sets the person down on what is below it. The eye then stands `ground_distance` + `height`
    /// above the floor, higher than after a step.
    void fall();
    /// Whether there is anything below a place.
    bool can_fall(Pnt3f const &position);

  protected:
    using key_data = WalkKeys::KeyState;
    using FrustumType = WalkBody::FrustumType;
    using enum WalkBody::FrustumType;
    using MoveResult = WalkMotion::Move;

    WASDWalkEngine();
    /// Shows a hidden pointer and releases its capture.
    ~WASDWalkEngine() override;

    // --- input ---
    /// Polls the keys and moves the person by each that is down; the length of a step is in
    /// proportion to the time since the last call that did so.
    void evaluate();
    /// Whether the window has the focus. Then also captures the pointer again where the system has
    /// taken a capture of the engine away.
    bool check_focus();
    /// Puts the pointer to the middle of the window if (x, y) is outside of the view.
    void center_cursor(Int16 x, Int16 y);
    void disable_cursor();
    void enable_cursor();
    void refresh_keyboard_data(std::map<Int16, key_data> &keys);
    /// The place of the last look and (x, y) in normalised coordinates. False, and nothing changed,
    /// without a viewport of at least one pixel.
    bool calcFromTo(Int16 x, Int16 y, Real32 &fromX, Real32 &fromY, Real32 &toX, Real32 &toY);
    /// Turns by the way of the pointer since the last look. `value` is not used.
    void rotate_move(Real32 value, Int16 x, Int16 y);

    // --- motion; positive steps go backwards, to the left and up ---
    void calc_frame(Vec3f &back, Vec3f &left, Vec3f &upDir) const;
    void view_dir_move(Real32 step, Int16 x, Int16 y);
    void horizontal_move(Real32 step, Int16 x, Int16 y);
    void vertical_move(Real32 step, Int16 x, Int16 y);
    /// To the right by `yaw` and down by `pitch`, in radians.
    void rotate(Real32 yaw, Real32 pitch);
    void rotate_horizont(Real32 fraction);

    // --- the same without a change; see WalkMotion ---
    MoveResult view_dir_move_imp(Real32 step, Real32 jump, Vec3f const &back, Vec3f const &left,
                                 Vec3f const &upDir);
    MoveResult horizontal_move_imp(Real32 step, Real32 jump, Vec3f const &back, Vec3f const &left,
                                   Vec3f const &upDir);
    MoveResult vertical_move_imp(Real32 step, Vec3f const &back, Vec3f const &left,
                                 Vec3f const &upDir);
    MoveResult fall_imp(Vec3f const &back, Vec3f const &left, Vec3f const &upDir);
    MoveResult rotate_imp(Real32 yaw, Real32 pitch);
    boost::optional<Real32> determine_max_jump(Real32 jump);

    // --- queries: the distance and the normal of a hit ---
    boost::optional<std::pair<Real32, Vec3f>> intersection(Frustum const &frustum,
                                                           SelectionFunctor::PlaneType plane);
    boost::optional<std::pair<Real32, Vec3f>> intersection(Line const &line);
    Frustum getFrustum(FrustumType type, Pnt3f const &position, Vec3f const &back,
                       Vec3f const &left, Vec3f const &upDir, Real32 distance);
    /// Writes a box and a step to the debugger of the desktop.
    void test(Frustum const &frustum, Pnt3f const &from, Pnt3f const &to);

  private:
    Viewport *viewport() const;
    WIN32Window *window() const;
    NativeWindow nativeWindow() const;
    void note(Int16 x, Int16 y, Navigator *navigator);
    void turnWheel(bool increases);
    void pressVirtualKey(Int16 logicalKey);
    void pressCharacter(Int16 logicalKey);
    void enterConsoleMode();
    void moveByKey(Int16 logicalKey, Real32 milliseconds);
    Real32 millisecondsUntil(Int64 ticks) const;
    void followFieldOfView(Navigator const &navigator) const;
    WalkScene &scene();
    WalkMotion motion() { return WalkMotion(_settings, _pose, scene()); }
    void take(WalkMotion::Result const &result);
    void take(MoveResult const &move);

    std::shared_ptr<Desktop> _desktop;
    WalkSettings _settings;
    WalkScene _scene;
    WalkPointer _pointer;
    EyePose _pose;
    Matrix _matrix;
    std::map<Int16, key_data> _motionKeys;
    std::map<Int16, key_data> _optionKeys;
    Navigator *_navigator = nullptr; // of the last event, not owned
    WalkObserver *_observer = nullptr;
    Int64 _ticksPerSecond;
    Int64 _lastTime;  // end of the last evaluate()
    Int16 _lastX = 0; // the pointer at the last event
    Int16 _lastY = 0;
    Int16 _prevX = 0; // and where the next look begins
    Int16 _prevY = 0;
    bool _keyMoved = false; // a motion key was down in the last evaluate()
    bool _silent = false;
    bool _missingReported = false;
};
} // namespace OSG
