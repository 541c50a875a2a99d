#include "OSGWASDWalkEngine.h"

#include <new>

#include "OSGNavigator.h"
#include "OSGWalkLook.h"

namespace OSG
{
WASDWalkEngine::WASDWalkEngine()
    : _desktop(Desktop::current())
    , _pointer(_desktop)
    , _motionKeys(WalkKeys::motion_keys())
    , _optionKeys(WalkKeys::option_keys())
    , _ticksPerSecond(_desktop->getTicksPerSecond())
    , _lastTime(_desktop->getTicks())
{
}

WASDWalkEngine::~WASDWalkEngine() = default;

// Actions and key tables have blocks of their own, so that memory may run out in the constructor.
TransitPtr<WASDWalkEngine> WASDWalkEngine::create()
{
    void *const block = MemMalloc(sizeof(WASDWalkEngine));
    if(block == nullptr)
        return TransitPtr<WASDWalkEngine>(nullptr);
    try
    {
        return TransitPtr<WASDWalkEngine>(new(block) WASDWalkEngine);
    }
    catch(std::bad_alloc const &)
    {
        MemFree(block);
        return TransitPtr<WASDWalkEngine>(nullptr);
    }
}

// --- pose ---

Pnt3f const &WASDWalkEngine::getFrom() { return _pose.from(); }
Pnt3f const &WASDWalkEngine::getAt() { return _pose.at(); }
Vec3f const &WASDWalkEngine::getUp() { return _pose.up(); }

Matrix const &WASDWalkEngine::getMatrix()
{
    _pose.writeMatrix(_matrix);
    return _matrix;
}

Real32 WASDWalkEngine::getDistance() { return 0.f; }
void WASDWalkEngine::setFrom(Pnt3f from) { _pose.setFrom(from); }
void WASDWalkEngine::setAt(Pnt3f at) { _pose.setAt(at); }
void WASDWalkEngine::setUp(Vec3f up) { _pose.setUp(up); }

void WASDWalkEngine::set(Matrix const &matrix)
{
    EyePose const pose(matrix);
    set(pose.from(), pose.at(), pose.up());
}

void WASDWalkEngine::set(Pnt3f from, Pnt3f at, Vec3f up) { _pose.set(from, at, up); }

void WASDWalkEngine::setDistance(Real32 distance)
{
    _prevX = 0;
    _prevY = 0;
    view_dir_move(distance, 0, 0);
}

// --- settings ---

void WASDWalkEngine::getPersonDimensions(Real32 &height, Real32 &heightEye, Real32 &width,
                                         Real32 &fatness) const
{
    height = _settings.height;
    heightEye = _settings.heightEye;
    width = _settings.width;
    fatness = _settings.fatness;
}

void WASDWalkEngine::setPersonDimensions(Real32 height, Real32 heightEye, Real32 width,
                                         Real32 fatness)
{
    _settings.height = height;
    _settings.heightEye = heightEye;
    _settings.width = width;
    _settings.fatness = fatness;
}

Real32 WASDWalkEngine::getMotionFactor() const
{
    return percent_of_factor(_settings.motionFactor, _settings.motionMaxFactor);
}

void WASDWalkEngine::setMotionFactor(Real32 percent)
{
    _settings.motionFactor = factor_of_percent(percent, _settings.motionMaxFactor);
}

Real32 WASDWalkEngine::getRotationFactor() const
{
    return percent_of_factor(_settings.rotFactor, _settings.rotMaxFactor);
}

void WASDWalkEngine::setRotationFactor(Real32 percent)
{
    _settings.rotFactor = factor_of_percent(percent, _settings.rotMaxFactor);
}

// --- queries ---

// Without a viewport every node counts.
WalkScene &WASDWalkEngine::scene()
{
    Viewport const *const view = viewport();
    _scene.setTravMask(view != nullptr ? view->getTravMask() : 0xFFFFFFFFu);
    return _scene;
}

namespace
{
boost::optional<std::pair<Real32, Vec3f>> answer_of(std::optional<WalkObstacle> const &hit)
{
    if(!hit)
        return boost::none;
    return std::pair<Real32, Vec3f>(hit->distance, hit->normal);
}
} // namespace

boost::optional<std::pair<Real32, Vec3f>>
WASDWalkEngine::intersection(Frustum const &frustum, SelectionFunctor::PlaneType plane)
{
    return answer_of(scene().box(frustum, plane));
}

boost::optional<std::pair<Real32, Vec3f>> WASDWalkEngine::intersection(Line const &line)
{
    return answer_of(scene().ray(line));
}

Frustum WASDWalkEngine::getFrustum(FrustumType type, Pnt3f const &position, Vec3f const &back,
                                   Vec3f const &left, Vec3f const &upDir, Real32 distance)
{
    return WalkBody::box(type, position, {back, left, upDir}, _settings, distance);
}

void WASDWalkEngine::test(Frustum const &frustum, Pnt3f const &from, Pnt3f const &to)
{
    _desktop->writeDebugText(WalkBody::text_of(frustum, from, to).c_str());
}

// --- single tries ---

WASDWalkEngine::MoveResult WASDWalkEngine::view_dir_move_imp(Real32 step, Real32 jump,
                                                             Vec3f const &back, Vec3f const &left,
                                                             Vec3f const &upDir)
{
    return motion().tryStep(WalkStep::Direction::AlongView, step, jump, {back, left, upDir});
}

WASDWalkEngine::MoveResult WASDWalkEngine::horizontal_move_imp(Real32 step, Real32 jump,
                                                               Vec3f const &back, Vec3f const &left,
                                                               Vec3f const &upDir)
{
    return motion().tryStep(WalkStep::Direction::Sideways, step, jump, {back, left, upDir});
}

WASDWalkEngine::MoveResult WASDWalkEngine::vertical_move_imp(Real32 step, Vec3f const &back,
                                                             Vec3f const &left, Vec3f const &upDir)
{
    return motion().tryVertical(step, {back, left, upDir});
}

WASDWalkEngine::MoveResult WASDWalkEngine::fall_imp(Vec3f const &back, Vec3f const &left,
                                                    Vec3f const &upDir)
{
    return motion().tryFall({back, left, upDir});
}

boost::optional<Real32> WASDWalkEngine::determine_max_jump(Real32 jump)
{
    return motion().findRaise(jump);
}

// --- moves ---

void WASDWalkEngine::take(MoveResult const &move)
{
    if(move)
        _pose.set(move->first, move->second, _pose.up());
}

void WASDWalkEngine::take(WalkMotion::Result const &result)
{
    take(result.move);
    if(_observer == nullptr)
        return;
    WalkStep step = result.step;
    step.after = _pose.from();
    _observer->observe(step);
}

void WASDWalkEngine::calc_frame(Vec3f &back, Vec3f &left, Vec3f &upDir) const
{
    Pnt3f position;
    getFrame(position, back, left, upDir);
}

void WASDWalkEngine::getFrame(Pnt3f &position, Vec3f &back, Vec3f &left, Vec3f &upDir) const
{
    WalkFrame const frame = WalkBody::frame_of(_pose.from(), _pose.at(), _pose.up());
    position = _pose.from();
    back = frame.back;
    left = frame.left;
    upDir = frame.up;
}

void WASDWalkEngine::view_dir_move(Real32 step, Int16 x, Int16 y)
{
    rotate_move(step, x, y);
    WalkMotion::Result result =
        motion().step(WalkStep::Direction::AlongView, step, _settings.jump());
    result.step.isAfterSpace = !_settings.staircaseMode;
    _settings.staircaseMode = true;
    take(result);
}

void WASDWalkEngine::horizontal_move(Real32 step, Int16 x, Int16 y)
{
    rotate_move(step, x, y);
    WalkMotion::Result result = motion().step(WalkStep::Direction::Sideways, step,
                                              _settings.height * _settings.jumpStaircaseStrength);
    result.step.isAfterSpace = !_settings.staircaseMode;
    take(result);
}

void WASDWalkEngine::vertical_move(Real32 step, Int16 x, Int16 y)
{
    if(_settings.walkMode)
        return;
    rotate_move(step, x, y);
    take(motion().stepVertically(step));
}

WASDWalkEngine::MoveResult WASDWalkEngine::rotate_imp(Real32 yaw, Real32 pitch)
{
    Pnt3f const at = WalkLook::turned(_pose.from(), _pose.at(), _pose.up(), yaw, pitch);
    if(!is_finite(at))
        return boost::none;
    return std::pair<Pnt3f, Pnt3f>(_pose.from(), at);
}

void WASDWalkEngine::rotate(Real32 yaw, Real32 pitch) { take(rotate_imp(yaw, pitch)); }

void WASDWalkEngine::rotate_horizont(Real32 fraction)
{
    constexpr Real32 Smallest = 1e-6f;
    Real32 const pitch = WalkLook::pitch_to_horizon(_pose.from(), _pose.at(), _pose.up(), fraction);
    if(std::abs(pitch) > Smallest)
        rotate(0.f, pitch);
}

void WASDWalkEngine::fall()
{
    WalkMotion down = motion();
    take(down.tryFall(down.frame()));
}

bool WASDWalkEngine::can_fall(Pnt3f const &position)
{
    return intersection(Line(position, -_pose.up())).has_value();
}
} // namespace OSG
