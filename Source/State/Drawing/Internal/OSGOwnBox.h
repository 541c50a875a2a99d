#pragma once

#include "OSGNode.h"

namespace OSG
{
/// The box of what the core of `node` shows by itself, in the space of the node's parent. The
/// node's volume holds its children as well, which may stand anywhere.
inline BoxVolume own_box(Node const &node)
{
    if(node.getNChildren() == 0 || node.getVolume().isInfinite() || node.getCore() == nullptr)
        return node.getVolume();
    BoxVolume box;
    node.getCore()->adjustVolume(box);
    return box;
}
} // namespace OSG
