#pragma once

#include "OSGNode.h"

namespace OSG
{
/// A node with this core.
inline TransitPtr<Node> make_node(NodeCore *core)
{
    TransitPtr<Node> node = Node::create();
    node->setCore(core);
    return node;
}
} // namespace OSG
