#include "OSGObjIndexMask.h"

namespace OSG
{
namespace
{
struct FaceMask
{
    UInt32 mask = 0;
    bool singleIndex = true;
};

FaceMask mask_of(std::span<ObjTiePoint const> face)
{
    FaceMask result;
    for(ObjTiePoint const &tiePoint : face)
    {
        Int32 const position = tiePoint.index[ObjPositionIndex];
        if(position >= 0)
            result.mask |= ObjPositionBit;
        for(UInt32 kind : {ObjTexCoordIndex, ObjNormalIndex})
        {
            if(tiePoint.index[kind] < 0)
                continue;
            result.mask |= 1u << kind;
            result.singleIndex &= tiePoint.index[kind] == position;
        }
    }
    return result;
}
} // namespace

ObjIndexMask derive_index_mask(ObjFaces const &faces)
{
    ObjIndexMask result;
    for(std::span<ObjTiePoint const> face : faces)
    {
        FaceMask const own = mask_of(face);
        result.singleIndex &= own.singleIndex;
        if(result.mask == 0)
        {
            result.mask = own.mask;
        }
        else if(own.mask != result.mask)
        {
            if((own.mask & ObjPositionBit) == 0)
            {
                result.unmatch = true;
                return result;
            }
            result.mask &= own.mask;
        }
    }
    return result;
}
} // namespace OSG
