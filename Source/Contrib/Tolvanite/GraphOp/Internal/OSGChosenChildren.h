#pragma once

/// \file
/// The children that a switch shows at this moment, in a group of their own.

#include "OSGNode.h"

namespace OSG
{
class MultiSwitch;
class Switch;

/// Take what the core shows out of `node`, whose core it is, into a new node with a plain Group,
/// from the last child to the first. Null where nothing is shown.
///
/// The new node is a child of `node`, its last: whoever wants it elsewhere finds it near, and the
/// tree need not be searched for cycles. A choice beyond the children takes nothing.
Node *take_chosen(Node &node, Switch const &core);
/// Children with a GroupingStage stay out of the new node, and are no longer below `node` either.
Node *take_chosen(Node &node, MultiSwitch const &core);
} // namespace OSG
