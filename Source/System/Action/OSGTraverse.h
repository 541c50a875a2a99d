#pragma once

/// \file
/// Depth-first walks with plain functions, where no function per core type is needed.

#include <boost/function.hpp>

#include "OSGActionBase.h"

namespace OSG
{
class Node;

using TraverseEnterFunctor = boost::function<ActionBase::ResultE(Node *)>;
using TraverseLeaveFunctor = boost::function<ActionBase::ResultE(Node *, ActionBase::ResultE)>;

/// Calls `enter` before the children of each node; Skip passes the children over. Null walks
/// nothing.
OSG_SYSTEM_API ActionBase::ResultE traverse(Node *root, TraverseEnterFunctor const &enter);
/// The same with `leave` after the children, which receives what `enter` returned; it is not called
/// for a node whose enter function returned Skip.
OSG_SYSTEM_API ActionBase::ResultE traverse(Node *root, TraverseEnterFunctor const &enter,
                                            TraverseLeaveFunctor const &leave);
} // namespace OSG
