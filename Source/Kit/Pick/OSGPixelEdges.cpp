#include "OSGPixelEdges.h"

#include <numeric>
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
    _rowBegin.assign(rows + 1, 0);
    for(PixelEdge const &edge : _edges)
        for(UInt32 row = rowOf(box_of(edge).top); row <= rowOf(box_of(edge).bottom); ++row)
            ++_rowBegin[row];
    // The sums are the ends of the rows. Filling from the back turns them into the begins.
    std::partial_sum(_rowBegin.begin(), _rowBegin.end(), _rowBegin.begin());
    _inRows.resize(_rowBegin.back());
    for(std::size_t i = _edges.size(); i-- > 0;)
        for(UInt32 row = rowOf(box_of(_edges[i]).top); row <= rowOf(box_of(_edges[i]).bottom);
            ++row)
            _inRows[--_rowBegin[row]] = static_cast<UInt32>(i);
}

UInt32 PixelEdges::rowOf(Real64 y) const
{
    Real64 const row = (y - _box.top) * _rowsPerPixel;
    Real64 const last = static_cast<Real64>(_rowBegin.size() - 2);
    return static_cast<UInt32>(std::clamp(row, 0., last));
}
} // namespace OSG
