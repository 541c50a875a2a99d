#pragma once

/// \file
/// Axis-aligned box, the bounding volume of nodes.

#include "OSGLine.h"
#include "OSGVolume.h"

namespace OSG
{
class FrustumVolume;
class BoxVolume;

OSG_BASE_API void extend(BoxVolume &box, BoxVolume const &other);

/// Closed box from its smallest to its largest corner; empty at first. Points that are not numbers
/// in all three coordinates are not bounded: no half space holds them, so no cull may miss them.
class OSG_BASE_API BoxVolume : public Volume
{
  public:
    BoxVolume();
    BoxVolume(Pnt3f const &min, Pnt3f const &max);
    BoxVolume(BoxVolume const &) = default;
    BoxVolume &operator=(BoxVolume const &) = default;
    ~BoxVolume() override;

    Pnt3f const &getMin() const { return _min; }
    Pnt3f const &getMax() const { return _max; }
    /// Sets both corners as they are; the box is then not empty.
    void setBounds(Pnt3f const &min, Pnt3f const &max);

    void getCenter(Pnt3f &center) const override;
    void getBounds(Pnt3f &min, Pnt3f &max) const override;

    /// Boxes that touch intersect. A frustum: see intersectFrustum. Infinite boxes meet all that is
    /// not empty, empty ones nothing.
    bool intersect(Volume const &other) const override;
    bool intersectBox(BoxVolume const &other) const;
    /// False if the box is empty or all eight corners are out of one plane. A box may pass that
    /// misses the frustum at an edge.
    bool intersectFrustum(FrustumVolume const &frustum) const;
    /// Whether the ray meets the box, and the distances of entry (0 where it starts inside) and of
    /// exit. The exit is rounded up, so that what lies in a face of the box is not missed.
    bool intersect(Line const &line, Real32 &enter, Real32 &exit) const;
    /// Whether a point lies in the box or on it.
    bool intersect(Pnt3f const &point) const;

    void extendBy(Pnt3f const &point) override;
    void extendBy(Volume const &other) override;
    /// The box around the eight corners, each moved by the affine part of `matrix`. Where a corner
    /// comes out as not a number the box becomes infinite.
    void transform(Matrix const &matrix) override;

    /// Bounds and flags, exact.
    friend bool operator==(BoxVolume const &a, BoxVolume const &b)
    {
        return a._min == b._min && a._max == b._max && a.isEmpty() == b.isEmpty() &&
               a.isInfinite() == b.isInfinite() && a.isValid() == b.isValid() &&
               a.isStatic() == b.isStatic();
    }

  private:
    friend void extend(BoxVolume &box, BoxVolume const &other);
    void extendByBox(BoxVolume const &other);

    Pnt3f _min;
    Pnt3f _max;
};

/// Grows the first box by the second: one that is empty or not valid adds nothing, an infinite one
/// makes the first infinite; a first that is infinite or static stays as it is.
OSG_BASE_API void extend(BoxVolume &box, BoxVolume const &other);
} // namespace OSG
