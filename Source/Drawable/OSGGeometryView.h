#pragma once

/// \file
/// A geometry's arrays as they lie in memory, and how primitives break into triangles and lines.
///
/// A view is taken once per loop; inside it no virtual call is made. It is good until the geometry
/// or one of its arrays is edited.

#include <algorithm>
#include <utility>

#include "OSGGeometry.h"
#include "OSGVector.h"

namespace OSG
{
/// OpenGL primitive types.
enum PrimitiveType : UInt32
{
    PointsPrimitive = 0,
    LinesPrimitive = 1,
    LineLoopPrimitive = 2,
    LineStripPrimitive = 3,
    TrianglesPrimitive = 4,
    TriangleStripPrimitive = 5,
    TriangleFanPrimitive = 6,
    QuadsPrimitive = 7,
    QuadStripPrimitive = 8,
    PolygonPrimitive = 9
};

/// One vertex array with its index.
class VertexChannel
{
  public:
    static constexpr UInt32 NoElement = 0xFFFFFFFF;

    VertexChannel() = default;
    VertexChannel(GeoVectorProperty const *property, GeoIntegralProperty const *index)
        : _indexed(index != nullptr)
    {
        if(property != nullptr)
            _values = property->getArray();
        if(index != nullptr)
            _index = index->getArray();
    }

    /// Elements of the array.
    UInt32 size() const { return _values.size(); }
    /// Vertices that the channel can serve.
    UInt32 vertexCount() const { return _indexed ? _index.size() : _values.size(); }
    bool isIndexed() const { return _indexed; }

    /// The element that vertex `vertex` takes: not below size() where there is none.
    UInt32 elementOf(UInt64 vertex) const
    {
        if(_indexed)
            return vertex < _index.size() ? _index[vertex] : NoElement;
        return vertex < _values.size() ? static_cast<UInt32>(vertex) : NoElement;
    }
    /// The elements of the first `vertices` vertices as they lie in memory; null where there is no
    /// index, it is shorter, or its entries have 8 bits.
    UInt32 const *words(UInt32 vertices) const
    {
        return _indexed && _index.size() >= vertices ? _index.wide() : nullptr;
    }
    /// The elements of vertices `first` + `vertices`[i], all of which are below vertexCount(); true
    /// where they all exist.
    template <std::size_t Count>
    bool findElements(UInt64 first, UInt32 const (&vertices)[Count],
                      UInt32 (&elements)[Count]) const
    {
        return findElements(first, vertices, elements, std::make_index_sequence<Count>());
    }
    Pnt3f point(UInt32 element) const { return read<Pnt3f>(element); }
    Vec3f vector(UInt32 element) const { return read<Vec3f>(element); }
    VectorArray const &values() const { return _values; }

  private:
    template <std::size_t Count, std::size_t... I>
    bool findElements(UInt64 first, UInt32 const (&vertices)[Count], UInt32 (&elements)[Count],
                      std::index_sequence<I...>) const
    {
        UInt32 const *const wide = _index.wide();
        if(wide != nullptr)
            ((elements[I] = wide[first + vertices[I]]), ...);
        else
            ((elements[I] = elementOf(first + vertices[I])), ...);
        return ((elements[I] < _values.size()) && ...);
    }
    // An element out of range is zero. An array of two numbers an element gives 0 for the third.
    template <class Tuple>
    Tuple read(UInt32 element) const
    {
        if(element >= _values.size())
            return Tuple();
        Real32 const *const numbers = _values[element];
        if(_values.dimension() >= 3)
            return Tuple(numbers[0], numbers[1], numbers[2]);
        return Tuple(numbers[0], numbers[1], 0.f);
    }

    VectorArray _values;
    IntegralArray _index;
    bool _indexed = false;
};

/// The primitives and their positions, for loops that need nothing else of a vertex.
class PrimitiveView
{
  public:
    PrimitiveView() = default;
    explicit PrimitiveView(Geometry const &geometry)
        : positions(geometry.getPositions(), geometry.getIndex(Geometry::PositionsSlot))
    {
        if(geometry.getTypes() != nullptr)
            _types = geometry.getTypes()->getArray();
        if(geometry.getLengths() != nullptr)
            _lengths = geometry.getLengths()->getArray();
    }

    UInt32 primitiveCount() const { return _types.size(); }
    UInt32 type(UInt32 primitive) const { return _types[primitive]; }
    /// Vertices of a primitive; 0 where there are more types than lengths.
    UInt32 length(UInt32 primitive) const
    {
        return primitive < _lengths.size() ? _lengths[primitive] : 0;
    }
    /// Vertices that have a position entry; a primitive may claim more.
    UInt32 vertexCount() const { return positions.vertexCount(); }
    /// How many of the `length` vertices from `start` on have a position entry.
    UInt32 available(UInt64 start, UInt32 length) const
    {
        UInt64 const all = vertexCount();
        return start >= all ? 0 : static_cast<UInt32>(std::min<UInt64>(length, all - start));
    }
    /// Vertices that belong to a primitive: the sum of the lengths, at most vertexCount().
    UInt32 usedVertexCount() const
    {
        UInt64 vertices = 0;
        for(UInt32 i = 0; i < primitiveCount(); ++i)
            vertices += length(i);
        return static_cast<UInt32>(std::min<UInt64>(vertices, vertexCount()));
    }

    VertexChannel positions;

  private:
    IntegralArray _types;
    IntegralArray _lengths;
};

class GeometryView : public PrimitiveView
{
  public:
    GeometryView() = default;
    explicit GeometryView(Geometry const &geometry)
        : PrimitiveView(geometry)
        , normals(geometry.getNormals(), geometry.getIndex(Geometry::NormalsSlot))
        , texCoords(geometry.getTexCoords(), geometry.getIndex(Geometry::TexCoordsSlot))
    {
    }

    VertexChannel normals;
    VertexChannel texCoords;
};

/// The triangles of a primitive of `length` vertices, of which the first `available` exist. Odd
/// triangles of a strip run the other way round; polygons and fans break up about their first
/// corner, quads likewise.
struct TriangleRule
{
    static constexpr int Corners = 3;

    static UInt32 count(UInt32 type, UInt32 length, UInt32 available)
    {
        UInt32 const n = std::min(length, available);
        if(type == PolygonPrimitive) // what readers deliver
            return n < 3 ? 0 : n - 2;
        switch(type)
        {
        case TrianglesPrimitive:
            return n / 3;
        case TriangleStripPrimitive:
        case TriangleFanPrimitive:
            return n < 3 ? 0 : n - 2;
        case QuadsPrimitive:
            // The first half of a quad whose last corner is missing is complete.
            return n / 4 * 2 + (n < length && n % 4 == 3 ? 1 : 0);
        case QuadStripPrimitive:
            return n < 4 ? 0 : (n / 2 - 1) * 2;
        default:
            return 0;
        }
    }

    static void corners(UInt32 type, UInt32, UInt32 t, UInt32 (&vertex)[3])
    {
        UInt32 const half = t / 2;
        bool const odd = t % 2 != 0;
        if(type == PolygonPrimitive)
        {
            set(vertex, 0, t + 1, t + 2);
            return;
        }
        switch(type)
        {
        case TrianglesPrimitive:
            set(vertex, 3 * t, 3 * t + 1, 3 * t + 2);
            break;
        case TriangleStripPrimitive:
            odd ? set(vertex, t + 1, t, t + 2) : set(vertex, t, t + 1, t + 2);
            break;
        case QuadsPrimitive:
            odd ? set(vertex, 4 * half, 4 * half + 2, 4 * half + 3)
                : set(vertex, 4 * half, 4 * half + 1, 4 * half + 2);
            break;
        case QuadStripPrimitive:
            odd ? set(vertex, 2 * half, 2 * half + 3, 2 * half + 2)
                : set(vertex, 2 * half, 2 * half + 1, 2 * half + 3);
            break;
        default:
            set(vertex, 0, t + 1, t + 2);
        }
    }

  private:
    static void set(UInt32 (&vertex)[3], UInt32 a, UInt32 b, UInt32 c)
    {
        vertex[0] = a;
        vertex[1] = b;
        vertex[2] = c;
    }
};

/// The lines of a primitive, in the same manner. A loop ends with the line from its last vertex to
/// its first.
struct LineRule
{
    static constexpr int Corners = 2;

    static UInt32 count(UInt32 type, UInt32 length, UInt32 available)
    {
        UInt32 const n = std::min(length, available);
        switch(type)
        {
        case LinesPrimitive:
            return n / 2;
        case LineStripPrimitive:
            return n < 2 ? 0 : n - 1;
        case LineLoopPrimitive:
            return n < 2 ? 0 : (n < length ? n - 1 : n);
        default:
            return 0;
        }
    }

    static void corners(UInt32 type, UInt32 length, UInt32 t, UInt32 (&vertex)[2])
    {
        vertex[0] = type == LinesPrimitive ? 2 * t : t;
        vertex[1] = vertex[0] + 1;
        if(type == LineLoopPrimitive && vertex[1] == length)
            vertex[1] = 0;
    }
};

/// The points of a primitive, in the same manner.
struct PointRule
{
    static constexpr int Corners = 1;

    static UInt32 count(UInt32 type, UInt32 length, UInt32 available)
    {
        return type == PointsPrimitive ? std::min(length, available) : 0;
    }

    static void corners(UInt32, UInt32, UInt32 t, UInt32 (&vertex)[1]) { vertex[0] = t; }
};
} // namespace OSG
