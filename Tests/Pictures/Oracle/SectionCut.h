#pragma once

#include "ItemVertices.h"
#include "TriangleRaster.h"

namespace OSG::Test
{
/// Where the planes of a view cut a triangle in the picture.
class SectionCut
{
  public:
    explicit SectionCut(SlowView const &view);

    /// How far the pixel's centre is from the nearest cut through the triangle, in pixels; negative
    /// on the side that is cut away. Large where no plane cuts.
    Real64 distance(DrawnTriangle const &triangle, TriangleRaster const &raster, Int32 x,
                    Int32 y) const;

  private:
    Real64 value(Plane const &plane, DrawnTriangle const &triangle, Vec3d const &weights) const;

    std::vector<Plane> const &_planes;
    Matrix4d _toWorld;
};
} // namespace OSG::Test
