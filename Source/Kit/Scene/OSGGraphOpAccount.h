#pragma once

/// \file
/// Accounts of what a graph operation has done to a scene. They compare the scene before with the
/// scene after.

#include <string>

#include "OSGBaseTypes.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class GraphOp;
class Node;

/// The nodes are those of the tree and of the trees that its cores show from elsewhere. Each node
/// counts once. A node is the same before and after if it is the same object. A node that the
/// operation has made counts in `nodesAfter` only.
struct GraphOpAccount
{
    std::string name;
    std::string params;      ///< the parameters as they were given; empty if there were none
    bool wentThrough = true; ///< the result of GraphOp::traverse
    UInt64 nodesBefore = 0;
    UInt64 nodesAfter = 0;
    double seconds = 0;           ///< time of the operation, without that of the comparison
    UInt64 removed = 0;           ///< nodes that are no longer reachable
    UInt64 moved = 0;             ///< nodes that have another parent
    UInt64 baked = 0;             ///< nodes that show another geometry core than before
    UInt64 materialsReplaced = 0; ///< geometry cores and material groups with another material
    UInt64 namesCleared = 0;      ///< nodes that are still there and have lost their name
};

/// Runs `operation` over `root` and gives an account of it. It keeps no node alive that the
/// operation lets go. The caller has to give `params` to the operation; they are only copied into
/// the account. The changes are not committed.
OSG_TOLVANITEKIT_API GraphOpAccount traverse_accounted(GraphOp &operation, Node *root,
                                                       std::string const &params = {});
} // namespace OSG
