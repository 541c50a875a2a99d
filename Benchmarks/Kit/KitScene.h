#pragma once

/// \file
/// A large scene for the measurements of the Kit: transforms with ten geometries each, which share
/// their arrays.

#include <vector>

#include "OSGNode.h"

namespace OSG::Bench
{
using NodePtr = UnrecordedRefPtr<Node>;

struct KitScene
{
    NodePtr root;
    std::vector<Node *> leaves; ///< the geometries' nodes
};

/// Of about `nodes` nodes. Nothing is left to commit.
KitScene make_kit_scene(UInt32 nodes);
void commit();
} // namespace OSG::Bench
