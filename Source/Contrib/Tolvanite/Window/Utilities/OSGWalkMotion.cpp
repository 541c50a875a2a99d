#include "OSGWalkMotion.h"

#include <cmath>

#include "OSGFrustum.h"
#include "OSGNavigationMath.h"

namespace OSG
{
using WalkBody::FrustumType;
using PlaneType = SelectionFunctor::PlaneType;

WalkMotion::WalkMotion(WalkSettings const &settings, EyePose const &pose, WalkSpace &space)
    : _settings(settings)
    , _pose(pose)
    , _space(space)
{
}

WalkFrame WalkMotion::frame() const
{
    return WalkBody::frame_of(_pose.from(), _pose.at(), _pose.up());
}

// --- queries ---

std::optional<WalkObstacle> WalkMotion::askBox(FrustumType type, PlaneType plane, Pnt3f const &top,
                                               WalkFrame const &frame, Real32 depth)
{
    ++_queries;
    return _space.box(WalkBody::box(type, top, frame, _settings, depth), plane);
}

std::optional<WalkObstacle> WalkMotion::askDown(Pnt3f const &position, WalkFrame const &frame)
{
    ++_queries;
    return _space.ray(Line(position, -frame.up));
}

namespace
{
bool is_finite_box(Frustum const &box)
{
    return is_finite(box.nlb()) && is_finite(box.nrb()) && is_finite(box.nrt()) &&
           is_finite(box.nlt()) && is_finite(box.flb()) && is_finite(box.frb()) &&
           is_finite(box.frt()) && is_finite(box.flt());
}
} // namespace

// The box also holds what is nearer to the person than `margin` before it moves. A box that is not
// finite would find nothing, whatever is in the way.
bool WalkMotion::isFree(FrustumType type, PlaneType plane, Pnt3f const &top, WalkFrame const &frame,
                        Real32 margin, Real32 length, Refusal *refusal)
{
    Frustum const way = WalkBody::box(type, top, frame, _settings, margin + length);
    if(!is_finite_box(way))
        return false;
    ++_queries;
    std::optional<WalkObstacle> hit = _space.box(way, plane);
    if(!hit || !(margin >= hit->distance - length))
        return true;
    if(refusal != nullptr)
        *refusal = std::move(hit);
    return false;
}

// --- single tries ---

namespace
{
/// What differs between the directions of a horizontal step.
struct Way
{
    Vec3f axis;
    Real32 halfBody; // half the size of the body along the axis
    FrustumType type;
    PlaneType plane; // the face of the box that goes through the person
};

Way way_of(WalkStep::Direction direction, Real32 step, WalkFrame const &frame,
           WalkSettings const &settings)
{
    bool const isForwards = step >= 0.f;
    if(direction == WalkStep::Direction::AlongView)
        return {frame.back, settings.fatness * 0.5f,
                isForwards ? WalkBody::BackwardFrustum : WalkBody::ForwardFrustum,
                SelectionFunctor::FarPlane};
    return {frame.left, settings.width * 0.5f,
            isForwards ? WalkBody::LeftFrustum : WalkBody::RightFrustum,
            SelectionFunctor::NearPlane};
}
} // namespace

WalkMotion::Move WalkMotion::tryStep(Direction direction, Real32 step, Real32 jump,
                                     WalkFrame const &frame)
{
    boost::optional<Real32> const raise = findRaise(jump);
    if(!raise)
        return boost::none;
    return tryRaised(direction, step, *raise, frame);
}

WalkMotion::Move WalkMotion::tryRaised(Direction direction, Real32 step, Real32 raise,
                                       WalkFrame const &frame, Refusal *refusal)
{
    Way const way = way_of(direction, step, frame, _settings);
    Vec3f const lift = (raise + _settings.head()) * frame.up;
    Pnt3f const top = _pose.from() + lift;
    Pnt3f newTop = top + step * way.axis;
    Pnt3f newAt = _pose.at() + lift + step * way.axis;
    if(!_settings.godMode &&
       !isFree(way.type, way.plane, top, frame, way.halfBody + _settings.wallDistance,
               (newTop - top).length(), refusal))
        return boost::none;
    if(_settings.walkMode)
        setDown(newTop, newAt, frame);
    return atEye(newTop, newAt, frame);
}

// The line decides whether there is a floor at all. The box then finds what the feet would stand
// on: it has the size of the body, so that no foot sinks into a step beside the line.
void WalkMotion::setDown(Pnt3f &top, Pnt3f &at, WalkFrame const &frame)
{
    std::optional<WalkObstacle> floor = askDown(top, frame);
    if(!floor)
        return;
    std::optional<WalkObstacle> const below =
        askBox(WalkBody::DownFrustum, SelectionFunctor::TopPlane, top, frame, floor->distance);
    Real32 const distance = below ? below->distance : floor->distance;
    if(!(distance > floorLimit()))
        return;
    Vec3f const drop = (distance - floorLimit()) * frame.up;
    top -= drop;
    at -= drop;
}

WalkMotion::Move WalkMotion::atEye(Pnt3f const &top, Pnt3f const &at, WalkFrame const &frame) const
{
    Vec3f const head = _settings.head() * frame.up;
    std::pair<Pnt3f, Pnt3f> const result(top - head, at - head);
    if(!is_finite(result.first) || !is_finite(result.second))
        return boost::none;
    return result;
}

WalkMotion::Move WalkMotion::tryVertical(Real32 step, WalkFrame const &frame, Refusal *refusal)
{
    Vec3f const head = _settings.head() * frame.up;
    Pnt3f const top = _pose.from() + head;
    Pnt3f const newTop = top + step * frame.up;
    Pnt3f const newAt = _pose.at() + head + step * frame.up;
    bool const rises = step >= 0.f;
    if(!_settings.godMode &&
       !isFree(rises ? WalkBody::UpFrustum : WalkBody::DownFrustum, SelectionFunctor::TopPlane, top,
               frame, rises ? _settings.wallDistance : floorLimit(), (newTop - top).length(),
               refusal))
        return boost::none;
    return atEye(newTop, newAt, frame);
}

WalkMotion::Move WalkMotion::tryFall(WalkFrame const &frame)
{
    Vec3f const head = _settings.head() * frame.up;
    std::optional<WalkObstacle> const floor = askDown(_pose.from(), frame);
    if(!floor)
        return boost::none;
    std::optional<WalkObstacle> const below = askBox(
        WalkBody::DownFrustum, SelectionFunctor::TopPlane, _pose.from(), frame, floor->distance);
    if(!below || !(below->distance > floorLimit()))
        return boost::none;
    Vec3f const drop = (below->distance - floorLimit()) * frame.up;
    return atEye(_pose.from() + head - drop, _pose.at() + head - drop, frame);
}

boost::optional<Real32> WalkMotion::findRaise(Real32 jump)
{
    constexpr Real32 Smallest = 1e-6f;
    if(jump < Smallest)
        return jump;
    WalkFrame const own = frame();
    Real32 found = 0.f;
    Real32 half = jump;
    Real32 value = jump;
    for(UInt32 pass = 0; pass < _settings.numStepLoop; ++pass)
    {
        bool const isRoom = tryVertical(value, own).has_value();
        half *= 0.5f;
        if(isRoom)
            found = value;
        Real32 const next = isRoom ? value + half : value - half;
        if(isRoom && next >= jump)
            return found;
        if(next == value || std::isnan(next))
            break; // further passes would try the same value
        value = next;
    }
    if(found > 0.f)
        return found;
    return boost::none;
}

// --- whole steps ---

namespace
{
/// Halves the step for another pass. False where the pass would be the same again.
bool halve(Real32 &step)
{
    Real32 const half = step * 0.5f;
    if(half == step || std::isnan(half))
        return false;
    step = half;
    return true;
}
} // namespace

WalkMotion::Result WalkMotion::begin(Direction direction, Real32 step) const
{
    Result result;
    result.step.direction = direction;
    result.step.step = step;
    result.step.before = _pose.from();
    result.step.up = frame().up;
    return result;
}

WalkMotion::Result WalkMotion::step(Direction direction, Real32 step, Real32 jump)
{
    WalkFrame const own = frame();
    Result result = begin(direction, step);
    UInt32 const queriesBefore = _queries;
    // The person has not moved between the tries, so all raised ones have the same raise.
    boost::optional<Real32> raise;
    bool isRaiseKnown = false;
    for(UInt32 pass = 0; pass < _settings.numStepLoop; ++pass)
    {
        result.step.step = step;
        result.step.obstacle.reset();
        result.move = tryRaised(direction, step, 0.f, own, &result.step.obstacle);
        if(result.move)
        {
            result.step.outcome = WalkStep::Outcome::Level;
            break;
        }
        if(!isRaiseKnown)
            raise = findRaise(jump);
        isRaiseKnown = true;
        if(raise)
            result.move = tryRaised(direction, step, *raise, own);
        if(result.move)
        {
            result.step.outcome = WalkStep::Outcome::Raised;
            result.step.raise = *raise;
            break;
        }
        if(!halve(step))
            break;
    }
    result.step.queries = _queries - queriesBefore;
    return result;
}

WalkMotion::Result WalkMotion::stepVertically(Real32 step)
{
    WalkFrame const own = frame();
    Result result = begin(Direction::Vertical, step);
    UInt32 const queriesBefore = _queries;
    for(UInt32 pass = 0; pass < _settings.numStepLoop; ++pass)
    {
        result.step.step = step;
        result.step.obstacle.reset();
        result.move = tryVertical(step, own, &result.step.obstacle);
        if(result.move)
        {
            result.step.outcome = WalkStep::Outcome::Level;
            break;
        }
        if(!halve(step))
            break;
    }
    result.step.queries = _queries - queriesBefore;
    return result;
}
} // namespace OSG
