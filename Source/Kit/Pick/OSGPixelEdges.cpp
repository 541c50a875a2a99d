#include "OSGPixelEdges.h"

#include <utility>

namespace OSG
{
namespace
{
// Rows of long edges hold nearly all of them, so there are fewer rows where there are more edges.
constexpr std::size_t MostRows = 1024;
constexpr std::size_t MostInRows = std::size_t(1) << 22;

std::size_t number_of_rows(std::size_t edges)
{
    return std::clamp<std::size_t>(std::min(edges, MostInRows / edges), 1, MostRows);
}
} // namespace

Real64 nearest_place(PixelEdge const &edge, PixelPoint const &point)
{
    Real64 const dx = edge.to.x - edge.from.x;
    Real64 const dy = edge.to.y - edge.from.y;
    Real64 const square = dx * dx + dy * dy;
    if(!(square > 0))
        return 0;
    Real64 const along = (point.x - edge.from.x) * dx + (point.y - edge.from.y) * dy;
    return std::clamp(along / square, 0., 1.);
}

Real64 distance_between(PixelEdge const &edge, PixelPoint const &point)
{
    PixelPoint const nearest = edge.at(nearest_place(edge, point));
    return std::hypot(point.x - nearest.x, point.y - nearest.y);
}

PixelEdges::PixelEdges(std::vector<PixelEdge> edges)
    : _edges(std::move(edges))
{
    if(_edges.empty())
        return;
    for(PixelEdge const &edge : _edges)
    {
        _box.extendBy(edge.from);
        _box.extendBy(edge.to);
    }
    std::size_t const rows = number_of_rows(_edges.size());
    Real64 const height = _box.bottom - _box.top;
    _rowsPerPixel = height > 0 ? static_cast<Real64>(rows) / height : 0;
    _rows.resize(rows + 1);
    for(PixelEdge const &edge : _edges)
        putInRows(edge, [this](UInt32 row, Real64, Real64) { ++_rows[row].begin; });
    // The sums are the ends of the rows. Filling turns them into the begins.
    std::size_t sum = 0;
    for(Row &row : _rows)
        row.begin = sum += row.begin;
    _inRows.resize(sum);
    for(UInt32 i = 0; i < _edges.size(); ++i)
        putInRows(_edges[i],
                  [this, i](UInt32 row, Real64 left, Real64 right)
                  {
                      _inRows[--_rows[row].begin] = {left, i};
                      _rows[row].widest = std::max(_rows[row].widest, right - left);
                  });
    for(std::size_t row = 0; row < rows; ++row)
        std::sort(_inRows.begin() + static_cast<std::ptrdiff_t>(_rows[row].begin),
                  _inRows.begin() + static_cast<std::ptrdiff_t>(_rows[row + 1].begin),
                  [](InRow const &a, InRow const &b) { return a.left < b.left; });
}

// Calls `put` with each row that the edge reaches, and with where it is leftmost and rightmost
// there, a little beyond the row for the sake of rounding.
template <class Put>
void PixelEdges::putInRows(PixelEdge const &edge, Put put) const
{
    PixelBox const around = box_of(edge);
    UInt32 const first = rowOf(around.top);
    UInt32 const last = rowOf(around.bottom);
    for(UInt32 row = first; row <= last; ++row)
    {
        Real64 left = around.left;
        Real64 right = around.right;
        if(first != last)
        {
            constexpr Real64 Beyond = 0.01;
            Real64 const top = _box.top + (row - Beyond) / _rowsPerPixel;
            Real64 const bottom = _box.top + (row + 1 + Beyond) / _rowsPerPixel;
            Real64 const height = edge.to.y - edge.from.y;
            Real64 const a = edge.at(std::clamp((top - edge.from.y) / height, 0., 1.)).x;
            Real64 const b = edge.at(std::clamp((bottom - edge.from.y) / height, 0., 1.)).x;
            left = std::min(a, b);
            right = std::max(a, b);
        }
        put(row, left, right);
    }
}

UInt32 PixelEdges::rowOf(Real64 y) const
{
    Real64 const row = (y - _box.top) * _rowsPerPixel;
    Real64 const last = static_cast<Real64>(_rows.size() - 2);
    return static_cast<UInt32>(std::clamp(row, 0., last));
}
} // namespace OSG
