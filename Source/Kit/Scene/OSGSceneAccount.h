#pragma once

/// \file
/// What a scene holds, in numbers.

#include <map>
#include <string>

#include "OSGBoxVolume.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Node;

struct SceneAccount
{
    /// Nodes of the tree and of the trees that it visits elsewhere, each once however often it is
    /// visited.
    UInt64 nodes = 0;
    /// Objects, each once however many share it: geometry cores; materials of geometries and of
    /// material groups, with those that they switch between; images of these materials.
    UInt64 geometries = 0;
    UInt64 materials = 0;
    UInt64 images = 0;
    /// Elements of the position arrays; an array that several geometries share counts once.
    UInt64 vertices = 0;
    /// What the iterators deliver, for every node that shows a geometry. Points are the vertices
    /// of point primitives that have a position.
    UInt64 triangles = 0;
    UInt64 lines = 0;
    UInt64 points = 0;
    /// Nodes by the type name of their core; nodes without one are left out.
    std::map<std::string, UInt64> cores;
    /// Box of the scene in the coordinates that its root lies in; empty where there is nothing.
    BoxVolume bounds;
};

/// Counts what is at and below `root`, and brings its volumes up to date. Null has nothing.
OSG_TOLVANITEKIT_API SceneAccount account_of(Node *root);
} // namespace OSG
