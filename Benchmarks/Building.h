#pragma once

/// \file
/// A building of rooms without transforms; a room is a geometry of 400 triangles.

#include <algorithm>

#include "SceneParts.h"

namespace OSG::Bench
{
/// The size of a room from wall to wall and from its floor to the next one, and the distance from
/// one room to the next. A room has a floor and four walls.
inline Vec3f const RoomSize(5.f, 3.f, 4.f);
inline Vec3f const RoomPitch(5.2f, 3.3f, 4.2f);

struct RoomBuilder
{
    Positions positions;
    Index index;

    // 8 by 5 cells of two triangles.
    void addFace(Pnt3f const &corner, Vec3f const &right, Vec3f const &up)
    {
        constexpr UInt32 Columns = 8;
        constexpr UInt32 Rows = 5;
        UInt32 const first = static_cast<UInt32>(positions.size());
        for(UInt32 i = 0; i < (Columns + 1) * (Rows + 1); ++i)
            positions.push_back(corner +
                                right * (static_cast<Real32>(i % (Columns + 1)) / Columns) +
                                up * (static_cast<Real32>(i / (Columns + 1)) / Rows));
        for(UInt32 i = 0; i < Columns * Rows; ++i)
        {
            UInt32 const a = first + i / Columns * (Columns + 1) + i % Columns;
            UInt32 const above = a + Columns + 1;
            index.insert(index.end(), {a, a + 1, above, a + 1, above + 1, above});
        }
    }
};

/// The room reaches from `corner` along x and y and against z.
inline NodePtr room(Pnt3f const &corner)
{
    Vec3f const x(RoomSize[0], 0, 0);
    Vec3f const y(0, RoomSize[1], 0);
    Vec3f const z(0, 0, -RoomSize[2]);
    RoomBuilder room;
    room.addFace(corner, x, z);
    room.addFace(corner, x, y);
    room.addFace(corner + z, x, y);
    room.addFace(corner, z, y);
    room.addFace(corner + x, z, y);
    return shape(room.positions, room.index);
}

/// Ten storeys of equally many rooms: five rows of ten rooms, and beside them as many rows again.
/// `triangles` is a multiple of 4,000.
inline NodePtr building(UInt32 triangles)
{
    constexpr UInt32 Storeys = 10;
    constexpr UInt32 TrianglesOfRoom = 400;
    constexpr UInt32 Columns = 10;
    constexpr UInt32 Rows = 5;
    NodePtr root = group();
    for(UInt32 storey = 0; storey < Storeys; ++storey)
    {
        NodePtr const floor = group();
        for(UInt32 number = 0; number < triangles / TrianglesOfRoom / Storeys; ++number)
        {
            UInt32 const column = number / (Columns * Rows) * Columns + number % Columns;
            UInt32 const row = number / Columns % Rows;
            floor->addChild(room(Pnt3f(static_cast<Real32>(column) * RoomPitch[0],
                                       static_cast<Real32>(storey) * RoomPitch[1],
                                       -static_cast<Real32>(row) * RoomPitch[2])));
        }
        root->addChild(floor);
    }
    return root;
}
} // namespace OSG::Bench
