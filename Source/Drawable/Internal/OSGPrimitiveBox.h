#pragma once

/// \file
/// Boxes while an index is built.

#include "OSGVector.h"

namespace OSG
{
/// A box as it is kept.
struct PrimitiveBounds
{
    Real32 low[3];
    Real32 high[3];
};

/// A box as it is computed, three numbers side by side.
struct PrimitiveBox
{
    using Numbers = Real32 __attribute__((vector_size(16)));

    /// Sums of a few products of such numbers with components of unit vectors are finite.
    static constexpr Real32 LargestTame = 1e18f;

    Numbers low = {};
    Numbers high = {};

    PrimitiveBox() = default;
    explicit PrimitiveBox(PrimitiveBounds const &bounds)
        : low{bounds.low[0], bounds.low[1], bounds.low[2], 0.f}
        , high{bounds.high[0], bounds.high[1], bounds.high[2], 0.f}
    {
    }
    /// The corners of a primitive. `isTame` becomes false where one of them is not.
    template <std::size_t Corners>
    PrimitiveBox(Pnt3f const (&corners)[Corners], bool &isTame)
    {
        constexpr Real32 Most = LargestTame;
        Numbers const first = {corners[0][0], corners[0][1], corners[0][2], 0.f};
        low = first;
        high = first;
        auto tame = (first <= Most) & (first >= -Most); // NaN is not
        for(std::size_t c = 1; c < Corners; ++c)
        {
            Numbers const corner = {corners[c][0], corners[c][1], corners[c][2], 0.f};
            tame &= (corner <= Most) & (corner >= -Most);
            low = smaller(low, corner);
            high = larger(high, corner);
        }
        isTame = (tame[0] & tame[1] & tame[2]) != 0;
    }

    static Numbers smaller(Numbers a, Numbers b) { return a < b ? a : b; }
    static Numbers larger(Numbers a, Numbers b) { return a > b ? a : b; }

    /// The box of both.
    PrimitiveBox with(PrimitiveBox const &other) const
    {
        PrimitiveBox both;
        both.low = smaller(low, other.low);
        both.high = larger(high, other.high);
        return both;
    }
    PrimitiveBounds getBounds() const
    {
        return {{low[0], low[1], low[2]}, {high[0], high[1], high[2]}};
    }
    Pnt3f getLow() const { return Pnt3f(low[0], low[1], low[2]); }
    Pnt3f getHigh() const { return Pnt3f(high[0], high[1], high[2]); }
    Pnt3f getMiddle() const
    {
        Numbers const middle = (low + high) * 0.5f;
        return Pnt3f(middle[0], middle[1], middle[2]);
    }
    /// The sum of the lengths of three edges.
    Real32 size() const
    {
        Numbers const extent = high - low;
        return extent[0] + extent[1] + extent[2];
    }
};
} // namespace OSG
