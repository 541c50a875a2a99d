#include "OSGNodeCore.h"

#include "OSGEditJournal.h"
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

void NodeCore::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    for(Node const *parent : _parents)
        EditJournal::addEdit(parent);
    NodeCoreBase::changed(whichField, origin, details);
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
