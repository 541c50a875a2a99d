#pragma once

/// \file
/// Pictures of the way that a camera took through a scene.

#include <iosfwd>
#include <vector>

#include "OSGTolvaniteKitApi.h"
#include "OSGVector.h"

namespace OSG
{
class Node;

struct PathPoint
{
    Pnt3f from;
    Pnt3f at;
};

/// Writes an SVG picture: the scene's sharp edges and the path from above (x to the right, z down)
/// and, below that, from the front (x to the right, y up), both to the same scale. Each point of
/// the path has a mark and a stroke towards what it looks at; the first one is a circle. Points
/// that are not finite are left out. The scene may be null. Where it has more than 40,000 edges,
/// the boxes of its geometry are drawn in their place.
OSG_TOLVANITEKIT_API void write_path_plot(std::ostream &out, Node *scene,
                                          std::vector<PathPoint> const &path);
} // namespace OSG
