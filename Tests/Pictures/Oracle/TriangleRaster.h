#pragma once

/// \file
/// Which pixels a triangle covers, and where in the triangle they lie.
///
/// Corners are homogeneous, so nothing is clipped before: a pixel's centre belongs to the triangle
/// where its three weights have the sign of w (Olano, Greer: Triangle Scan Conversion using 2D
/// Homogeneous Coordinates, 1997).

#include <array>

#include "SlowView.h"

namespace OSG::Test
{
class TriangleRaster
{
  public:
    /// What a pixel's centre is to the triangle.
    struct Sample
    {
        bool inside = false; ///< between the edges and before the eye
        /// Distance from the nearest edge in pixels, negative outside.
        Real64 edgeDistance = 0;
        /// Shares of the corners, with perspective. Where the centre is outside, they go on beyond
        /// the triangle.
        Vec3d weights;
        Real64 depth = 0; ///< from 0 at the near to 1 at the far plane
    };

    /// Columns and rows of a picture, the last ones excluded.
    struct Range
    {
        UInt32 left, top, right, bottom;
    };

    /// Corners in clip space, before the division by w.
    TriangleRaster(std::array<Vec4d, 3> const &corners, UInt32 width, UInt32 height);

    /// No pixel is covered: the triangle is seen from its edge, or has no area.
    bool isEmpty() const { return _determinant == 0; }
    /// The corners turn counter-clockwise in the picture.
    bool isCounterClockwise() const { return _determinant > 0; }
    /// What the triangle and a pixel around it lie in. All of the picture where a corner is not
    /// before the eye.
    Range range() const;
    /// Column `x` from the left and row `y` from the top.
    Sample at(Int32 x, Int32 y) const;

  private:
    std::array<Vec4d, 3> _corners;
    UInt32 _width;
    UInt32 _height;
    std::array<Vec3d, 3> _edges; // a weight is the product of its edge and (x, y, 1) in pixels
    Real64 _determinant = 0;
};
} // namespace OSG::Test
