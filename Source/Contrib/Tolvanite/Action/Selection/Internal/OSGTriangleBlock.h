#pragma once

/// \file
/// The triangles of a block of an index, tested side by side against the planes of a frustum.

#include "OSGBoxNode.h"
#include "OSGContribTolvaniteApi.h"
#include "OSGVector.h"

namespace OSG
{
/// The corners of up to four triangles: corner c of triangle t stands at place 4 c + t, so that the
/// corners of a triangle stand below one another in rows of four. Unused places hold zeros.
struct TriangleBlock
{
    static constexpr UInt32 Size = 4;
    static constexpr UInt32 Places = 12;

    Real32 x[Places] = {};
    Real32 y[Places] = {};
    Real32 z[Places] = {};

    void set(UInt32 t, UInt32 c, Pnt3f const &corner)
    {
        x[4 * c + t] = corner[0];
        y[4 * c + t] = corner[1];
        z[4 * c + t] = corner[2];
    }
    Pnt3f corner(UInt32 t, UInt32 c) const
    {
        return Pnt3f(x[4 * c + t], y[4 * c + t], z[4 * c + t]);
    }
};

/// How the triangles of a block lie to some planes; bit t stands for triangle t.
struct BlockGrades
{
    UInt32 outside = 0;     ///< all corners are outside one of the planes
    UInt32 crossing = 0;    ///< some corner is outside some plane
    UInt32 unclear[6] = {}; ///< by plane: some corner is not inside by more than the margin
    UInt32 touching = 0;    ///< some corner is not farther from some plane than the margin
    Real32 distance[TriangleBlock::Places]; ///< of the corners from plane 6
};

/// Grades the triangles against those of the planes 0 to 5 whose bits are set in `mask`, and
/// measures the distances of their corners from plane 6. Distances have the bits of
/// Plane::distance.
OSG_CONTRIBTOLVANITE_API void grade_block(TriangleBlock const &block, BoxPlanes const &planes,
                                          UInt32 mask, BlockGrades &grades);
} // namespace OSG
