#include "SceneSearch.h"

#include "OSGFileSuffix.h"
#include "OSGName.h"
#include "OSGNodeWalker.h"

namespace Viewer
{
namespace
{
/// Looks at each place, and knows where it is.
class Searcher
{
  public:
    Searcher(std::string const &text, SceneSearch &result)
        : _word(OSG::lower_case(text))
        , _result(result)
    {
    }

    bool enter(OSG::Node *node)
    {
        if(_result.isCut)
            return false;
        _result.seen.insert(node);
        bool const isVisited = !_open.empty() && node->getParent() != _open.back().node;
        OSG::UInt32 const number = _open.empty() || isVisited ? 0 : _open.back().numEntered++;
        if(isVisited)
            _visiting.push_back(_open.back().node);
        _open.push_back({node, number, isVisited, 0});
        if(hasWord(*node))
            add(node);
        return true;
    }
    void leave(OSG::Node *)
    {
        if(_open.back().isVisited)
            _visiting.pop_back();
        _open.pop_back();
    }
    bool takeAdded(std::vector<OSG::Node *> &nodes)
    {
        return OSG::children_and_other_tree(_open.back().node, nodes);
    }
    void cut(OSG::Node *) { _result.isCut = true; }

  private:
    struct Level
    {
        OSG::Node *node;
        OSG::UInt32 number; // among the children of the node above
        bool isVisited;     // the root of a tree that the node above shows
        OSG::UInt32 numEntered;
    };

    bool has(char const *name) const
    {
        return name != nullptr && OSG::lower_case(name).find(_word) != std::string::npos;
    }
    bool hasWord(OSG::Node const &node) const
    {
        OSG::NodeCore const *const core = node.getCore();
        return has(OSG::getName(&node)) || has(OSG::getName(core)) ||
               (core != nullptr && has(core->getType().getCName()));
    }
    void add(OSG::Node *node)
    {
        if(_result.found.size() == SceneSearch::MostFound)
            _result.isCut = true;
        else
            _result.found.push_back({OSG::NodePath(node, _visiting), address()});
    }
    // As NodePath::text gives it, without looking for children in their lists again.
    std::string address() const
    {
        std::string text;
        bool isRoot = true;
        for(Level const &level : _open)
        {
            if(level.isVisited)
                text += isRoot ? "/@" : "@";
            else if(&level != &_open.front())
                text += '/' + std::to_string(level.number);
            isRoot = level.isVisited || &level == &_open.front();
        }
        return isRoot ? text + '/' : text;
    }

    std::string _word;
    SceneSearch &_result;
    std::vector<Level> _open;
    std::vector<OSG::Node *> _visiting;
};
} // namespace

SceneSearch search_scene(OSG::Node *scene, std::string const &text)
{
    SceneSearch result;
    if(text.empty())
        return result;
    Searcher searcher(text, result);
    OSG::NodeWalker().walk(scene, searcher);
    return result;
}

FollowedSearch::FollowedSearch() = default;
FollowedSearch::~FollowedSearch() = default;

void FollowedSearch::update(OSG::Node *scene, std::string const &text)
{
    bool const wasEdited = _edits.wereEdited(_answer.seen);
    if(!wasEdited && scene == _scene.get() && text == _text)
        return;
    _scene = text.empty() ? nullptr : scene; // a search that is not made holds no scene
    _text = text;
    _answer = search_scene(_scene, text);
}
} // namespace Viewer
