#include "OSGViewCube.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "OSGFinite.h"
#include "OSGViewFrame.h"

namespace OSG
{
namespace
{
/// Where edges begin, as a part of the way from the middle of a face to its border.
constexpr Real64 BeginOfEdges = 0.7;
/// Faces that are seen under a smaller cosine are lines.
constexpr Real64 LeastShade = 1e-6;

constexpr StandardView Sides[] = {StandardView::Front, StandardView::Back, StandardView::Left,
                                  StandardView::Right, StandardView::Top,  StandardView::Bottom};

/// A direction of the scene in the window: to the right, downwards and into it.
Vec3d in_window(ViewAxes const &axes, Vec3f const &direction)
{
    Vec3d const d = wide(direction);
    return Vec3d(axes.right.dot(d), -axes.up.dot(d), -axes.back.dot(d));
}

Vec3f rounded(Vec3f const &v)
{
    return Vec3f(std::round(v[0]), std::round(v[1]), std::round(v[2]));
}

/// What of -1..1 along an axis of a face belongs to a part whose direction has `sign` there.
std::pair<Real64, Real64> range_of(Real32 sign)
{
    if(sign == 0)
        return {-BeginOfEdges, BeginOfEdges};
    return sign > 0 ? std::pair(BeginOfEdges, 1.) : std::pair(-1., -BeginOfEdges);
}

Real32 sign_beyond(Real64 place)
{
    if(std::abs(place) <= BeginOfEdges)
        return 0;
    return place > 0 ? 1.f : -1.f;
}
} // namespace

CubePart::Kind CubePart::kind() const
{
    auto const zeros = std::count(direction.values(), direction.values() + 3, 0.f);
    if(zeros == 2)
        return Kind::Face;
    return zeros == 1 ? Kind::Edge : Kind::Corner;
}

ViewCube::ViewCube(WindowView const &view, Pnt2f const &centre, Real32 size, SceneUp sceneUp)
    : _centre(centre)
    , _sceneUp(sceneUp)
{
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame || !(size > 0) || !is_finite(size) || !is_finite(centre))
        return;
    Real64 const half = size / (2 * std::sqrt(3.)); // the corners touch the ball in the square
    std::vector<std::pair<Real64, StandardView>> seen;
    for(StandardView const standard : Sides)
    {
        Real64 const shade = frame->axes.back.dot(wide(standard_direction(standard, sceneUp)));
        if(shade > LeastShade)
            seen.emplace_back(shade, standard);
    }
    std::sort(seen.begin(), seen.end()); // the middle of a face is as near as its shade is high
    for(auto const &[shade, standard] : seen)
    {
        Vec3f const out = rounded(standard_direction(standard, sceneUp));
        Vec3f const up = standard_up(standard, sceneUp);
        Vec3f const right = up.cross(out);
        Side const side{out,
                        right,
                        up,
                        in_window(frame->axes, out) * half,
                        in_window(frame->axes, right) * half,
                        in_window(frame->axes, up) * half};
        _sides.push_back(side);
        _faces.push_back({standard,
                          {pixelOf(side, -1, -1), pixelOf(side, 1, -1), pixelOf(side, 1, 1),
                           pixelOf(side, -1, 1)},
                          static_cast<Real32>(std::min(shade, 1.))});
    }
}

Pnt2f ViewCube::pixelOf(Side const &side, Real64 right, Real64 up) const
{
    Vec3d const way = side.outWay + side.rightWay * right + side.upWay * up;
    return Pnt2f(static_cast<Real32>(_centre[0] + way[0]),
                 static_cast<Real32>(_centre[1] + way[1]));
}

// Solves two equations by Cramer's rule.
std::optional<Vec3d> ViewCube::placeOn(Side const &side, Vec3d const &fromCentre)
{
    Vec3d const way = fromCentre - side.outWay;
    auto const area = [](Vec3d const &a, Vec3d const &b) { return a[0] * b[1] - a[1] * b[0]; };
    Real64 const whole = area(side.rightWay, side.upWay);
    Vec3d const place(area(way, side.upWay) / whole, area(side.rightWay, way) / whole, 0);
    bool const isInside = std::abs(place[0]) <= 1 && std::abs(place[1]) <= 1;
    return isInside ? std::optional(place) : std::nullopt;
}

std::optional<CubePart> ViewCube::partAt(Pnt2f const &pixel) const
{
    Real64 const x = pixel[0];
    Real64 const y = pixel[1];
    Vec3d const fromCentre(x - _centre[0], y - _centre[1], 0);
    for(auto side = _sides.rbegin(); side != _sides.rend(); ++side)
    {
        if(std::optional<Vec3d> const place = placeOn(*side, fromCentre))
            return CubePart{side->out + side->right * sign_beyond((*place)[0]) +
                            side->up * sign_beyond((*place)[1])};
    }
    return std::nullopt;
}

std::vector<ViewCube::Polygon> ViewCube::outlinesOf(CubePart const &part) const
{
    std::vector<Polygon> polygons;
    for(Side const &side : _sides)
    {
        if(part.direction.dot(side.out) <= 0)
            continue;
        auto const [left, right] = range_of(part.direction.dot(side.right));
        auto const [bottom, top] = range_of(part.direction.dot(side.up));
        polygons.push_back({pixelOf(side, left, bottom), pixelOf(side, right, bottom),
                            pixelOf(side, right, top), pixelOf(side, left, top)});
    }
    return polygons;
}

WindowView ViewCube::viewFrom(WindowView const &view, CubePart const &part) const
{
    for(StandardView const standard : Sides)
    {
        if(rounded(standard_direction(standard, _sceneUp)) == part.direction)
            return standard_view(view, standard, _sceneUp);
    }
    return turned_view(view, part.direction, standard_up(StandardView::Isometric, _sceneUp));
}

std::array<TriadAxis, 3> triad_of(WindowView const &view, Real32 length)
{
    std::array<TriadAxis, 3> axes{{{0, {}, 0}, {1, {}, 0}, {2, {}, 0}}};
    std::optional<ViewFrame> const frame = frame_of(view);
    if(!frame || !is_finite(length))
        return axes;
    for(TriadAxis &axis : axes)
    {
        Vec3f direction;
        direction[axis.axis] = length;
        Vec3d const tip = in_window(frame->axes, direction);
        axis.tip = Vec2f(static_cast<Real32>(tip[0]), static_cast<Real32>(tip[1]));
        axis.depth = static_cast<Real32>(tip[2]);
    }
    std::stable_sort(axes.begin(), axes.end(),
                     [](TriadAxis const &a, TriadAxis const &b) { return a.depth > b.depth; });
    return axes;
}
} // namespace OSG
