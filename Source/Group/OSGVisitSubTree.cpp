#include "OSGVisitSubTree.h"

namespace OSG
{
VisitSubTree::~VisitSubTree() = default;

void VisitSubTree::adjustVolume(Volume &volume)
{
    volume.setEmpty();
    if(getSubTreeRoot() != nullptr)
        volume.extendBy(getSubTreeRoot()->getVolume());
}

void VisitSubTree::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    if((whichField & SubTreeRootFieldMask) != 0)
        invalidateVolume();
    VisitSubTreeBase::changed(whichField, origin, details);
}
} // namespace OSG
