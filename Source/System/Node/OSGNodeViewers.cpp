#include "OSGNodeViewers.h"

#include "OSGNode.h"

namespace OSG
{
NodeViewers &NodeViewers::the()
{
    static NodeViewers *const viewers = new NodeViewers;
    return *viewers;
}

NodeViewers::Entry *NodeViewers::findEntry(Node const *node)
{
    auto const found = _entries.find(node);
    return found != _entries.end() ? &found->second : nullptr;
}
} // namespace OSG
