#pragma once

/// \file
/// Iterators over the triangles, lines and primitives of a geometry.
///
/// They are good until the geometry or one of its arrays is edited. Triangles and lines are
/// delivered only where all their position indices are in range. The running index counts those
/// that are delivered, from 0, over the whole geometry. A missing normal or texture coordinate
/// reads as zero.

#include "OSGPartCursor.h"

namespace OSG
{
/// Walks every entry of the types, whatever it holds.
class OSG_DRAWABLE_API PrimitiveIterator
{
  public:
    PrimitiveIterator() = default;

    bool operator==(PrimitiveIterator const &other) const { return _index == other._index; }
    bool operator!=(PrimitiveIterator const &other) const { return _index != other._index; }
    PrimitiveIterator &operator++()
    {
        _start += getLength();
        ++_index;
        return *this;
    }

    /// Number of the primitive.
    UInt32 getIndex() const { return _index; }
    UInt32 getType() const { return _view.type(_index); }
    /// Vertices that the primitive claims; see getAvailable().
    UInt32 getLength() const { return _view.length(_index); }
    /// How many of them exist, counted from the first.
    UInt32 getAvailable() const { return _view.available(_start, getLength()); }

    /// Vertex `i` of the primitive has a position.
    bool hasPosition(Int32 i) const { return getPositionIndex(i) < _view.positions.size(); }
    Pnt3f getPosition(Int32 i) const { return _view.positions.point(getPositionIndex(i)); }
    Vec3f getNormal(Int32 i) const { return _view.normals.vector(getNormalIndex(i)); }
    /// Elements of the arrays; 4294967295 or another number beyond the array where there is none.
    UInt32 getPositionIndex(Int32 i) const { return _view.positions.elementOf(vertex(i)); }
    UInt32 getNormalIndex(Int32 i) const { return _view.normals.elementOf(vertex(i)); }
    UInt32 getTexCoordsIndex(Int32 i) const { return _view.texCoords.elementOf(vertex(i)); }

  private:
    friend class Geometry;

    explicit PrimitiveIterator(Geometry const &geometry)
        : _view(geometry)
    {
    }
    UInt64 vertex(Int32 i) const { return _start + static_cast<UInt32>(i); }

    GeometryView _view;
    UInt64 _start = 0; // first vertex of the primitive
    UInt32 _index = 0;
};

/// Walks the parts that `Rule` breaks primitives into.
template <class Rule>
class PartIterator
{
  public:
    PartIterator() = default;

    bool operator==(PartIterator const &other) const
    {
        return _cursor.getPrimitive() == other._cursor.getPrimitive() &&
               _cursor.getPart() == other._cursor.getPart();
    }
    bool operator!=(PartIterator const &other) const { return !(*this == other); }
    PartIterator &operator++()
    {
        _cursor.next();
        return *this;
    }

    /// Running number of the part over the whole geometry.
    Int32 getIndex() const { return static_cast<Int32>(_cursor.getIndex()); }
    /// The primitive that the part belongs to.
    UInt32 getPrimitiveIndex() const { return _cursor.getPrimitive(); }

    // --- corners, counted from 0 ---
    Pnt3f getPosition(Int32 corner) const { return _cursor.getPosition(corner); }
    Vec3f getNormal(Int32 corner) const { return _normals.vector(getNormalIndex(corner)); }
    /// Element of the position array; always in range.
    UInt32 getPositionIndex(Int32 corner) const { return _cursor.getElement(corner); }
    /// Elements of the other arrays; beyond the array where there is none.
    UInt32 getNormalIndex(Int32 corner) const { return _normals.elementOf(getVertex(corner)); }
    UInt32 getTexCoordsIndex(Int32 corner) const { return _texCoords.elementOf(getVertex(corner)); }
    /// Running number of the corner's vertex in the geometry's sequence.
    UInt64 getVertex(Int32 corner) const { return _cursor.getVertex(corner); }

  private:
    friend class Geometry;

    explicit PartIterator(Geometry const &geometry)
        : _cursor(geometry)
        , _normals(geometry.getNormals(), geometry.getIndex(Geometry::NormalsSlot))
        , _texCoords(geometry.getTexCoords(), geometry.getIndex(Geometry::TexCoordsSlot))
    {
    }

    // The iterator behind the last part.
    static PartIterator end(Geometry const &geometry)
    {
        PartIterator it;
        it._cursor = PartCursor<Rule>::endOf(geometry);
        return it;
    }

    PartCursor<Rule> _cursor;
    VertexChannel _normals;
    VertexChannel _texCoords;
};

/// Triangles of triangles, strips, fans, quads, quad strips and polygons.
class TriangleIterator : public PartIterator<TriangleRule>
{
  public:
    TriangleIterator() = default;
    TriangleIterator(PartIterator<TriangleRule> const &parts)
        : PartIterator(parts)
    {
    }
};

/// Lines of lines, strips and loops.
class LineIterator : public PartIterator<LineRule>
{
  public:
    LineIterator() = default;
    LineIterator(PartIterator<LineRule> const &parts)
        : PartIterator(parts)
    {
    }
};

inline TriangleIterator Geometry::beginTriangles() const
{
    return TriangleIterator(PartIterator<TriangleRule>(*this));
}
inline TriangleIterator Geometry::endTriangles() const
{
    return TriangleIterator(PartIterator<TriangleRule>::end(*this));
}
inline LineIterator Geometry::beginLines() const
{
    return LineIterator(PartIterator<LineRule>(*this));
}
inline LineIterator Geometry::endLines() const
{
    return LineIterator(PartIterator<LineRule>::end(*this));
}
inline PrimitiveIterator Geometry::beginPrimitives() const { return PrimitiveIterator(*this); }
inline PrimitiveIterator Geometry::endPrimitives() const
{
    PrimitiveIterator end;
    end._index = getTypes() != nullptr ? getTypes()->getArray().size() : 0;
    return end;
}
} // namespace OSG
