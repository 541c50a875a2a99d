#include "OSGRegionPart.h"

#include <algorithm>

namespace OSG
{
namespace
{
Pnt3f narrow(Pnt3d const &point)
{
    return Pnt3f(static_cast<Real32>(point[0]), static_cast<Real32>(point[1]),
                 static_cast<Real32>(point[2]));
}

Pnt3d between(Pnt3d const &a, Pnt3d const &b, Real64 t) { return a + (b - a) * t; }

bool differ_in_sign(Real64 a, Real64 b) { return a != b && !(a > 0 && b > 0) && !(a < 0 && b < 0); }
} // namespace

RegionPart::Grade RegionPart::cut(Pnt3f const *local, Pnt3d const *root, int count)
{
    _corners.clear();
    if(!start(local, root, count))
        return Outside;
    for(HalfSpace const &half : _region.getHalfSpaces())
    {
        clip(half);
        if(_left.empty())
            return Outside;
    }
    if(_region.getWindow() != nullptr)
        return cutAtArea();
    if(_isWhole)
        return Contained;
    for(Corner const &corner : _left)
        _corners.push_back(narrow(corner.local));
    return Crossing;
}

bool RegionPart::start(Pnt3f const *local, Pnt3d const *root, int count)
{
    _left.clear();
    for(int i = 0; i < count; ++i)
    {
        if(!is_finite(root[i]))
            return false;
        _left.push_back({wide(local[i]), root[i]});
    }
    _isWhole = true;
    return true;
}

// By the method of Sutherland and Hodgman (1974). A line goes to its end and back; that its corners
// come twice does no harm.
void RegionPart::clip(HalfSpace const &half)
{
    bool const isInside =
        std::all_of(_left.begin(), _left.end(),
                    [&half](Corner const &corner) { return half.holds(corner.root); });
    if(isInside)
        return;
    _isWhole = false;
    _next.clear();
    for(std::size_t i = 0; i < _left.size(); ++i)
    {
        Corner const &from = _left[i];
        Corner const &to = _left[following(i)];
        Real64 const atFrom = half.at(from.root);
        Real64 const atTo = half.at(to.root);
        if(atFrom >= 0)
            _next.push_back(from);
        if((atFrom >= 0) == (atTo >= 0))
            continue;
        Real64 const t = atFrom / (atFrom - atTo);
        _next.push_back({between(from.local, to.local, t), between(from.root, to.root, t)});
    }
    _left.swap(_next);
}

// The corners of the part are those of the primitive that lie in the area, those of the area that
// lie in the primitive, and the places where their edges cross.
RegionPart::Grade RegionPart::cutAtArea()
{
    if(!showCorners())
        return Outside;
    bool isContained = _isWhole && std::all_of(_shown.begin(), _shown.end(),
                                               [](Shown const &shown) { return shown.isInArea; });
    PixelEdges const &boundary = _region.getArea().getBoundary();
    PixelBox const around = _box.grownBy(PixelPolygon::EdgeWidth);
    if(isContained)
        isContained =
            boundary.visitIn(around, [this](PixelEdge const &edge) { return !entersInside(edge); });
    if(isContained)
        return Contained;
    for(std::size_t i = 0; i < _left.size(); ++i)
        if(_shown[i].isInArea)
            _corners.push_back(narrow(_left[i].local));
    boundary.visitIn(around,
                     [this](PixelEdge const &edge)
                     {
                         offerMeetings(edge);
                         return true;
                     });
    return _corners.empty() ? Outside : Crossing;
}

// False where the corners show that the primitive is outside.
bool RegionPart::showCorners()
{
    constexpr Real64 NoArea = 1e-9; // square pixels
    _shown.clear();
    _box = PixelBox();
    for(Corner const &corner : _left)
    {
        _shown.push_back({_region.getWindow()->placeOf(corner.root), false});
        _box.extendBy(_shown.back().place.pixel);
    }
    if(!_box.grownBy(PixelPolygon::EdgeWidth).meets(_region.getArea().getBox()))
        return false;
    Real64 area = 0;
    for(std::size_t i = 1; i + 1 < _shown.size(); ++i)
        area += turn(_shown[0].place.pixel, _shown[i].place.pixel, _shown[i + 1].place.pixel);
    _turn = area > NoArea ? 1 : area < -NoArea ? -1 : 0;
    for(Shown &shown : _shown)
        shown.isInArea = _region.getArea().contains(shown.place.pixel);
    return true;
}

// Whether a part of the edge lies inside the primitive, farther than EdgeWidth from its edges (the
// method of Cyrus and Beck, 1978).
bool RegionPart::entersInside(PixelEdge const &edge) const
{
    if(_turn == 0)
        return false;
    Real64 begin = 0;
    Real64 end = 1;
    for(std::size_t i = 0; i < _shown.size(); ++i)
    {
        PixelEdge const side = edgeAt(i);
        Real64 const length = std::hypot(side.to.x - side.from.x, side.to.y - side.from.y);
        Real64 const margin = PixelPolygon::EdgeWidth * length;
        Real64 const atFrom = _turn * turn(side.from, side.to, edge.from) - margin;
        Real64 const atTo = _turn * turn(side.from, side.to, edge.to) - margin;
        if(atFrom <= 0 && atTo <= 0)
            return false;
        Real64 const t = atFrom / (atFrom - atTo);
        if(atFrom < 0)
            begin = std::max(begin, t);
        else if(atTo < 0)
            end = std::min(end, t);
    }
    return begin < end;
}

void RegionPart::offerMeetings(PixelEdge const &edge)
{
    for(std::size_t i = 0; i < _shown.size(); ++i)
    {
        PixelEdge const side = edgeAt(i);
        Real64 const atFrom = turn(edge.from, edge.to, side.from);
        Real64 const atTo = turn(edge.from, edge.to, side.to);
        if(differ_in_sign(atFrom, atTo) &&
           differ_in_sign(turn(side.from, side.to, edge.from), turn(side.from, side.to, edge.to)))
            offerOnEdge(i, atFrom / (atFrom - atTo));
    }
    offerCorner(edge.from);
    offerCorner(edge.to);
}

void RegionPart::offerCorner(PixelPoint const &corner)
{
    PixelBox box;
    box.extendBy(corner);
    if(!box.grownBy(PixelPolygon::EdgeWidth).meets(_box))
        return;
    bool isInside = _turn != 0;
    for(std::size_t i = 0; i < _shown.size(); ++i)
    {
        PixelEdge const side = edgeAt(i);
        if(distance_between(side, corner) <= PixelPolygon::EdgeWidth)
        {
            offerOnEdge(i, nearest_place(side, corner));
            return;
        }
        isInside = isInside && _turn * turn(side.from, side.to, corner) > 0;
    }
    if(isInside)
        offerInside(corner);
}

// Places in the window are not places in space: weights bring in the depths.
void RegionPart::offerOnEdge(std::size_t edge, Real64 place)
{
    std::size_t const next = following(edge);
    Real64 const from = (1 - place) * _shown[edge].place.weight;
    Real64 const to = place * _shown[next].place.weight;
    _corners.push_back(narrow(between(_left[edge].local, _left[next].local, to / (from + to))));
}

// The polygon is a fan about its first corner.
void RegionPart::offerInside(PixelPoint const &point)
{
    for(std::size_t i = 1; i + 1 < _shown.size(); ++i)
    {
        PixelPoint const &a = _shown[0].place.pixel;
        PixelPoint const &b = _shown[i].place.pixel;
        PixelPoint const &c = _shown[i + 1].place.pixel;
        bool const isLast = i + 2 == _shown.size();
        Real64 const toC = _turn * turn(a, b, point) * _shown[i + 1].place.weight;
        Real64 const toB = _turn * turn(c, a, point) * _shown[i].place.weight;
        Real64 const toA = _turn * turn(b, c, point) * _shown[0].place.weight;
        if(toB < 0 && !isLast) // beyond the edge to the next triangle
            continue;
        Real64 const sum = toA + toB + toC;
        if(!(sum > 0))
            return;
        Pnt3d const base = _left[0].local;
        _corners.push_back(narrow(base + (_left[i].local - base) * (toB / sum) +
                                  (_left[i + 1].local - base) * (toC / sum)));
        return;
    }
}
} // namespace OSG
