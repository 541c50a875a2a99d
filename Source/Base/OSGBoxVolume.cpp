#include "OSGBoxVolume.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "OSGFrustumVolume.h"

namespace OSG
{
namespace
{
bool is_number(Pnt3f const &p)
{
    return !std::isnan(p[0]) && !std::isnan(p[1]) && !std::isnan(p[2]);
}

bool any_corner_inside(BoxVolume const &box, Plane const &plane)
{
    // The corner farthest along the normal decides. Rounding is monotone and all corners are
    // computed in the same order of operations, so none of the other seven can get a larger value.
    Vec3f const &normal = plane.getNormal();
    Pnt3f const *const bounds[2] = {&box.getMin(), &box.getMax()};
    Pnt3f const farthest((*bounds[normal[0] >= 0.f])[0], (*bounds[normal[1] >= 0.f])[1],
                         (*bounds[normal[2] >= 0.f])[2]);
    Real32 const distance = plane.distance(farthest);
    if(!std::isnan(distance))
        return distance >= 0.f;
    // With infinite bounds the product may be 0 times infinity, which is NaN. Then every corner is
    // tested.
    for(unsigned corner = 0; corner < 8; ++corner)
    {
        Pnt3f const p((*bounds[corner & 1])[0], (*bounds[corner >> 1 & 1])[1],
                      (*bounds[corner >> 2])[2]);
        if(plane.isInHalfSpace(p))
            return true;
    }
    return false;
}
} // namespace

BoxVolume::BoxVolume()
    : Volume(true)
{
}

BoxVolume::BoxVolume(Pnt3f const &min, Pnt3f const &max)
    : Volume(false)
    , _min(min)
    , _max(max)
{
}

BoxVolume::~BoxVolume() = default;

void BoxVolume::setBounds(Pnt3f const &min, Pnt3f const &max)
{
    _min = min;
    _max = max;
    setEmpty(false);
}

void BoxVolume::getCenter(Pnt3f &center) const
{
    if(isEmpty())
        center = Pnt3f();
    else // halved before the sum, which could overflow
        center = _min * 0.5f + (_max * 0.5f).subZero();
}

void BoxVolume::getBounds(Pnt3f &min, Pnt3f &max) const
{
    min = isEmpty() ? Pnt3f() : _min;
    max = isEmpty() ? Pnt3f() : _max;
}

bool BoxVolume::intersect(Volume const &other) const
{
    if(auto const *box = dynamic_cast<BoxVolume const *>(&other))
        return intersectBox(*box);
    if(auto const *frustum = dynamic_cast<FrustumVolume const *>(&other))
        return intersectFrustum(*frustum);
    return !isEmpty() && !other.isEmpty();
}

bool BoxVolume::intersectBox(BoxVolume const &other) const
{
    if(isEmpty() || other.isEmpty())
        return false;
    if(isInfinite() || other.isInfinite())
        return true;
    for(int axis = 0; axis < 3; ++axis)
    {
        if(_max[axis] < other._min[axis] || other._max[axis] < _min[axis])
            return false;
    }
    return true;
}

bool BoxVolume::intersectFrustum(FrustumVolume const &frustum) const
{
    if(isEmpty() || frustum.isEmpty())
        return false;
    if(isInfinite() || frustum.isInfinite())
        return true;
    for(Plane const &plane : frustum.getPlanes())
    {
        if(!any_corner_inside(*this, plane))
            return false;
    }
    return true;
}

bool BoxVolume::intersect(Line const &line, Real32 &enter, Real32 &exit) const
{
    enter = 0.f;
    exit = std::numeric_limits<Real32>::infinity();
    if(isEmpty() || isInfinite())
        return isInfinite();
    // The slab method.
    for(int axis = 0; axis < 3; ++axis)
    {
        Real32 const position = line.getPosition()[axis];
        Real32 const direction = line.getDirection()[axis];
        if(direction == 0.f)
        {
            if(position < _min[axis] || position > _max[axis])
                return false;
            continue;
        }
        Real32 const toMin = (_min[axis] - position) / direction;
        Real32 const toMax = (_max[axis] - position) / direction;
        Real32 const nearest = direction > 0.f ? toMin : toMax;
        Real32 const farthest = (direction > 0.f ? toMax : toMin) * ExitSafety;
        if(nearest > enter)
            enter = nearest;
        if(farthest < exit)
            exit = farthest;
    }
    return enter <= exit;
}

bool BoxVolume::intersect(Pnt3f const &point) const
{
    if(isEmpty() || isInfinite())
        return isInfinite();
    for(int axis = 0; axis < 3; ++axis)
    {
        if(!(point[axis] >= _min[axis] && point[axis] <= _max[axis]))
            return false;
    }
    return true;
}

void BoxVolume::extendBy(Pnt3f const &point)
{
    if(isFixed() || !is_number(point))
        return;
    if(isEmpty())
    {
        setBounds(point, point);
        return;
    }
    for(int axis = 0; axis < 3; ++axis)
    {
        if(point[axis] < _min[axis])
            _min[axis] = point[axis];
        if(point[axis] > _max[axis])
            _max[axis] = point[axis];
    }
}

void BoxVolume::extendBy(Volume const &other)
{
    if(isFixed() || other.isEmpty() || !other.isValid())
        return;
    if(other.isInfinite())
    {
        setInfinite();
        return;
    }
    Pnt3f min;
    Pnt3f max;
    other.getBounds(min, max);
    extendBy(min);
    extendBy(max);
}

void BoxVolume::transform(Matrix const &matrix)
{
    if(isEmpty() || isInfinite())
        return;
    // After Arvo (Transforming Axis-Aligned Bounding Boxes, 1990). Each coordinate of the result is
    // a sum of three terms, and the smallest sum takes the smaller of each two terms. Rounding is
    // monotone, so this gives the same bits as transforming all eight corners.
    Pnt3f min;
    Pnt3f max;
    bool numbers = true;
    for(int r = 0; r < 3; ++r)
    {
        Real32 low = 0.f;
        Real32 high = 0.f;
        for(int c = 0; c < 3; ++c)
        {
            Real32 const a = matrix[c][r] * _min[c];
            Real32 const b = matrix[c][r] * _max[c];
            numbers = numbers && !std::isnan(a) && !std::isnan(b);
            low = c == 0 ? std::min(a, b) : low + std::min(a, b);
            high = c == 0 ? std::max(a, b) : high + std::max(a, b);
        }
        min[r] = low + matrix[3][r];
        max[r] = high + matrix[3][r];
    }
    if(numbers && is_number(min) && is_number(max))
    {
        _min = min;
        _max = max;
    }
    else
        setInfinite();
}

void BoxVolume::extendByBox(BoxVolume const &other)
{
    bool const isBox = !other.isEmpty() && other.isValid() && !other.isInfinite();
    if(isFixed() || !isBox || !is_number(other._min) || !is_number(other._max))
    {
        extendBy(other);
        return;
    }
    if(isEmpty())
        setBounds(other._min, other._min);
    // A host may have set the corners of the box in either order.
    for(int axis = 0; axis < 3; ++axis)
    {
        Real32 const low = std::min(other._min[axis], other._max[axis]);
        Real32 const high = std::max(other._min[axis], other._max[axis]);
        _min[axis] = low < _min[axis] ? low : _min[axis];
        _max[axis] = high > _max[axis] ? high : _max[axis];
    }
}

void extend(BoxVolume &box, BoxVolume const &other) { box.extendByBox(other); }
} // namespace OSG
