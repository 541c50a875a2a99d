#pragma once

/// \file
/// Finds the kinds of indices that all faces of a material run have.

#include "OSGObjRecords.h"

namespace OSG
{
/// Bits of ObjIndexMask::mask, one for each ObjIndexKind.
enum ObjIndexBit : UInt32
{
    ObjPositionBit = 1,
    ObjTexCoordBit = 2,
    ObjNormalBit = 4
};

struct ObjIndexMask
{
    /// The kinds that every face has. 0 if no corner of any face has an index.
    UInt32 mask = 0;
    /// True if the indices of each corner are equal, so that one index array serves all kinds.
    /// False if a corner has an index but no position.
    bool singleIndex = true;
    /// True if a face without position index comes after a face with indices. No geometry can be
    /// made of such a run, and the other members have no meaning.
    bool unmatch = false;
};

/// Goes through the faces in the given order, newest first. The order matters: a face without
/// indices is ignored before the first face that has indices, and makes the run unusable after it.
OSG_CONTRIBTOLVANITE_API ObjIndexMask derive_index_mask(ObjFaces const &faces);
} // namespace OSG
