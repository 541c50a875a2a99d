#pragma once

/// \file
/// What graph operations have done to a scene, found by looking at it before and after.

#include <string>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class GraphOp;
class Node;

/// Nodes are those of the tree and of the trees that it visits elsewhere, each once. A node is the
/// same before and after if it is the same object: one that an operation has made is new, and
/// counts in `nodesAfter` alone.
struct GraphOpAccount
{
    std::string name;
    std::string params;      ///< as they were given; empty where none were
    bool wentThrough = true; ///< what GraphOp::traverse has returned
    UInt64 nodesBefore = 0;
    UInt64 nodesAfter = 0;
    double seconds = 0;           ///< of the operation alone, without the looking
    UInt64 removed = 0;           ///< nodes that are no longer reachable
    UInt64 moved = 0;             ///< nodes that have another parent
    UInt64 baked = 0;             ///< nodes that show another geometry core than before
    UInt64 materialsReplaced = 0; ///< geometry cores and material groups with another material
    UInt64 namesCleared = 0;      ///< nodes that are still there and lost the name that they had
};

/// Runs `operation` over `root`. The account keeps no node alive: what the operation lets go ends
/// when it would end without it. `params` have been set by the caller and are noted only. The
/// changes are not committed.
OSG_TOLVANITEKIT_API GraphOpAccount traverse_accounted(GraphOp &operation, Node *root,
                                                       std::string const &params = {});
} // namespace OSG
