#include "NodePath.h"

#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace Tool
{
namespace
{
std::string path_below(OSG::Node const *root, OSG::Node const *node)
{
    std::vector<OSG::Int32> indices;
    for(; node != root && node->getParent() != nullptr; node = node->getParent())
        indices.push_back(node->getParent()->findChild(node));
    std::string path = indices.empty() ? "/" : "";
    for(auto index = indices.rbegin(); index != indices.rend(); ++index)
        path += '/' + std::to_string(*index);
    return path;
}

OSG::Node const *tree_visited_by(OSG::Node const *node)
{
    return node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
}
} // namespace

std::string node_path(OSG::Node const *root, std::vector<OSG::Node *> const &visiting,
                      OSG::Node const *node)
{
    if(visiting.empty())
        return path_below(root, node);
    return visiting_paths(root, visiting).back() + '@' +
           path_below(tree_visited_by(visiting.back()), node);
}

std::vector<std::string> visiting_paths(OSG::Node const *root,
                                        std::vector<OSG::Node *> const &visiting)
{
    std::vector<std::string> paths;
    std::string before;
    for(OSG::Node const *node : visiting)
    {
        paths.push_back(before + path_below(root, node));
        before = paths.back() + '@';
        root = tree_visited_by(node);
    }
    return paths;
}
} // namespace Tool
