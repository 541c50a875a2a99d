#include "OSGFrustumVolume.h"

#include <cmath>
#include <limits>

#include "OSGBoxVolume.h"

namespace OSG
{
namespace
{
/// Computes the common point of three planes by Cramer's rule. False where they have none.
bool common_point(Plane const &a, Plane const &b, Plane const &c, Pnt3f &point)
{
    Vec3f const bc = b.getNormal().cross(c.getNormal());
    Vec3f const ca = c.getNormal().cross(a.getNormal());
    Vec3f const ab = a.getNormal().cross(b.getNormal());
    Real32 const determinant = a.getNormal().dot(bc);
    if(!(std::abs(determinant) >= 1e-12f))
        return false;
    Vec3f const sum = bc * a.getDistanceFromOrigin() + ca * b.getDistanceFromOrigin() +
                      ab * c.getDistanceFromOrigin();
    point = Pnt3f() + sum / determinant;
    return true;
}
} // namespace

FrustumVolume::FrustumVolume()
    : Volume(false)
{
}

FrustumVolume::FrustumVolume(Plane const &near, Plane const &far, Plane const &left,
                             Plane const &right, Plane const &top, Plane const &bottom)
    : Volume(false)
    , _planes{near, far, left, right, top, bottom}
{
}

FrustumVolume::~FrustumVolume() = default;

bool FrustumVolume::getCorners(std::array<Pnt3f, 8> &corners) const
{
    static constexpr UInt32 sides[4] = {2, 3, 3, 2};     // left, right, right, left
    static constexpr UInt32 verticals[4] = {5, 5, 4, 4}; // bottom, bottom, top, top
    for(UInt32 i = 0; i < 8; ++i)
    {
        Plane const &depth = _planes[i / 4];
        if(!common_point(depth, _planes[sides[i % 4]], _planes[verticals[i % 4]], corners[i]))
            return false;
    }
    return true;
}

void FrustumVolume::getCenter(Pnt3f &center) const
{
    center = Pnt3f();
    std::array<Pnt3f, 8> corners;
    if(!getCorners(corners))
        return;
    for(Pnt3f const &corner : corners)
        center += corner.subZero() * 0.125f;
}

void FrustumVolume::getBounds(Pnt3f &min, Pnt3f &max) const
{
    constexpr Real32 Largest = std::numeric_limits<Real32>::max();
    std::array<Pnt3f, 8> corners;
    if(isInfinite() || !getCorners(corners))
    {
        min = Pnt3f(-Largest, -Largest, -Largest);
        max = Pnt3f(Largest, Largest, Largest);
        return;
    }
    BoxVolume box;
    for(Pnt3f const &corner : corners)
        box.extendBy(corner);
    box.getBounds(min, max);
}

bool FrustumVolume::intersect(Volume const &other) const
{
    if(auto const *box = dynamic_cast<BoxVolume const *>(&other))
        return box->intersectFrustum(*this);
    return !isEmpty() && !other.isEmpty();
}

bool FrustumVolume::intersect(Pnt3f const &point) const
{
    if(isEmpty() || isInfinite())
        return isInfinite();
    for(Plane const &plane : _planes)
    {
        if(!plane.isInHalfSpace(point))
            return false;
    }
    return true;
}

void FrustumVolume::extendBy(Pnt3f const &point)
{
    if(isFixed())
        return;
    for(Plane &plane : _planes)
    {
        Real32 const distance = plane.getNormal().dot(point.subZero());
        if(distance < plane.getDistanceFromOrigin())
            plane.setValue(plane.getNormal(), distance);
    }
}

void FrustumVolume::extendBy(Volume const &other)
{
    if(isFixed() || other.isEmpty() || !other.isValid())
        return;
    if(other.isInfinite())
    {
        setInfinite();
        return;
    }
    Pnt3f bounds[2];
    other.getBounds(bounds[0], bounds[1]);
    for(unsigned corner = 0; corner < 8; ++corner)
        extendBy(Pnt3f(bounds[corner & 1][0], bounds[corner >> 1 & 1][1], bounds[corner >> 2][2]));
}

void FrustumVolume::transform(Matrix const &matrix)
{
    Matrix inverse;
    if(!inverse.invertFrom(matrix))
        return;
    for(Plane &plane : _planes)
        plane.transformByInverse(inverse);
}
} // namespace OSG
