#include "OSGNodeCore.h"

#include "OSGNode.h"

namespace OSG
{
NodeCore::~NodeCore() = default;

void NodeCore::adjustVolume(Volume &) {}
void NodeCore::accumulateMatrix(Matrix &) {}

void NodeCore::invalidateVolume()
{
    for(Node *parent : _parents)
        parent->invalidateVolume();
}
} // namespace OSG
