#pragma once

/// \file
/// Counts of what a scene holds.

#include <map>
#include <string>

#include "OSGBoxVolume.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Node;

struct SceneAccount
{
    /// Nodes of the tree and of the trees that its cores show from elsewhere. Each node counts
    /// once.
    UInt64 nodes = 0;
    /// Geometry cores, materials and images (see ReachableMaterials). Each object counts once,
    /// however many nodes share it.
    UInt64 geometries = 0;
    UInt64 materials = 0;
    UInt64 images = 0;
    /// Elements of the position arrays; an array that several geometries share counts once.
    UInt64 vertices = 0;
    /// Triangles and lines that the iterators deliver, and vertices of point primitives that have a
    /// position. A geometry that several nodes share counts for each of them.
    UInt64 triangles = 0;
    UInt64 lines = 0;
    UInt64 points = 0;
    /// The number of nodes for each type name of a core. Nodes without a core are left out.
    std::map<std::string, UInt64> cores;
    /// The box of the scene in the coordinates of its root. Empty if nothing has a volume.
    BoxVolume bounds;
};

/// Counts what `root` and the nodes below it hold, and updates their volumes. Null gives an account
/// of zeros.
OSG_TOLVANITEKIT_API SceneAccount account_of(Node *root);
} // namespace OSG
