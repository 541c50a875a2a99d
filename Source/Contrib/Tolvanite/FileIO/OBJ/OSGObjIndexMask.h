#pragma once

/// \file
/// Which kinds of indices the faces of a material run have in common.

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
    /// Bits of the kinds that every face has, taken together from the newest face on. 0 if no
    /// corner of any face has an index.
    UInt32 mask = 0;
    /// All indices of each corner are equal, so one index array serves all kinds. A corner that has
    /// another index but no position clears it.
    bool singleIndex = true;
    /// A face without any position index follows faces that have something: no geometry can be made
    /// of the run. The other members are then undecided.
    bool unmatch = false;
};

/// Faces are taken newest first, and the order matters: a face without indices is overlooked as
/// long as nothing newer has any, and spoils the run afterwards.
OSG_CONTRIBTOLVANITE_API ObjIndexMask derive_index_mask(ObjFaces const &faces);
} // namespace OSG
