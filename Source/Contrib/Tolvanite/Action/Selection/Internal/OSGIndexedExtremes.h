#pragma once

/// \file
/// The nearest and the farthest corner of primitives that come in any order.

#include "OSGSelectionSearch.h"

namespace OSG::SelectionSearch
{
/// Of a corner that belongs to no vertex: one of a clipped triangle.
inline constexpr int NoCorner = -1;

/// The best corner so far. Corners of one primitive come in their order. Of equal distances that of
/// the primitive with the highest number stays, so the result is that of a loop in which a corner
/// of equal distance replaces an earlier one. A NaN distance is never taken.
///
/// Distances count as keys, of which the smallest is the best: `Sign` 1 for the nearest corner, -1
/// for the farthest one. A float and its negative are equally exact.
template <int Sign>
class BestCorner
{
  public:
    bool isFound() const { return _primitive >= 0; }
    Real32 getDistance() const { return Sign * _key; }
    UInt32 getPrimitive() const { return static_cast<UInt32>(_primitive); }
    Pnt3f const &getPoint() const { return _point; }
    /// The number of the corner in its primitive, or NoCorner.
    int getCorner() const { return _corner; }
    bool isContained() const { return _corner != NoCorner; }

    /// The key of the better one of two distances.
    static Real32 key(Real32 nearest, Real32 farthest) { return Sign > 0 ? nearest : -farthest; }
    /// Whether a corner with that key, or one above, of a primitive up to `last` may be taken.
    bool wants(Real32 key, UInt32 last) const
    {
        return key < _key || (key == _key && static_cast<Int64>(last) >= _primitive);
    }

    void offer(Real32 distance, UInt32 primitive, Pnt3f const &point, int corner)
    {
        if(!wants(Sign * distance, primitive))
            return;
        _key = Sign * distance;
        _primitive = primitive;
        _point = point;
        _corner = corner;
    }

  private:
    static Real32 start() { return Sign > 0 ? Extremes().near.distance : -Extremes().far.distance; }

    Real32 _key = start();
    Int64 _primitive = -1;
    Pnt3f _point;
    int _corner = NoCorner;
};

using NearBest = BestCorner<1>;
using FarBest = BestCorner<-1>;
} // namespace OSG::SelectionSearch
