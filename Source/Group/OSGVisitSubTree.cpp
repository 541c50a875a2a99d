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
} // namespace OSG
