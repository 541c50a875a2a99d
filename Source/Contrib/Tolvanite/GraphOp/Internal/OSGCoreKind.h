#pragma once

#include "OSGFieldContainerType.h"
#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace OSG
{
/// Whether the node has a core of the class `Core` or of one derived from it.
template <class Core>
bool core_derives_from(Node const *node)
{
    NodeCore const *const core = node->getCore();
    return core != nullptr && core->getType().isDerivedFrom(Core::getClassType());
}
} // namespace OSG
