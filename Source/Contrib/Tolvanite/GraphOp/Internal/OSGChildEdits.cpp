#include "OSGChildEdits.h"

namespace OSG
{
ChildEdits::ChildEdits() = default;

// Most nodes lose their last reference here. The memory of the next nodes is prefetched while one
// is destroyed.
ChildEdits::~ChildEdits()
{
    constexpr std::size_t Ahead = 3;
    for(std::size_t i = 0; i < _toSub.size(); ++i)
    {
        if(i + Ahead < _toSub.size())
            _toSub[i + Ahead]->prefetch();
        _toSub[i] = nullptr;
    }
}

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
    {
        if(child->getParent() != nullptr)
            child->getParent()->subChild(child);
    }
}
} // namespace OSG
