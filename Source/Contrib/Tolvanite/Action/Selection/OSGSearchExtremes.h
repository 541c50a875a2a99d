#pragma once

/// \file
/// The nearest and the farthest corner of many primitives, which a loop over them offers.

#include <algorithm>

#include "OSGPartCursor.h"
#include "OSGSearchRecords.h"

namespace OSG::SelectionSearch
{
using TriangleCursor = PartCursor<TriangleRule>;

inline bool passes_near(Extreme const &near, Real32 distance) { return near.distance >= distance; }
inline bool passes_far(Extreme const &far, Real32 distance) { return distance >= far.distance; }

/// Of lines and points. Takes a corner if it is the nearest or the farthest so far. `vertex` is the
/// one whose normal counts. An equal distance counts, so the last of several corners stays.
class PlainExtremes
{
  public:
    explicit PlainExtremes(Plane const &plane)
        : _plane(plane)
    {
    }

    void offer(Pnt3f const &point, UInt32 index, UInt64 vertex)
    {
        Real32 const distance = _plane.distance(point);
        if(passes_near(_extremes.near, distance))
        {
            take(_extremes.near, distance, index, point);
            _nearVertex = vertex;
        }
        if(passes_far(_extremes.far, distance))
        {
            take(_extremes.far, distance, index, point);
            _farVertex = vertex;
        }
    }

    /// The result with the geometry's normals.
    Extremes finish(Geometry const &geometry)
    {
        if(_extremes.near.index >= 0)
            _extremes.near.normal = normal_at(geometry, _nearVertex);
        if(_extremes.far.index >= 0)
            _extremes.far.normal = normal_at(geometry, _farVertex);
        return _extremes;
    }

  private:
    static void take(Extreme &extreme, Real32 distance, UInt32 index, Pnt3f const &point)
    {
        extreme = {distance, static_cast<Int32>(index), point, {}, true};
    }

    Plane const &_plane;
    Extremes _extremes;
    UInt64 _nearVertex = 0;
    UInt64 _farVertex = 0;
};

/// The nearest and the farthest corner of many triangles, and the triangles that they belong to.
/// Normals are looked up at the end instead of for each new extreme.
class TriangleExtremes
{
  public:
    explicit TriangleExtremes(Plane const &plane)
        : _plane(plane)
    {
    }

    void addContained(TriangleCursor const &cursor, Pnt3f const *corners)
    {
        for(int v = 0; v < 3; ++v)
        {
            // A triangle that lies wholly inside keeps the near point of the last crossing
            // triangle.
            Pnt3f const nearPoint = _extremes.near.point;
            if(add(cursor, corners, corners[v], v))
            {
                _extremes.near.point = nearPoint;
                _extremes.near.hasPoint = false;
            }
        }
    }

    /// A corner of what is left of a triangle that was clipped.
    void addClipped(TriangleCursor const &cursor, Pnt3f const *corners, Pnt3f const &point)
    {
        add(cursor, corners, point, NoCorner);
    }

    /// The result. Missing normals are replaced by those of the faces.
    Extremes finish(Geometry const &geometry)
    {
        complete(geometry, _extremes.near, _near);
        complete(geometry, _extremes.far, _far);
        return _extremes;
    }

  private:
    static constexpr int NoCorner = -1;

    struct Source
    {
        Pnt3f triangle[3];
        UInt64 vertex = 0;
        bool hasNormal = false; // the geometry's; the face's for a clipped triangle
    };

    /// Offers a corner of the triangle or of its clipped part. True where it becomes the near
    /// corner.
    bool add(TriangleCursor const &cursor, Pnt3f const *corners, Pnt3f const &point, int corner)
    {
        Real32 const distance = _plane.distance(point);
        bool const isNear = passes_near(_extremes.near, distance);
        bool const isFar = passes_far(_extremes.far, distance);
        Extreme const taken = {distance, static_cast<Int32>(cursor.getIndex()), point, {}, true};
        if(isNear)
            take(_extremes.near, _near, taken, cursor, corners, corner);
        if(isFar)
            take(_extremes.far, _far, taken, cursor, corners, corner);
        return isNear;
    }

    static void take(Extreme &extreme, Source &source, Extreme const &taken,
                     TriangleCursor const &cursor, Pnt3f const *corners, int corner)
    {
        extreme = taken;
        std::copy_n(corners, 3, source.triangle);
        source.hasNormal = corner != NoCorner;
        if(source.hasNormal)
            source.vertex = cursor.getVertex(corner);
    }

    static void complete(Geometry const &geometry, Extreme &extreme, Source const &source)
    {
        Vec3f const own = source.hasNormal ? normal_at(geometry, source.vertex) : Vec3f();
        extreme.normal = complete_normal(own, source.triangle);
    }

    Plane const &_plane;
    Extremes _extremes;
    Source _near;
    Source _far;
};

} // namespace OSG::SelectionSearch
