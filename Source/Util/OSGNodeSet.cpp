#include "OSGNodeSet.h"

namespace OSG
{
NodeSet::NodeSet() = default;
NodeSet::NodeSet(NodeSet const &) = default;
NodeSet::NodeSet(NodeSet &&) noexcept = default;
NodeSet &NodeSet::operator=(NodeSet const &) = default;
NodeSet &NodeSet::operator=(NodeSet &&) noexcept = default;
NodeSet::~NodeSet() = default;

void NodeSet::add(Node *node)
{
    if(node == nullptr || contains(node))
        return;
    _list.push_back(node);
    _known.insert(node);
}

void NodeSet::clear()
{
    _list.clear();
    _known.clear();
}

void NodeSet::swap(NodeSet &other) noexcept
{
    _list.swap(other._list);
    _known.swap(other._known);
}
} // namespace OSG
