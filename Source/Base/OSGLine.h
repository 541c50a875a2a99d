#pragma once

/// \file
/// A ray: a position and a direction of length 1.

#include "OSGVector.h"

namespace OSG
{
class Line
{
  public:
    /// A ray at the origin with the direction zero.
    Line() = default;
    Line(Pnt3f const &position, Vec3f const &direction) { setValue(position, direction); }

    /// Normalises the direction, unless it is shorter than 1e-6.
    void setValue(Pnt3f const &position, Vec3f const &direction)
    {
        _position = position;
        _direction = direction;
        _direction.normalize();
    }

    Pnt3f const &getPosition() const { return _position; }
    Vec3f const &getDirection() const { return _direction; }
    /// The point at `distance` along the ray.
    Pnt3f getPoint(Real32 distance) const { return _position + _direction * distance; }

  private:
    Pnt3f _position;
    Vec3f _direction;
};
} // namespace OSG
