#pragma once

#include <string>
#include <vector>

#include "OSGNodePath.h"

namespace Viewer
{
/// Places of a scene whose names or types have a word in them.
struct SceneSearch
{
    static constexpr std::size_t MostFound = 1000;

    struct Found
    {
        OSG::NodePath path;
        std::string address; ///< NodePath::text
    };

    std::vector<Found> found = {}; ///< in the order of a walk
    bool isCut = false;            ///< there are more than MostFound, or places were passed over
};

/// Looks for a text in the names of nodes and cores and in the types of cores, in all places of the
/// scene. Letters from A to Z are like those from a to z. An empty text finds nothing. A null scene
/// has no places.
SceneSearch search_scene(OSG::Node *scene, std::string const &text);
} // namespace Viewer
