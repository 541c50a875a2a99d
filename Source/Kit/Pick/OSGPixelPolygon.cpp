#include "OSGPixelPolygon.h"

#include <cmath>

#include "OSGFinite.h"
#include "OSGLog.h"

namespace OSG
{
namespace
{
struct Split
{
    UInt32 edge;
    Real64 place; // along the edge, from 0 to 1
    PixelPoint point;
};

/// Splits the strokes of a lasso where they meet.
class StrokeSplitter
{
  public:
    explicit StrokeSplitter(std::vector<PixelEdge> const &strokes)
        : _strokes(strokes)
    {
    }

    /// False where there are too many crossings.
    bool findSplits();
    /// The strokes from one split to the next.
    std::vector<PixelEdge> pieces();

  private:
    bool meet(UInt32 a, UInt32 b);
    void splitAtEnd(UInt32 edge, PixelPoint const &end);
    void add(UInt32 edge, Real64 place, PixelPoint const &point);

    std::vector<PixelEdge> const &_strokes;
    std::vector<Split> _splits;
};

struct Range
{
    Real64 begin;
    Real64 end;
};

Range range_of(PixelEdge const &edge, bool alongX)
{
    PixelBox const box = box_of(edge);
    return alongX ? Range{box.left, box.right} : Range{box.top, box.bottom};
}

// A sweep along the axis in which the strokes are shorter looks at fewer pairs.
bool is_shorter_along_x(std::vector<PixelEdge> const &strokes)
{
    PixelBox around;
    Real64 x = 0;
    Real64 y = 0;
    for(PixelEdge const &stroke : strokes)
    {
        x += std::abs(stroke.to.x - stroke.from.x);
        y += std::abs(stroke.to.y - stroke.from.y);
        around.extendBy(stroke.from);
    }
    return x * (around.bottom - around.top) < y * (around.right - around.left);
}

bool StrokeSplitter::findSplits()
{
    bool const alongX = is_shorter_along_x(_strokes);
    std::vector<UInt32> order(_strokes.size());
    for(UInt32 i = 0; i < order.size(); ++i)
        order[i] = i;
    std::sort(order.begin(), order.end(),
              [&](UInt32 a, UInt32 b) {
                  return range_of(_strokes[a], alongX).begin < range_of(_strokes[b], alongX).begin;
              });
    std::vector<UInt32> open;
    for(UInt32 const stroke : order)
    {
        Real64 const begin = range_of(_strokes[stroke], alongX).begin - PixelPolygon::EdgeWidth;
        std::erase_if(open,
                      [&](UInt32 other) { return range_of(_strokes[other], alongX).end < begin; });
        for(UInt32 const other : open)
            if(!meet(stroke, other))
                return false;
        open.push_back(stroke);
    }
    return true;
}

// Splits two strokes where they meet. False where there are too many splits by now.
bool StrokeSplitter::meet(UInt32 a, UInt32 b)
{
    PixelEdge const &first = _strokes[a];
    PixelEdge const &second = _strokes[b];
    if(!box_of(first).grownBy(PixelPolygon::EdgeWidth).meets(box_of(second)))
        return true;
    splitAtEnd(a, second.from);
    splitAtEnd(a, second.to);
    splitAtEnd(b, first.from);
    splitAtEnd(b, first.to);
    Real64 const c = turn(first.from, first.to, second.from);
    Real64 const d = turn(first.from, first.to, second.to);
    Real64 const e = turn(second.from, second.to, first.from);
    Real64 const f = turn(second.from, second.to, first.to);
    bool const cross = ((c < 0) != (d < 0)) && ((e < 0) != (f < 0));
    if(cross)
    {
        Real64 const place = e / (e - f);
        PixelPoint const point = first.at(place);
        add(a, place, point);
        add(b, c / (c - d), point);
    }
    return _splits.size() <= 2 * std::size_t(PixelPolygon::MostCrossings);
}

void StrokeSplitter::splitAtEnd(UInt32 edge, PixelPoint const &end)
{
    if(distance_between(_strokes[edge], end) <= PixelPolygon::EdgeWidth)
        add(edge, nearest_place(_strokes[edge], end), end);
}

void StrokeSplitter::add(UInt32 edge, Real64 place, PixelPoint const &point)
{
    if(place > 0 && place < 1)
        _splits.push_back({edge, place, point});
}

std::vector<PixelEdge> StrokeSplitter::pieces()
{
    std::sort(_splits.begin(), _splits.end(),
              [](Split const &a, Split const &b)
              { return a.edge != b.edge ? a.edge < b.edge : a.place < b.place; });
    std::vector<PixelEdge> pieces;
    pieces.reserve(_strokes.size() + _splits.size());
    auto split = _splits.begin();
    for(UInt32 i = 0; i < _strokes.size(); ++i)
    {
        PixelPoint from = _strokes[i].from;
        for(; split != _splits.end() && split->edge == i; ++split)
        {
            if(split->point == from)
                continue;
            pieces.push_back({from, split->point});
            from = split->point;
        }
        if(!(from == _strokes[i].to))
            pieces.push_back({from, _strokes[i].to});
    }
    return pieces;
}

std::vector<PixelEdge> strokes_of(std::vector<Pnt2f> const &points)
{
    std::vector<PixelEdge> strokes;
    for(std::size_t i = 0; i < points.size(); ++i)
    {
        Pnt2f const &from = points[i];
        Pnt2f const &to = points[i + 1 < points.size() ? i + 1 : 0];
        if(!is_finite(from))
            return {};
        if(!(from == to))
            strokes.push_back({{from[0], from[1]}, {to[0], to[1]}});
    }
    return strokes;
}
} // namespace

PixelPolygon::PixelPolygon(std::vector<Pnt2f> const &points)
{
    constexpr std::size_t FewestStrokes = 3;
    std::vector<PixelEdge> const strokes = strokes_of(points);
    if(strokes.size() < FewestStrokes)
        return;
    StrokeSplitter splitter(strokes);
    if(!splitter.findSplits())
    {
        OSG_LOG_WARNING("PixelPolygon: a lasso of more than %u crossings holds nothing\n",
                        MostCrossings);
        return;
    }
    _strokes = PixelEdges(strokes);
    keepBoundary(splitter.pieces());
}

// Looks to both sides of each piece's middle. A piece with inside or outside on both sides bounds
// no area.
void PixelPolygon::keepBoundary(std::vector<PixelEdge> const &pieces)
{
    constexpr Real64 Digits = 1e-12; // what is left of a coordinate's digits after the arithmetic
    PixelBox const &box = _strokes.getBox();
    Real64 const largest = std::max({-box.left, -box.top, box.right, box.bottom});
    Real64 const aside = std::max(EdgeWidth, largest * Digits) / 2;
    std::vector<PixelEdge> boundary;
    for(PixelEdge const &piece : pieces)
    {
        PixelPoint const middle = piece.at(0.5);
        Real64 const dx = piece.to.x - piece.from.x;
        Real64 const dy = piece.to.y - piece.from.y;
        Real64 const scale = aside / std::hypot(dx, dy);
        PixelPoint const left = {middle.x - dy * scale, middle.y + dx * scale};
        PixelPoint const right = {middle.x + dy * scale, middle.y - dx * scale};
        if(isOddBetween({left, right}))
            boundary.push_back(piece);
    }
    _boundary = PixelEdges(std::move(boundary));
}

// Counts the strokes that a ray from the point to the left crosses. A stroke holds its upper end
// and not its lower one, so a ray through a corner counts it once or twice as it has to.
bool PixelPolygon::isOdd(PixelPoint const &point) const
{
    bool odd = false;
    PixelBox const ray = {-std::numeric_limits<Real64>::infinity(), point.y, point.x, point.y};
    _strokes.visitIn(ray,
                     [&](PixelEdge const &stroke)
                     {
                         if((stroke.from.y <= point.y) == (stroke.to.y <= point.y))
                             return true;
                         Real64 const place =
                             (point.y - stroke.from.y) / (stroke.to.y - stroke.from.y);
                         odd = odd != (stroke.at(place).x < point.x);
                         return true;
                     });
    return odd;
}

// Whether an odd count of strokes crosses the way.
bool PixelPolygon::isOddBetween(PixelEdge const &way) const
{
    bool odd = false;
    auto const isRight = [](PixelEdge const &line, PixelPoint const &point)
    { return turn(line.from, line.to, point) > 0; };
    auto const count = [&](PixelEdge const &stroke)
    {
        bool const crosses = isRight(stroke, way.from) != isRight(stroke, way.to) &&
                             isRight(way, stroke.from) != isRight(way, stroke.to);
        odd = odd != crosses;
        return true;
    };
    PixelBox const box = box_of(way);
    if(_strokes.countRows(box) > 1) // a stroke would come more than once
        return isOdd(way.from) != isOdd(way.to);
    _strokes.visitIn(box, count);
    return odd;
}

bool PixelPolygon::contains(PixelPoint const &point) const
{
    PixelBox around;
    around.extendBy(point);
    around = around.grownBy(EdgeWidth);
    if(isEmpty() || !around.meets(getBox()))
        return false;
    bool const isOnEdge = !_boundary.visitIn(around, [&](PixelEdge const &edge)
                                             { return distance_between(edge, point) > EdgeWidth; });
    return isOnEdge || isOdd(point);
}
} // namespace OSG
