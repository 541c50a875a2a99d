#pragma once

/// \file
/// Axis-aligned box, the bounding volume of nodes.

#include <limits>

#include "OSGLine.h"
#include "OSGVolume.h"

namespace OSG
{
class FrustumVolume;
class BoxVolume;

OSG_BASE_API void extend(BoxVolume &box, BoxVolume const &other);

/// Closed box from its smallest to its largest corner. A new box is empty. A point with a NaN
/// coordinate does not extend a box: it lies in no half space, so culling by the box loses no hit.
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
    /// Sets both corners without comparing them. The box is then not empty.
    void setBounds(Pnt3f const &min, Pnt3f const &max);

    void getCenter(Pnt3f &center) const override;
    void getBounds(Pnt3f &min, Pnt3f &max) const override;

    /// What the distance of a ray's exit is multiplied by: rounding up by two ulps keeps hits in a
    /// face of the box (Ize, Robust BVH Ray Traversal, 2013).
    static constexpr Real32 ExitSafety = 1.f + 4.f * std::numeric_limits<Real32>::epsilon();

    /// Two boxes that touch intersect. For a frustum see intersectFrustum. An infinite box
    /// intersects every volume that is not empty. An empty box intersects nothing.
    bool intersect(Volume const &other) const override;
    bool intersectBox(BoxVolume const &other) const;
    /// False if the box is empty or if all eight corners are outside one plane. The result may be
    /// true for a box that passes by an edge of the frustum.
    bool intersectFrustum(FrustumVolume const &frustum) const;
    /// Whether the ray meets the box. `enter` and `exit` receive the distances of entry (0 where
    /// the ray starts inside) and exit. The exit is rounded up, so that geometry in a face of the
    /// box is not missed.
    bool intersect(Line const &line, Real32 &enter, Real32 &exit) const;
    /// Whether a point lies in the box or on it.
    bool intersect(Pnt3f const &point) const;

    void extendBy(Pnt3f const &point) override;
    void extendBy(Volume const &other) override;
    /// Becomes the box around the eight corners, each moved by the affine part of `matrix`. The box
    /// becomes infinite where a corner becomes NaN.
    void transform(Matrix const &matrix) override;

    /// Compares bounds and flags exactly.
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

/// Extends `box` by `other`. An `other` that is empty or not valid adds nothing. An infinite one
/// makes `box` infinite. A `box` that is infinite or static does not change.
OSG_BASE_API void extend(BoxVolume &box, BoxVolume const &other);
} // namespace OSG
