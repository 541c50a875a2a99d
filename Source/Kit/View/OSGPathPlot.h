#pragma once

/// \file
/// Pictures of the path of a camera through a scene.

#include <iosfwd>
#include <string>
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

/// Something that happened at a place of the path.
struct PathMark
{
    Pnt3f place;
    std::string kind; ///< a word of letters; marks of one kind have one colour
};

/// Writes an SVG picture with two views of the scene's sharp edges and of the path, both to the
/// same scale. The upper one is from above, with x to the right and z down. The lower one is from
/// the front, with x to the right and y up. Where `up` is another direction than +y, all is turned
/// the short way, so that `up` becomes +y; +z up gives plans with x to the right and y up. The path
/// is a line with a stroke at each point towards the point that is looked at. A circle marks its
/// begin. Dots mark what happened, and a line of text below tells their kinds.
///
/// Of strokes that nearly lie upon each other one is drawn, of equal marks one after the other
/// likewise. Points and edges that are not finite are left out. The scene may be null. If it has
/// more than 40,000 edges, the boxes of its geometry are drawn instead.
OSG_TOLVANITEKIT_API void write_path_plot(std::ostream &out, Node *scene,
                                          std::vector<PathPoint> const &path,
                                          std::vector<PathMark> const &marks = {},
                                          Vec3f const &up = Vec3f(0, 1, 0));
} // namespace OSG
