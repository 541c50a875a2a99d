#pragma once

/// \file
/// Which boxes a view may show.

#include <span>

#include "OSGBoxVolume.h"
#include "OSGChildIndex.h"
#include "OSGMatrix.h"
#include "OSGStateApi.h"

namespace OSG
{
/// The six planes of what a projection shows (Gribb and Hartmann, 2001), and others. Tests of boxes
/// err towards showing: a box that is said to be missed holds no point that is drawn. Numbers that
/// are not finite miss nothing.
class OSG_STATE_API ViewPlanes
{
  public:
    enum class Sight : UInt8
    {
        None, ///< outside of a plane
        Some,
        All ///< inside of all planes
    };

    /// Planes that everything is inside of.
    ViewPlanes() = default;
    /// `toScreen` carries points of the space of the boxes to clip coordinates.
    explicit ViewPlanes(Matrix4d const &toScreen);

    /// One more plane, which keeps normal . p + offset >= 0. To be called before setReach().
    void add(Vector<Real64, 4> const &plane);

    /// At least the largest absolute coordinate of the boxes that are tested four at a time; it
    /// bounds rounding errors.
    void setReach(Real32 reach);

    /// An infinite box may always be seen, an empty one never.
    Sight test(BoxVolume const &box) const;
    /// Four boxes at once: lanes are set where a box is missed, or where it is inside of all
    /// planes.
    void test(BoxLanes const &boxes, UInt32 quad, FourMask &missed, FourMask &inside) const;

  private:
    struct Plane
    {
        Real32 normal[3] = {0, 0, 0}; // inwards
        Real32 offset = 1;
        Real32 margin = 0;

        Real32 marginFor(Real32 reach) const;
    };
    static constexpr std::size_t MostPlanes = 12;

    std::span<Plane const> planes() const { return {_planes, _numPlanes}; }

    Plane _planes[MostPlanes];
    std::size_t _numPlanes = 0;
};
} // namespace OSG
