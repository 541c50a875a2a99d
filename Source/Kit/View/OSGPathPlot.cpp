#include "OSGPathPlot.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>
#include <ostream>

#include "OSGBoxVolume.h"
#include "OSGGeometry.h"
#include "OSGGeometryIterators.h"
#include "OSGNavigationMath.h"
#include "OSGNodeWalker.h"
#include "OSGSharpEdgeFinder.h"

namespace OSG
{
namespace
{

struct Segment
{
    Pnt3f a, b;
};

/// A scene with more edges is drawn as boxes. More lines than these would be one grey area.
constexpr std::size_t MostEdges = 40000;
/// Faces are in one plane up to this angle between them, in degrees.
constexpr Real64 LargestAngle = 2.6;

/// Collects the edges of triangles in world space. Edges between faces of one plane are left out.
class EdgeCollector
{
  public:
    bool enter(Node *node)
    {
        if(auto const *geometry = dynamic_cast<Geometry *>(node->getCore()))
            addGeometry(*geometry, node->getToWorld(), node);
        return true;
    }
    void leave(Node *) {}

    std::vector<Segment> finish() const
    {
        if(_finder.countEdges() > MostEdges)
            return _boxes;
        std::vector<Segment> sharp;
        for(SharpEdgeFinder::Edge const &edge : _finder.find())
            sharp.push_back({edge.a, edge.b});
        return sharp;
    }

  private:
    void addGeometry(Geometry const &geometry, Matrix const &toWorld, Node *node)
    {
        BoxVolume box;
        node->getWorldVolume(box);
        addBox(box);
        TriangleIterator const end = geometry.endTriangles();
        for(TriangleIterator it = geometry.beginTriangles(); it != end; ++it)
        {
            if(_finder.countEdges() > MostEdges)
                return;
            _finder.add(toWorld * it.getPosition(0), toWorld * it.getPosition(1),
                        toWorld * it.getPosition(2));
        }
    }

    void addBox(BoxVolume const &box)
    {
        if(box.isEmpty() || box.isInfinite())
            return;
        Pnt3f const ends[2] = {box.getMin(), box.getMax()};
        for(unsigned corner = 0; corner < 8; ++corner)
        {
            Pnt3f const a(ends[corner & 1][0], ends[corner >> 1 & 1][1], ends[corner >> 2][2]);
            for(int axis = 0; axis < 3; ++axis)
            {
                if((corner >> axis & 1) != 0)
                    continue;
                Pnt3f b = a;
                b[axis] = ends[1][axis];
                _boxes.push_back({a, b});
            }
        }
    }

    SharpEdgeFinder _finder{LargestAngle};
    std::vector<Segment> _boxes;
};

constexpr char const *StyleSheet = "<style>.scene{stroke:#b0b0b0;stroke-width:.6;fill:none}"
                                   ".path{stroke:#c02020;stroke-width:1.5;fill:none}"
                                   ".look{stroke:#2040c0;stroke-width:1;fill:none}"
                                   ".mark{stroke:#fff;stroke-width:.6}"
                                   ".legend{font:12px sans-serif}</style>\n";

/// Width of the sheet and of its margins, in units of the sheet.
constexpr Real64 SheetWidth = 800;
constexpr Real64 Margin = 10;

/// One of the two views, and its place on the sheet. The numbers are Real64, because the difference
/// of two Real32 coordinates may be too large for a Real32.
struct Panel
{
    int down;    // the axis of the scene that is drawn vertically: 2 from above, 1 from the front
    Real64 sign; // 1 if that axis runs down the sheet, -1 if it runs up
    Real64 left, top; // the left top corner of the view, in the scene
    Real64 offset;    // the top of the view on the sheet
    Real64 scale;     // units of the sheet for one unit of the scene

    std::array<Real64, 2> place(Pnt3f const &p) const
    {
        return {Margin + (p[0] - left) * scale, offset + Margin + (p[down] * sign - top) * scale};
    }
};

std::string text_of(Real64 value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.1f", value);
    return text;
}

/// Height of the line of text that tells the kinds of marks, in units of the sheet.
constexpr Real64 LegendHeight = 24;

/// The colours of the kinds of marks.
class Palette
{
  public:
    explicit Palette(std::vector<PathMark> const &marks)
    {
        for(PathMark const &mark : marks)
        {
            if(std::find(_kinds.begin(), _kinds.end(), mark.kind) == _kinds.end())
                _kinds.push_back(mark.kind);
        }
    }

    std::vector<std::string> const &getKinds() const { return _kinds; }
    /// Of the line of text that tells them, in units of the sheet.
    Real64 height() const { return _kinds.empty() ? 0 : LegendHeight; }
    char const *colorOf(std::string const &kind) const
    {
        constexpr char const *Colors[] = {"#e08000", "#209040", "#8030a0", "#00a0c0", "#806040"};
        auto const place = std::find(_kinds.begin(), _kinds.end(), kind) - _kinds.begin();
        return Colors[static_cast<std::size_t>(place) % std::size(Colors)];
    }

  private:
    std::vector<std::string> _kinds; // in the order of their first marks
};

std::string dot_of(Real64 x, Real64 y, char const *color, std::string const &kind)
{
    return "<circle class=\"mark\" cx=\"" + text_of(x) + "\" cy=\"" + text_of(y) +
           "\" r=\"3.5\" fill=\"" + color + "\"><title>" + kind + "</title></circle>\n";
}

void write_legend(std::ostream &out, Palette const &palette, Real64 bottom)
{
    constexpr Real64 ColumnWidth = 110;
    Real64 x = 2 * Margin;
    for(std::string const &kind : palette.getKinds())
    {
        out << dot_of(x, bottom - LegendHeight / 2, palette.colorOf(kind), kind)
            << "<text class=\"legend\" x=\"" << text_of(x + Margin) << "\" y=\""
            << text_of(bottom - LegendHeight / 2 + 4) << "\">" << kind << "</text>\n";
        x += ColumnWidth;
    }
}

class Sheet
{
  public:
    Sheet(std::ostream &out, Panel const &panel)
        : _out(out)
        , _panel(panel)
    {
    }

    void edges(std::vector<Segment> const &segments)
    {
        _out << "<path class=\"scene\" d=\"";
        for(Segment const &segment : segments)
            _out << 'M' << pair(segment.a) << 'L' << pair(segment.b);
        _out << "\"/>\n";
    }

    void path(std::vector<PathPoint> const &points)
    {
        if(points.empty())
            return;
        _out << "<polyline class=\"path\" points=\"";
        for(PathPoint const &point : points)
            _out << pair(point.from) << ' ';
        _out << "\"/>\n<path class=\"look\" d=\"";
        std::optional<Stroke> last;
        for(PathPoint const &point : points)
        {
            Stroke const next = strokeOf(point);
            if(last && isNear(last->begin, next.begin) && isNear(last->end, next.end))
                continue;
            _out << 'M' << text(next.begin) << 'L' << text(next.end);
            last = next;
        }
        _out << "\"/>\n";
        auto const first = _panel.place(points.front().from);
        _out << "<circle class=\"path\" cx=\"" << text_of(first[0]) << "\" cy=\""
             << text_of(first[1]) << "\" r=\"5\"/>\n";
    }

    void marks(std::vector<PathMark> const &marks, Palette const &palette)
    {
        std::string last;
        for(PathMark const &mark : marks)
        {
            auto const place = _panel.place(mark.place);
            std::string const dot =
                dot_of(place[0], place[1], palette.colorOf(mark.kind), mark.kind);
            if(dot != last)
                _out << dot;
            last = dot;
        }
    }

  private:
    using Place = std::array<Real64, 2>;
    struct Stroke
    {
        Place begin, end;
    };

    static bool isNear(Place const &a, Place const &b)
    {
        constexpr Real64 Near = 3;
        return std::hypot(a[0] - b[0], a[1] - b[1]) < Near;
    }
    static std::string text(std::array<Real64, 2> const &place)
    {
        return text_of(place[0]) + ',' + text_of(place[1]);
    }
    std::string pair(Pnt3f const &point) const { return text(_panel.place(point)); }

    // The stroke is 12 units of the sheet long if the camera looks along the sheet. It is shorter
    // if the camera looks into the sheet or out of it.
    Stroke strokeOf(PathPoint const &point) const
    {
        constexpr Real64 Length = 12;
        Real64 look[3];
        for(int axis = 0; axis < 3; ++axis)
            look[axis] = Real64(point.at[axis]) - point.from[axis];
        Real64 const distance = std::hypot(look[0], look[1], look[2]);
        Place const begin = _panel.place(point.from);
        Place end = begin;
        if(distance > 0)
        {
            end[0] += look[0] / distance * Length;
            end[1] += look[_panel.down] / distance * _panel.sign * Length;
        }
        return {begin, end};
    }

    std::ostream &_out;
    Panel _panel;
};
/// What is drawn: all of it is finite.
struct Drawing
{
    std::vector<PathPoint> path;
    std::vector<PathMark> marks;
    std::vector<Segment> edges;
    Pnt3f min, max; // of all
};

std::vector<Segment> edges_of(Node *scene)
{
    EdgeCollector collector;
    if(scene != nullptr)
        walk_children(scene, collector);
    std::vector<Segment> edges = collector.finish();
    std::erase_if(edges,
                  [](Segment const &edge) { return !is_finite(edge.a) || !is_finite(edge.b); });
    return edges;
}

/// Turns a direction to +y, the short way; -y by half a turn about x.
Matrix turn_upright(Vec3f const &up)
{
    Vec3f const axis = up.cross(Vec3f(0, 1, 0));
    Real32 const angle = std::atan2(axis.length(), up[1]);
    return NavigationMath::rotation_about(axis != Vec3f() ? axis : Vec3f(1, 0, 0), angle);
}

void turn_all(Drawing &drawing, Matrix const &turn)
{
    for(PathPoint &point : drawing.path)
        point = {turn * point.from, turn * point.at};
    for(PathMark &mark : drawing.marks)
        mark.place = turn * mark.place;
    for(Segment &edge : drawing.edges)
        edge = {turn * edge.a, turn * edge.b};
}

Drawing drawing_of(Node *scene, std::vector<PathPoint> const &path,
                   std::vector<PathMark> const &marks, Vec3f const &up)
{
    Drawing drawing{path, marks, edges_of(scene), {}, {}};
    Vec3f const upward = NavigationMath::unit(up);
    if(is_finite(upward) && upward != Vec3f() && upward != Vec3f(0, 1, 0))
        turn_all(drawing, turn_upright(upward));
    std::erase_if(drawing.path, [](PathPoint const &point)
                  { return !is_finite(point.from) || !is_finite(point.at); });
    std::erase_if(drawing.marks, [](PathMark const &mark) { return !is_finite(mark.place); });
    BoxVolume bounds;
    for(PathPoint const &point : drawing.path)
        bounds.extendBy(point.from);
    for(PathMark const &mark : drawing.marks)
        bounds.extendBy(mark.place);
    for(Segment const &edge : drawing.edges)
    {
        bounds.extendBy(edge.a);
        bounds.extendBy(edge.b);
    }
    bounds.getBounds(drawing.min, drawing.max);
    return drawing;
}
} // namespace

void write_path_plot(std::ostream &out, Node *scene, std::vector<PathPoint> const &path,
                     std::vector<PathMark> const &marks, Vec3f const &up)
{
    Drawing const drawing = drawing_of(scene, path, marks, up);
    Palette const palette(drawing.marks);
    Pnt3f const &min = drawing.min;
    Pnt3f const &max = drawing.max;
    auto const extent = [&min, &max](int axis) { return Real64(max[axis]) - min[axis]; };
    constexpr Real64 SmallestExtent = 1e-3;       // a scene of one point needs a scale, too
    constexpr Real64 MostHeight = 2 * SheetWidth; // of the view from the front
    Real64 const scale =
        std::min((SheetWidth - 2 * Margin) / std::max({extent(0), extent(2), SmallestExtent}),
                 MostHeight / std::max(extent(1), SmallestExtent));
    Real64 const plan = extent(2) * scale + 3 * Margin; // its margins, and one between the views
    Real64 const height = plan + extent(1) * scale + 2 * Margin + palette.height();
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << SheetWidth << "\" height=\""
        << text_of(height) << "\">\n"
        << StyleSheet << "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n";
    for(Panel const &panel :
        {Panel{2, 1, min[0], min[2], 0, scale}, Panel{1, -1, min[0], -Real64(max[1]), plan, scale}})
    {
        Sheet sheet(out, panel);
        sheet.edges(drawing.edges);
        sheet.path(drawing.path);
        sheet.marks(drawing.marks, palette);
    }
    write_legend(out, palette, height);
    out << "</svg>\n";
}
} // namespace OSG
