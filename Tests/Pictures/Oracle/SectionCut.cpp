#include "SectionCut.h"

#include <algorithm>
#include <cmath>

namespace OSG::Test
{
SectionCut::SectionCut(SlowView const &view)
    : _planes(view.sections)
{
    _toWorld.invertFrom(view.viewing);
}

Real64 SectionCut::value(Plane const &plane, DrawnTriangle const &triangle,
                         Vec3d const &weights) const
{
    Vec4d eye(0.0, 0.0, 0.0, 0.0);
    for(UInt32 i = 0; i < 3; ++i)
        eye += triangle.vertices[i].eye * weights[i];
    Vec4d const world = _toWorld * eye;
    Vec3f const &normal = plane.getNormal();
    return normal[0] * world[0] + normal[1] * world[1] + normal[2] * world[2] -
           plane.getDistanceFromOrigin() * world[3];
}

// By the change from pixel to pixel, which is nearly even over the width of a pixel.
Real64 SectionCut::distance(DrawnTriangle const &triangle, TriangleRaster const &raster, Int32 x,
                            Int32 y) const
{
    Real64 nearest = 1e9;
    for(Plane const &plane : _planes)
    {
        auto const valueAt = [&](Int32 column, Int32 row)
        { return value(plane, triangle, raster.at(column, row).weights); };
        Real64 const here = valueAt(x, y);
        Real64 const change = std::hypot(valueAt(x + 1, y) - valueAt(x - 1, y),
                                         valueAt(x, y + 1) - valueAt(x, y - 1)) /
                              2;
        nearest = std::min(nearest, change > 0 ? here / change : here < 0 ? -1e9 : 1e9);
    }
    return nearest;
}
} // namespace OSG::Test
