#pragma once

#include <span>
#include <vector>

#include "OSGFinite.h"
#include "OSGPlane.h"

namespace OSG
{
/// Planes that cut a scene open, in the coordinates of its root. What lies on the positive side of
/// each plane, or in it, is kept: for a plane n . p - d this is n . p - d >= 0.
class SectionPlanes
{
  public:
    static constexpr std::size_t MostPlanes = 6;

    /// False, and nothing is added, for a seventh plane, and for a plane whose normal is zero or
    /// one of whose numbers is not finite.
    bool add(Plane const &plane)
    {
        Vec3f const &normal = plane.getNormal();
        bool const isPlane =
            is_finite(normal) && is_finite(plane.getDistanceFromOrigin()) && !(normal == Vec3f());
        if(!isPlane || _planes.size() == MostPlanes)
            return false;
        _planes.push_back(plane);
        return true;
    }
    /// The plane that keeps normal . p + offset >= 0. The normal may have any length.
    bool add(Vec3f const &normal, Real32 offset)
    {
        Plane plane;
        plane.setValue(normal, -offset);
        return add(plane);
    }

    bool isEmpty() const { return _planes.empty(); }
    std::span<Plane const> getPlanes() const { return _planes; }

  private:
    std::vector<Plane> _planes;
};
} // namespace OSG
