#include "OSGWindowSpace.h"

namespace OSG
{
WindowSpace::WindowSpace(WindowView const &view)
    : _pixels(view.height / shown_height(view, 1))
    , _middle{view.width / 2., view.height / 2.}
    , _hasPerspective(!view.orthographicHeight)
{
    Matrix const camera = camera_of(view);
    auto const column = [&camera](UInt32 i)
    { return Vec3d(camera[i][0], camera[i][1], camera[i][2]); };
    Vec3d const x = column(0);
    Vec3d const y = column(1);
    Vec3d const z = column(2);
    _eye = Pnt3d(camera[3][0], camera[3][1], camera[3][2]);
    // The axes are perpendicular but for their rounding, so the determinant is about 1.
    Real64 const determinant = x.dot(y.cross(z));
    _right = y.cross(z) / determinant;
    _up = z.cross(x) / determinant;
    _back = x.cross(y) / determinant;
}

WindowSpace::Place WindowSpace::placeOf(Pnt3d const &point) const
{
    Vec3d const way = point - _eye;
    Real64 const weight = _hasPerspective ? 1 / -_back.dot(way) : 1;
    Real64 const scale = _pixels * weight;
    return {{_middle.x + _right.dot(way) * scale, _middle.y - _up.dot(way) * scale}, weight};
}
} // namespace OSG
