#include "OSGGeometryBox.h"

#include <algorithm>
#include <limits>

#include "OSGGeometryView.h"

namespace OSG
{
namespace
{
/// Whether a primitive of `length` vertices, all of which have positions, delivers a triangle, line
/// or point at each of them.
bool delivers_all(UInt32 type, UInt32 length)
{
    switch(type)
    {
    case PointsPrimitive:
        return true;
    case LinesPrimitive:
        return length % 2 == 0;
    case LineLoopPrimitive:
    case LineStripPrimitive:
        return length >= 2;
    case TrianglesPrimitive:
        return length % 3 == 0;
    case TriangleStripPrimitive:
    case TriangleFanPrimitive:
    case PolygonPrimitive:
        return length >= 3;
    case QuadsPrimitive:
        return length % 4 == 0;
    case QuadStripPrimitive:
        return length >= 4 && length % 2 == 0;
    default:
        return false;
    }
}

/// The box of points of three numbers each, grown without a call per point.
class Extent
{
  public:
    void add(Real32 const *point)
    {
        // NaN alone differs from itself.
        if(point[0] != point[0] || point[1] != point[1] || point[2] != point[2])
            return;
        for(int axis = 0; axis < 3; ++axis)
        {
            _min[axis] = point[axis] < _min[axis] ? point[axis] : _min[axis];
            _max[axis] = point[axis] > _max[axis] ? point[axis] : _max[axis];
        }
        _isEmpty = false;
    }
    void extend(BoxVolume &box) const
    {
        if(_isEmpty)
            return;
        OSG::extend(box,
                    BoxVolume(Pnt3f(_min[0], _min[1], _min[2]), Pnt3f(_max[0], _max[1], _max[2])));
    }

  private:
    static constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();
    Real32 _min[3] = {Infinite, Infinite, Infinite};
    Real32 _max[3] = {-Infinite, -Infinite, -Infinite};
    bool _isEmpty = true;
};

class DeliveredBox
{
  public:
    DeliveredBox(BoxVolume &box, Geometry const &geometry)
        : _box(box)
        , _view(geometry)
    {
    }

    // Neighbouring primitives that deliver all their vertices are taken together. Nearly always
    // that is the whole geometry.
    void extend()
    {
        UInt64 const vertices = _view.vertexCount();
        UInt64 begin = 0; // of the primitives that wait
        UInt64 end = 0;
        for(UInt32 i = 0; i < _view.primitiveCount() && end < vertices; ++i)
        {
            UInt32 const type = _view.type(i);
            UInt32 const length = _view.length(i);
            if(delivers_all(type, length) && length <= vertices - end)
            {
                end += length;
                continue;
            }
            extendByVertices(begin, end);
            extendByParts(type, length, end);
            end += length;
            begin = end;
        }
        if(begin < end && end <= vertices)
            extendByVertices(begin, end);
    }

  private:
    // All primitives in the range deliver all of their vertices. If a vertex has no position, the
    // range is walked part by part.
    void extendByVertices(UInt64 begin, UInt64 end)
    {
        UInt32 const *const words = _view.positions.words(static_cast<UInt32>(end));
        if(_view.positions.values().dimension() != 3)
            extendByPartsFrom(begin, end);
        else if(words != nullptr && allExist(words + begin, words + end))
            extendByPoints(begin, end, [words](UInt64 vertex) { return words[vertex]; });
        else if(!_view.positions.isIndexed())
            extendByPoints(begin, end, [](UInt64 vertex) { return vertex; });
        else
            extendByPartsFrom(begin, end);
    }

    // All of the elements exist.
    template <class ElementOf>
    void extendByPoints(UInt64 begin, UInt64 end, ElementOf elementOf)
    {
        Extent extent;
        for(UInt64 vertex = begin; vertex < end; ++vertex)
            extent.add(_view.positions.values()[elementOf(vertex)]);
        extent.extend(_box);
    }

    bool allExist(UInt32 const *begin, UInt32 const *end) const
    {
        UInt32 highest = 0;
        for(UInt32 const *word = begin; word != end; ++word)
            highest = std::max(highest, *word);
        return highest < _view.positions.size() || begin == end;
    }

    void extendByPartsFrom(UInt64 begin, UInt64 end)
    {
        UInt64 start = 0;
        for(UInt32 i = 0; start < end; ++i)
        {
            UInt32 const length = _view.length(i);
            if(start >= begin)
                extendByParts(_view.type(i), length, start);
            start += length;
        }
    }

    void extendByParts(UInt32 type, UInt32 length, UInt64 start)
    {
        UInt32 const available =
            static_cast<UInt32>(std::min<UInt64>(length, _view.vertexCount() - start));
        if(type == PointsPrimitive)
        {
            for(UInt32 i = 0; i < available; ++i)
                extendByElements<1>({_view.positions.elementOf(start + i)});
            return;
        }
        extendByRule<TriangleRule>(type, length, available, start);
        extendByRule<LineRule>(type, length, available, start);
    }

    template <class Rule>
    void extendByRule(UInt32 type, UInt32 length, UInt32 available, UInt64 start)
    {
        UInt32 const parts = Rule::count(type, length, available);
        for(UInt32 part = 0; part < parts; ++part)
        {
            UInt32 corners[Rule::Corners];
            Rule::corners(type, length, part, corners);
            for(UInt32 &corner : corners)
                corner = _view.positions.elementOf(start + corner);
            extendByElements(corners);
        }
    }

    // The corners of a part. If one of them has no position, the part adds nothing.
    template <std::size_t Count>
    void extendByElements(UInt32 const (&elements)[Count])
    {
        for(UInt32 const element : elements)
            if(element >= _view.positions.size())
                return;
        for(UInt32 const element : elements)
            _box.extendBy(_view.positions.point(element));
    }

    BoxVolume &_box;
    PrimitiveView _view;
};
} // namespace

void extend_by_delivered(BoxVolume &box, Geometry const &geometry)
{
    DeliveredBox(box, geometry).extend();
}
} // namespace OSG
