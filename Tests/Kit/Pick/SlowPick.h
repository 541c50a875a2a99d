#pragma once

/// \file
/// A slow, obvious pick to compare the Kit's with: primitives clipped in the window by the
/// trapezoids of a lasso, in double precision.

#include <optional>

#include "OSGPickVolume.h"
#include "OSGSectionPlanes.h"

namespace OSG::Test
{
/// A convex part of a lasso between two lines across the window.
struct Trapezoid
{
    Real64 top, bottom;
    Real64 leftTop, leftBottom, rightTop, rightBottom; // x
};

/// The area of a lasso by even-odd, cut at each corner and crossing.
std::vector<Trapezoid> trapezoids_of(std::vector<Pnt2f> const &lasso);

/// The depths of what is left of a primitive.
struct DepthsInside
{
    Real64 nearest;
    Real64 farthest;
};

class SlowPick
{
  public:
    SlowPick(WindowView const &view, ViewDepths const &depths, std::vector<Pnt2f> const &lasso,
             SectionPlanes const &sections = {});

    /// The part of a triangle, line or point (3, 2 or 1 corners in the root's space) that is inside
    /// when the area is made wider by so many pixels all around, and the depths and sections
    /// likewise by `Slack`. A negative number makes all of them smaller.
    std::optional<DepthsInside> inside(std::vector<Pnt3d> const &corners, Real64 wider) const;

  private:
    static constexpr Real64 Slack = 1e-4; // share of the depth

    WindowView _view;
    ViewDepths _depths;
    SectionPlanes _sections;
    std::vector<Trapezoid> _trapezoids;
    Pnt3d _eye;
    Vec3d _right, _up, _back;
};
} // namespace OSG::Test
