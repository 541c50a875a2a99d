#pragma once

#include "OSGFieldContainerType.h"
#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace OSG
{
/// Whether the node has a core of the class `Core` or of a class derived from it. Compares types,
/// which is quicker than a dynamic_cast.
template <class Core>
bool core_derives_from(Node const *node)
{
    NodeCore const *const core = node->getCore();
    return core != nullptr && core->getType().isDerivedFrom(Core::getClassType());
}

/// The core of the node where its class is `Core` or derived from it, otherwise null.
template <class Core>
Core *core_as(Node const *node)
{
    return core_derives_from<Core>(node) ? static_cast<Core *>(node->getCore()) : nullptr;
}
} // namespace OSG
