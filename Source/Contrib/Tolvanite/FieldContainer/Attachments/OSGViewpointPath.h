#pragma once

/// \file
/// Viewpoints in columns, and the cursors that step through them. A viewpoint is the `from` point,
/// `at` point and `up` vector of a camera. Nothing here knows of scenes or change lists.

#include <algorithm>
#include <optional>

#include "OSGBaseTypes.h"
#include "OSGFields.h"
#include "OSGVector.h"

namespace OSG
{
/// A viewpoint equals another where no component differs by more than this.
inline constexpr Real32 ViewpointTolerance = 1e-6f;

/// Viewpoints for reading, one per row, with a column of something else beside them. Columns that
/// come from a damaged file may differ in length: what not all of them have is no row.
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
    /// Whether the last row is this viewpoint; false without rows.
    bool endsWith(Pnt3f const &f, Pnt3f const &a, Vec3f const &u) const
    {
        if(size() == 0)
            return false;
        UInt32 const last = size() - 1;
        return from[last].equals(f, ViewpointTolerance) && at[last].equals(a, ViewpointTolerance) &&
               up[last].equals(u, ViewpointTolerance);
    }
};

/// The same columns for writing.
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

/// The row behind `row`; none at the last one, and none from nowhere (-1): the way in is the start.
inline std::optional<Int32> next_row(Int32 row, UInt32 rows)
{
    if(row < 0 || Int64(row) + 1 >= Int64(rows))
        return std::nullopt;
    return row + 1;
}

/// The row before `row`; none at the first one and from nowhere.
inline std::optional<Int32> previous_row(Int32 row, UInt32 rows)
{
    if(row < 1 || Int64(row) - 1 >= Int64(rows))
        return std::nullopt;
    return row - 1;
}

/// A place in a recording that stores a viewpoint once for as many ticks as it lasted: the row and
/// the tick within it, counted from 1. (-1, 0) is nowhere.
struct TickCursor
{
    Int32 row = -1;
    UInt32 tick = 0;
};

/// One tick on; none at the end and from nowhere. `ticks` holds the ticks of each of `rows` rows.
inline std::optional<TickCursor> next_tick(TickCursor at, MField<UInt32> const &ticks, UInt32 rows)
{
    if(at.row < 0 || Int64(at.row) >= Int64(rows))
        return std::nullopt;
    if(at.tick < ticks[static_cast<UInt32>(at.row)])
        return TickCursor{at.row, at.tick + 1};
    auto const row = next_row(at.row, rows);
    return row ? std::optional(TickCursor{*row, 1}) : std::nullopt;
}

/// One tick back; none at the first and from nowhere.
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
