#pragma once

/// \file
/// A slow, obvious expansion of primitives to triangles and lines. Every primitive is expanded as
/// OpenGL defines it. Triangles and lines with missing vertices are then dropped.

#include <algorithm>
#include <array>

#include "GeometryBuilders.h"

namespace OSG::Test
{
template <std::size_t Corners>
using PartList = std::vector<std::array<UInt32, Corners>>; ///< vertices, counted from 0

inline PartList<3> triangles_of(UInt32 type, UInt32 n)
{
    PartList<3> result;
    switch(type)
    {
    case TrianglesPrimitive:
        for(UInt32 i = 0; i + 2 < n; i += 3)
            result.push_back({i, i + 1, i + 2});
        break;
    case TriangleStripPrimitive:
        for(UInt32 i = 0; i + 2 < n; ++i)
            result.push_back(i % 2 == 0 ? std::array<UInt32, 3>{i, i + 1, i + 2}
                                        : std::array<UInt32, 3>{i + 1, i, i + 2});
        break;
    case TriangleFanPrimitive:
    case PolygonPrimitive:
        for(UInt32 i = 1; i + 1 < n; ++i)
            result.push_back({0, i, i + 1});
        break;
    case QuadsPrimitive:
        for(UInt32 i = 0; i + 3 < n; i += 4)
        {
            result.push_back({i, i + 1, i + 2});
            result.push_back({i, i + 2, i + 3});
        }
        break;
    case QuadStripPrimitive:
        for(UInt32 i = 0; i + 3 < n; i += 2)
        {
            result.push_back({i, i + 1, i + 3});
            result.push_back({i, i + 3, i + 2});
        }
        break;
    default:
        break;
    }
    return result;
}

inline PartList<2> lines_of(UInt32 type, UInt32 n)
{
    PartList<2> result;
    if(type == LinesPrimitive)
    {
        for(UInt32 i = 0; i + 1 < n; i += 2)
            result.push_back({i, i + 1});
    }
    if(type == LineStripPrimitive || type == LineLoopPrimitive)
    {
        for(UInt32 i = 0; i + 1 < n; ++i)
            result.push_back({i, i + 1});
    }
    if(type == LineLoopPrimitive && n > 1)
        result.push_back({n - 1, 0});
    return result;
}

/// The array element of a vertex; `size`, the size of the array, if there is none.
inline UInt32 element_of(UInt32 vertex, std::vector<UInt32> const &index, UInt32 size)
{
    if(!index.empty())
        return vertex < index.size() ? std::min(index[vertex], size) : size;
    return std::min(vertex, size);
}

inline UInt32 position_element(GeometryParts const &parts, UInt32 vertex)
{
    return element_of(vertex, parts.index, static_cast<UInt32>(parts.positions.size()));
}

inline bool has_position(GeometryParts const &parts, UInt32 vertex)
{
    return position_element(parts, vertex) < parts.positions.size();
}

inline Pnt3f position_of(GeometryParts const &parts, UInt32 vertex)
{
    return parts.positions[position_element(parts, vertex)];
}

inline Vec3f normal_of(GeometryParts const &parts, UInt32 vertex)
{
    UInt32 const size = static_cast<UInt32>(parts.normals.size());
    UInt32 const element = element_of(vertex, parts.normalIndex, size);
    return element < size ? parts.normals[element] : Vec3f();
}

/// What `expand` (triangles_of or lines_of) makes of all primitives, by running vertex numbers,
/// where every corner has a position.
template <std::size_t Corners>
PartList<Corners> expand_parts(GeometryParts const &parts,
                               PartList<Corners> (*expand)(UInt32 type, UInt32 length))
{
    PartList<Corners> result;
    UInt32 start = 0;
    for(std::size_t i = 0; i < std::min(parts.types.size(), parts.lengths.size()); ++i)
    {
        for(std::array<UInt32, Corners> part : expand(parts.types[i], parts.lengths[i]))
        {
            for(UInt32 &vertex : part)
                vertex += start;
            if(std::all_of(part.begin(), part.end(),
                           [&](UInt32 vertex) { return has_position(parts, vertex); }))
                result.push_back(part);
        }
        start += parts.lengths[i];
    }
    return result;
}
} // namespace OSG::Test
