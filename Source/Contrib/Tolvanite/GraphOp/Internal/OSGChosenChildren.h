#pragma once

/// \file
/// Collects the children that a switch shows in a group of their own.

#include "OSGNode.h"

namespace OSG
{
class MultiSwitch;
class Switch;

/// Move the children that `core` shows into a new node with a plain Group, from the last child to
/// the first. `core` is the core of `node`. Null where nothing is shown.
///
/// The new node is the last child of `node`. Moving children and the new node within one place of
/// the tree needs only short searches for cycles. A choice beyond the children takes nothing.
Node *take_chosen(Node &node, Switch const &core);
/// Likewise. Children with a GroupingStage are removed from `node` and not taken into the new node.
Node *take_chosen(Node &node, MultiSwitch const &core);
} // namespace OSG
