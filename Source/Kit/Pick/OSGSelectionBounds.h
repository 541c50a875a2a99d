#pragma once

#include "OSGBoxVolume.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
class Node;
class SelectionSet;

/// The box around all that is selected, in the coordinates of `root`, as fit() takes it. Volumes
/// are brought up to date. Infinite volumes, and paths that are not in the scene of `root`, add
/// nothing; the box is empty where none is left.
OSG_TOLVANITEKIT_API BoxVolume bounds_of(SelectionSet const &selection, Node const *root);
} // namespace OSG
