#pragma once

#include <vector>

#include "OSGBoxVolume.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Node;

/// Where a scene lies, for views that have to show the whole of it. All in the coordinates of its
/// root.
struct SceneBounds
{
    /// The box of the root where its numbers are finite. Otherwise the box of the triangles, lines
    /// and points that are finite and have no core of infinite volume above them. Empty where none
    /// are left.
    BoxVolume box = {};
    /// Something in the scene has an infinite volume: what keeps its size on the screen, say.
    bool holdsInfinite = false;
    /// The origins of the spaces below cores of infinite volume, as far as they are finite.
    std::vector<Pnt3f> infiniteOrigins = {};
};

/// Updates the volumes of the scene. Null gives bounds without a box.
OSG_TOLVANITEKIT_API SceneBounds bounds_of(Node *root);
} // namespace OSG
