#include "SlowPick.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace OSG::Test
{
namespace
{
Vec3d wide_vector(Vec3f const &v) { return Vec3d(v[0], v[1], v[2]); }

Vec3d unit(Vec3d const &v) { return v / v.length(); }

// What is left of a convex polygon where normal . p + offset >= 0.
std::vector<Pnt3d> clipped(std::vector<Pnt3d> const &polygon, Vec3d const &normal, Real64 offset)
{
    std::vector<Pnt3d> left;
    for(std::size_t i = 0; i < polygon.size(); ++i)
    {
        Pnt3d const &a = polygon[i];
        Pnt3d const &b = polygon[(i + 1) % polygon.size()];
        Real64 const atA = normal.dot(a.subZero()) + offset;
        Real64 const atB = normal.dot(b.subZero()) + offset;
        if(atA >= 0)
            left.push_back(a);
        if((atA >= 0) != (atB >= 0))
            left.push_back(a + (b - a) * (atA / (atA - atB)));
    }
    return left;
}

struct Crossed
{
    Real64 atTop, atBottom;
};
} // namespace

std::vector<Trapezoid> trapezoids_of(std::vector<Pnt2f> const &lasso)
{
    std::size_t const n = lasso.size();
    auto const corner = [&](std::size_t i) { return Pnt3d(lasso[i % n][0], lasso[i % n][1], 0.); };
    auto const xAt = [&](std::size_t i, Real64 y)
    {
        Pnt3d const a = corner(i);
        Pnt3d const b = corner(i + 1);
        return a[0] + (y - a[1]) * (b[0] - a[0]) / (b[1] - a[1]);
    };
    std::vector<Real64> lines;
    for(std::size_t i = 0; i < n; ++i)
    {
        lines.push_back(corner(i)[1]);
        for(std::size_t k = 0; k < i; ++k)
        {
            Vec3d const u = corner(i + 1) - corner(i);
            Vec3d const v = corner(k + 1) - corner(k);
            Vec3d const w = corner(k) - corner(i);
            Real64 const t = (w[0] * v[1] - w[1] * v[0]) / (u[0] * v[1] - u[1] * v[0]);
            if(t >= 0 && t <= 1)
                lines.push_back(corner(i)[1] + t * u[1]);
        }
    }
    std::sort(lines.begin(), lines.end());
    std::vector<Trapezoid> trapezoids;
    for(std::size_t line = 0; line + 1 < lines.size(); ++line)
    {
        Real64 const top = lines[line];
        Real64 const bottom = lines[line + 1];
        if(bottom - top < 1e-9)
            continue;
        std::vector<Crossed> crossed;
        for(std::size_t i = 0; i < n; ++i)
        {
            Real64 const y = (top + bottom) / 2;
            if((corner(i)[1] > y) != (corner(i + 1)[1] > y))
                crossed.push_back({xAt(i, top), xAt(i, bottom)});
        }
        std::sort(crossed.begin(), crossed.end(),
                  [](Crossed const &a, Crossed const &b)
                  { return a.atTop + a.atBottom < b.atTop + b.atBottom; });
        for(std::size_t i = 0; i + 1 < crossed.size(); i += 2)
            trapezoids.push_back({top, bottom, crossed[i].atTop, crossed[i].atBottom,
                                  crossed[i + 1].atTop, crossed[i + 1].atBottom});
    }
    return trapezoids;
}

SlowPick::SlowPick(WindowView const &view, ViewDepths const &depths,
                   std::vector<Pnt2f> const &lasso, SectionPlanes const &sections)
    : _view(view)
    , _depths(depths)
    , _sections(sections)
    , _trapezoids(trapezoids_of(lasso))
    , _eye(view.from[0], view.from[1], view.from[2])
    , _back(unit(_eye - Pnt3d(view.at[0], view.at[1], view.at[2])))
{
    _right = unit(wide_vector(view.up).cross(_back));
    _up = _back.cross(_right);
}

std::optional<DepthsInside> SlowPick::inside(std::vector<Pnt3d> const &corners, Real64 wider) const
{
    Real64 const more = wider > 0 ? Slack : wider < 0 ? -Slack : 0;
    std::vector<Pnt3d> shape = corners;
    for(Plane const &plane : _sections.getPlanes())
        shape = clipped(shape, wide_vector(plane.getNormal()),
                        more * _depths.farSide - plane.getDistanceFromOrigin());
    for(Pnt3d &corner : shape)
    {
        Vec3d const way = corner - _eye;
        corner = Pnt3d(_right.dot(way), _up.dot(way), -_back.dot(way));
    }
    shape = clipped(shape, {0, 0, 1}, -_depths.nearSide * (1 - more));
    shape = clipped(shape, {0, 0, -1}, _depths.farSide * (1 + more));
    bool const isFlat = _view.orthographicHeight.has_value();
    Real64 const focal =
        isFlat ? _view.height / Real64(*_view.orthographicHeight)
               : _view.height / 2. / std::tan(_view.fieldOfView * std::numbers::pi / 360);
    for(Pnt3d &corner : shape)
    {
        Real64 const scale = focal / (isFlat ? 1 : corner[2]);
        corner = Pnt3d(_view.width / 2. + corner[0] * scale, _view.height / 2. - corner[1] * scale,
                       isFlat ? corner[2] : 1 / corner[2]);
    }
    DepthsInside depths = {std::numeric_limits<Real64>::infinity(), 0};
    for(Trapezoid const &t : _trapezoids)
    {
        // Along the lines, and between the sides: (bottom - y) and (y - top) blend their ends.
        Real64 const height = t.bottom - t.top;
        auto const side =
            [&](std::vector<Pnt3d> const &polygon, Real64 top, Real64 bottom, Real64 sign)
        {
            Real64 const slope = (bottom - top) / height;
            Real64 const length = std::sqrt(1 + slope * slope);
            return clipped(polygon, {sign, -sign * slope, 0},
                           sign * (slope * t.top - top) + wider * length);
        };
        std::vector<Pnt3d> part = clipped(shape, {0, 1, 0}, wider - t.top);
        part = clipped(part, {0, -1, 0}, wider + t.bottom);
        part = side(part, t.leftTop, t.leftBottom, 1);
        part = side(part, t.rightTop, t.rightBottom, -1);
        for(Pnt3d const &corner : part)
        {
            Real64 const depth = isFlat ? corner[2] : 1 / corner[2];
            depths.nearest = std::min(depths.nearest, depth);
            depths.farthest = std::max(depths.farthest, depth);
        }
    }
    return std::isfinite(depths.nearest) ? std::optional(depths) : std::nullopt;
}
} // namespace OSG::Test
