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
} // namespace OSG
