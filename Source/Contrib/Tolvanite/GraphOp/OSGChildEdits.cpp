#include "OSGChildEdits.h"

namespace OSG
{
ChildEdits::ChildEdits() = default;
ChildEdits::~ChildEdits() = default;

void ChildEdits::addChildrenOf(Node const *node)
{
    for(Node *child : *node->getMFChildren())
        add(child);
}

void ChildEdits::applyTo(Node *parent) const
{
    for(Node *node : _toAdd)
        parent->addChild(node);
    for(Node *child : _toSub)
        parent->subChild(child);
}
} // namespace OSG
