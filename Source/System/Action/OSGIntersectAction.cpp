#include "OSGIntersectAction.h"

#include <algorithm>
#include <cmath>

#include "OSGActionDefaults.h"
#include "OSGNode.h"

namespace OSG
{
// --- functions by type ---

namespace
{
constinit ActionDefaults defaults;
} // namespace

void IntersectAction::registerEnterDefault(FieldContainerType const &type, Functor const &function,
                                           HandlerPromise promise)
{
    defaults.registerEnter(type, function, promise);
}

void IntersectAction::registerLeaveDefault(FieldContainerType const &type, Functor const &function,
                                           HandlerPromise promise)
{
    defaults.registerLeave(type, function, promise);
}

Action::FunctorStore *IntersectAction::getDefaultEnterFunctors()
{
    return &defaults.resolvedEnter().functors;
}

Action::FunctorStore *IntersectAction::getDefaultLeaveFunctors()
{
    return &defaults.resolvedLeave().functors;
}

// --- creation and ray ---

IntersectAction::IntersectAction()
{
    ActionDefaults::Table const &enter = defaults.resolvedEnter();
    takeEnterFunctions(enter.functors, enter.promises);
    ActionDefaults::Table const &leave = defaults.resolvedLeave();
    takeLeaveFunctions(leave.functors, leave.promises);
}

IntersectAction::~IntersectAction() = default;

TransitPtr<IntersectAction> IntersectAction::create()
{
    return TransitPtr<IntersectAction>(new IntersectAction);
}

void IntersectAction::setLine(Line const &line, Real32 maxDist)
{
    _line = line;
    _maxDistance = maxDist;
}

void IntersectAction::scale(Real32 factor)
{
    _maxDistance *= factor;
    _hitDistance *= factor;
}

// --- the walk ---

ActionBase::ResultE IntersectAction::start()
{
    _rootLine = _line;
    _rootMaxDistance = _maxDistance;
    _spaces.clear();
    forgetHit();
    return Continue;
}

void IntersectAction::forgetHit()
{
    _hitNode = nullptr;
    _hitTriangle = -1;
    _hitDistance = 0;
    _hitNormal = Vec3f();
    _hits = 0;
}

// A function may replace the ray by itself and put it back with rounding errors. The exact ray is
// restored here.
ActionBase::ResultE IntersectAction::stop(ResultE result)
{
    _line = _rootLine;
    _maxDistance = _rootMaxDistance;
    return result;
}

void IntersectAction::cancel()
{
    _line = _rootLine;
    _maxDistance = _rootMaxDistance;
    _spaces.clear();
    forgetHit();
}

bool IntersectAction::passesVolume() const
{
    BoxVolume const &volume = getActNode()->getVolume();
    Real32 enter;
    Real32 exit;
    return volume.isValid() && !volume.intersect(_line, enter, exit);
}

namespace
{
/// One coordinate of a ray, for the slabs of eight boxes.
struct RayAxis
{
    Real32 position;
    Real32 direction;
    Real32 inverse;
    bool isUsable; // else no box is missed along it

    RayAxis(Line const &line, int axis)
        : position(line.getPosition()[axis])
        , direction(line.getDirection()[axis])
        , inverse(1.f / direction)
        , isUsable(std::isfinite(position) &&
                   (direction == 0.f || (std::isfinite(direction) && std::isfinite(inverse))))
    {
    }

    void clip(FourReal32 const &min, FourReal32 const &max, FourReal32 &enter,
              FourReal32 &exit) const
    {
        if(!isUsable)
            return;
        if(direction == 0.f)
        {
            FourReal32 const outside = FourReal32{} - std::numeric_limits<Real32>::infinity();
            exit = (position < min) | (position > max) ? outside : exit;
            return;
        }
        FourReal32 const toMin = (min - position) * inverse;
        FourReal32 const toMax = (max - position) * inverse;
        FourReal32 const nearest = direction > 0.f ? toMin : toMax;
        FourReal32 const farthest = direction > 0.f ? toMax : toMin;
        enter = nearest > enter ? nearest : enter;
        exit = farthest < exit ? farthest : exit;
    }
};
} // namespace

// The slab test of BoxVolume::intersect. It is monotone, so that a ray that misses a box misses the
// boxes in it. The product with the inverse differs from the quotient by less than three units in
// the last place, which the margin covers along with the one of the other test.
void IntersectAction::findMissed(BoxLanes const *boxes, std::size_t count, UInt8 *missed) const
{
    constexpr Real32 Margin =
        BoxVolume::ExitSafety * (1.f + 16.f * std::numeric_limits<Real32>::epsilon());
    RayAxis const axes[3] = {RayAxis(_line, 0), RayAxis(_line, 1), RayAxis(_line, 2)};
    find_missed(boxes, count, missed,
                [&axes](BoxLanes const &lanes, UInt32 quad)
                {
                    FourReal32 enter{};
                    FourReal32 exit = FourReal32{} + std::numeric_limits<Real32>::infinity();
                    for(int axis = 0; axis < 3; ++axis)
                        axes[axis].clip(lanes.minOf(axis, quad), lanes.maxOf(axis, quad), enter,
                                        exit);
                    return enter > exit * Margin;
                });
}

bool IntersectAction::pushSpace(Matrix const &toParent)
{
    Space space{{}, 0, _line, _maxDistance, _hitDistance, _hits};
    if(!space.toLocal.invertFrom(Matrix4d(toParent)))
        return false;
    Pnt3f const &position = _line.getPosition();
    Vec3f const &direction = _line.getDirection();
    Pnt3d const from = space.toLocal * Pnt3d(position[0], position[1], position[2]);
    Vec3d const along = space.toLocal * Vec3d(direction[0], direction[1], direction[2]);
    space.scale = along.length();
    if(!(space.scale > 0) || !std::isfinite(space.scale))
        return false;
    // A line does not normalise short directions, so it is done here.
    Vec3d const unit = along * (1 / space.scale);
    _line.setValue(Pnt3f(from[0], from[1], from[2]), Vec3f(unit[0], unit[1], unit[2]));
    _maxDistance *= space.scale;
    _hitDistance *= space.scale;
    _spaces.push_back(space);
    return true;
}

namespace
{
/// The normal of a plane in the space outside, from its normal in the local space.
Vec3f normal_outside(Matrix4d const &toLocal, Vec3f const &local)
{
    Real64 outside[3];
    for(int c = 0; c < 3; ++c)
        outside[c] = toLocal[c][0] * local[0] + toLocal[c][1] * local[1] + toLocal[c][2] * local[2];
    Vec3d const normal(outside[0], outside[1], outside[2]);
    Real64 const length = normal.length();
    Vec3d const unit = length > 0 ? normal * (1 / length) : normal;
    return Vec3f(unit[0], unit[1], unit[2]);
}
} // namespace

void IntersectAction::popSpace()
{
    Space const &space = _spaces.back();
    if(_hits != space.hits)
    {
        _hitDistance /= space.scale;
        _hitNormal = normal_outside(space.toLocal, _hitNormal);
    }
    else
        _hitDistance = space.hitDistance;
    _line = space.line;
    _maxDistance = space.maxDistance;
    _spaces.pop_back();
}

Real64 IntersectAction::getReach() const
{
    return didHit() && _hitDistance < _maxDistance ? _hitDistance : _maxDistance;
}

bool IntersectAction::setHit(Real64 distance, Int32 triangle, Vec3f const &normal)
{
    bool const inReach = distance >= 0 && distance <= _maxDistance;
    if(!inReach || (didHit() && !(distance < _hitDistance)))
        return false;
    _hitDistance = distance;
    _hitNormal = normal;
    _hitNode = getActNode();
    _hitTriangle = triangle;
    ++_hits;
    return true;
}
} // namespace OSG
