#pragma once

/// \file
/// Tables of viewpoints, stored in columns, and cursors that step through them. A viewpoint
/// consists of the `from` point, the `at` point and the `up` vector of a camera.

#include <algorithm>
#include <optional>

#include "OSGBaseTypes.h"
#include "OSGFields.h"
#include "OSGVector.h"

namespace OSG
{
/// Two viewpoints are equal if no component differs by more than this.
inline constexpr Real32 ViewpointTolerance = 1e-6f;

/// A table of viewpoints for reading, one viewpoint for each row, with one more column. The columns
/// of a damaged file may differ in length. The table then has as many rows as its shortest column.
template <class Extra>
struct ViewpointRows
{
    MField<Extra> const &extra;
    MField<Pnt3f> const &from;
    MField<Pnt3f> const &at;
    MField<Vec3f> const &up;

    UInt32 size() const
    {
        return static_cast<UInt32>(std::min({extra.size(), from.size(), at.size(), up.size()}));
    }
    bool columnsAgree() const
    {
        std::size_t const rows = size();
        return extra.size() == rows && from.size() == rows && at.size() == rows &&
               up.size() == rows;
    }
    /// Whether the last row equals this viewpoint. False for a table without rows.
    bool endsWith(Pnt3f const &f, Pnt3f const &a, Vec3f const &u) const
    {
        if(size() == 0)
            return false;
        UInt32 const last = size() - 1;
        return from[last].equals(f, ViewpointTolerance) && at[last].equals(a, ViewpointTolerance) &&
               up[last].equals(u, ViewpointTolerance);
    }
};

/// A table of viewpoints for writing.
template <class Extra>
struct ViewpointColumns
{
    MField<Extra> &extra;
    MField<Pnt3f> &from;
    MField<Pnt3f> &at;
    MField<Vec3f> &up;

    void resize(std::size_t rows)
    {
        extra.resize(rows);
        from.resize(rows);
        at.resize(rows);
        up.resize(rows);
    }
    void append(Extra const &e, Pnt3f const &f, Pnt3f const &a, Vec3f const &u)
    {
        extra.push_back(e);
        from.push_back(f);
        at.push_back(a);
        up.push_back(u);
    }
    void erase(UInt32 row)
    {
        extra.erase(extra.begin() + row);
        from.erase(from.begin() + row);
        at.erase(at.begin() + row);
        up.erase(up.begin() + row);
    }
};

/// The row after `row`. No value after the last row. No value for -1 either, which stands for a
/// cursor that is at no row: such a cursor enters the table by a start operation.
inline std::optional<Int32> next_row(Int32 row, UInt32 rows)
{
    if(row < 0 || Int64(row) + 1 >= Int64(rows))
        return std::nullopt;
    return row + 1;
}

/// The row before `row`. No value for the first row and for -1.
inline std::optional<Int32> previous_row(Int32 row, UInt32 rows)
{
    if(row < 1 || Int64(row) - 1 >= Int64(rows))
        return std::nullopt;
    return row - 1;
}

/// A tick of a recording whose rows last several ticks each: the row, and the tick within the row,
/// counted from 1. (-1, 0) stands for no tick.
struct TickCursor
{
    Int32 row = -1;
    UInt32 tick = 0;
};

/// The tick after `at`. No value after the last tick and for (-1, 0). `ticks` holds the number of
/// ticks of each of the `rows` rows.
inline std::optional<TickCursor> next_tick(TickCursor at, MField<UInt32> const &ticks, UInt32 rows)
{
    if(at.row < 0 || Int64(at.row) >= Int64(rows))
        return std::nullopt;
    if(at.tick < ticks[static_cast<UInt32>(at.row)])
        return TickCursor{at.row, at.tick + 1};
    auto const row = next_row(at.row, rows);
    return row ? std::optional(TickCursor{*row, 1}) : std::nullopt;
}

/// The tick before `at`. No value before the first tick and for (-1, 0).
inline std::optional<TickCursor> previous_tick(TickCursor at, MField<UInt32> const &ticks,
                                               UInt32 rows)
{
    if(at.tick >= 2 && at.row >= 0 && Int64(at.row) < Int64(rows))
        return TickCursor{at.row, at.tick - 1};
    std::optional<Int32> const row = at.tick < 2 ? previous_row(at.row, rows) : std::nullopt;
    return row ? std::optional<TickCursor>(TickCursor{*row, ticks[static_cast<UInt32>(*row)]})
               : std::nullopt;
}
} // namespace OSG
