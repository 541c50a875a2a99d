#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "EditWatch.h"
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
    /// The nodes that were looked at; keys only. An edit of others does not change what is found.
    std::unordered_set<OSG::Node const *> seen = {};
};

/// Looks for a text in the names of nodes and cores and in the types of cores, in all places of the
/// scene. Letters from A to Z are like those from a to z. An empty text finds nothing. A null scene
/// has no places.
SceneSearch search_scene(OSG::Node *scene, std::string const &text);

/// A search whose answer follows the scene. Used by the thread that writes in the aspect.
class FollowedSearch
{
  public:
    FollowedSearch();
    ~FollowedSearch();
    FollowedSearch(FollowedSearch const &) = delete;
    FollowedSearch &operator=(FollowedSearch const &) = delete;

    /// To be called once per frame. Searches where the scene or the text is another one, and after
    /// committed edits of nodes that were looked at. An empty text finds nothing.
    void update(OSG::Node *scene, std::string const &text);
    SceneSearch const &getAnswer() const { return _answer; }

  private:
    OSG::UnrecordedRefPtr<OSG::Node> _scene;
    std::string _text;
    SceneSearch _answer;
    EditWatch _edits;
};
} // namespace Viewer
