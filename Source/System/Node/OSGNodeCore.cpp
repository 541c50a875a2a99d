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

bool NodeCore::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    Node *const node = fieldId == Node::CoreFieldId ? dynamic_cast<Node *>(parent) : nullptr;
    if(node == nullptr)
        return false;
    node->setCore(this);
    return true;
}
} // namespace OSG
