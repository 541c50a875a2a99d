#pragma once

/// \file
/// Many edges in a window, to be found by where they lie.

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// In pixels from the window's left top corner.
struct PixelPoint
{
    Real64 x = 0;
    Real64 y = 0;

    friend bool operator==(PixelPoint const &, PixelPoint const &) = default;
};

struct PixelEdge
{
    PixelPoint from;
    PixelPoint to;

    PixelPoint at(Real64 t) const
    {
        return {from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)};
    }
};

struct PixelBox
{
    Real64 left = std::numeric_limits<Real64>::infinity();
    Real64 top = std::numeric_limits<Real64>::infinity();
    Real64 right = -std::numeric_limits<Real64>::infinity();
    Real64 bottom = -std::numeric_limits<Real64>::infinity();

    void extendBy(PixelPoint const &point)
    {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
        top = std::min(top, point.y);
        bottom = std::max(bottom, point.y);
    }
    bool meets(PixelBox const &other) const
    {
        return left <= other.right && other.left <= right && top <= other.bottom &&
               other.top <= bottom;
    }
    PixelBox grownBy(Real64 width) const
    {
        return {left - width, top - width, right + width, bottom + width};
    }
};

inline PixelBox box_of(PixelEdge const &edge)
{
    PixelBox box;
    box.extendBy(edge.from);
    box.extendBy(edge.to);
    return box;
}

/// Twice the area of the triangle, positive where it is clockwise in the window.
inline Real64 turn(PixelPoint const &a, PixelPoint const &b, PixelPoint const &c)
{
    return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

/// Where the point of the edge that is nearest to `point` lies: 0 at its begin, 1 at its end.
OSG_TOLVANITEKIT_API Real64 nearest_place(PixelEdge const &edge, PixelPoint const &point);
/// The distance between them.
OSG_TOLVANITEKIT_API Real64 distance_between(PixelEdge const &edge, PixelPoint const &point);

/// Edges in rows. An edge stands in each row that it reaches, by where it is leftmost there.
class OSG_TOLVANITEKIT_API PixelEdges
{
  public:
    PixelEdges() = default;
    explicit PixelEdges(std::vector<PixelEdge> edges);

    bool isEmpty() const { return _edges.empty(); }
    std::vector<PixelEdge> const &getEdges() const { return _edges; }
    PixelBox const &getBox() const { return _box; }

    /// The rows that a box reaches.
    UInt32 countRows(PixelBox const &box) const { return rowOf(box.bottom) - rowOf(box.top) + 1; }
    /// Calls `visit` with each edge whose box meets `box`, until `visit` returns false. False where
    /// it did. An edge may come once for each row that the box reaches.
    template <class Visit>
    bool visitIn(PixelBox const &box, Visit visit) const;

  private:
    struct InRow
    {
        Real64 left;
        UInt32 edge;
    };
    struct Row
    {
        std::size_t begin = 0; // in _inRows; it ends where the next one begins
        Real64 widest = 0;     // of its edges within the row
    };

    UInt32 rowOf(Real64 y) const;
    template <class Put>
    void putInRows(PixelEdge const &edge, Put put) const;

    std::vector<PixelEdge> _edges;
    PixelBox _box;
    Real64 _rowsPerPixel = 0;
    std::vector<Row> _rows; // and one behind the last
    std::vector<InRow> _inRows;
};

template <class Visit>
bool PixelEdges::visitIn(PixelBox const &box, Visit visit) const
{
    if(_edges.empty() || !box.meets(_box))
        return true;
    for(UInt32 row = rowOf(box.top), last = rowOf(box.bottom); row <= last; ++row)
    {
        InRow const *const end = _inRows.data() + _rows[row + 1].begin;
        InRow const *at =
            std::lower_bound(_inRows.data() + _rows[row].begin, end, box.left - _rows[row].widest,
                             [](InRow const &a, Real64 left) { return a.left < left; });
        for(; at != end && at->left <= box.right; ++at)
        {
            PixelEdge const &edge = _edges[at->edge];
            if(box_of(edge).meets(box) && !visit(edge))
                return false;
        }
    }
    return true;
}
} // namespace OSG
