#include "OSGNodePath.h"

#include <functional>

#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
std::string path_below(Node const *root, Node const *node)
{
    std::vector<Int32> indices;
    for(; node != root && node->getParent() != nullptr; node = node->getParent())
        indices.push_back(node->getParent()->findChild(node));
    std::string path = indices.empty() ? "/" : "";
    for(auto index = indices.rbegin(); index != indices.rend(); ++index)
        path += '/' + std::to_string(*index);
    return path;
}

Node const *tree_visited_by(Node const *node)
{
    return node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
}

bool is_in_tree(Node const *root, Node const *node)
{
    while(node != nullptr && node != root)
        node = node->getParent();
    return node != nullptr;
}
} // namespace

NodePath::NodePath(Node *node, std::vector<Node *> const &visiting)
{
    if(node == nullptr)
        return;
    _nodes.assign(visiting.begin(), visiting.end());
    _nodes.emplace_back(node);
}

std::vector<Node *> NodePath::getVisiting() const
{
    return _nodes.empty() ? std::vector<Node *>()
                          : std::vector<Node *>(_nodes.begin(), --_nodes.end());
}

bool NodePath::isIn(Node const *root) const
{
    for(Node const *node : _nodes)
    {
        if(!is_in_tree(root, node))
            return false;
        root = tree_visited_by(node);
    }
    return !_nodes.empty();
}

bool NodePath::isBelow(NodePath const &outer) const
{
    std::size_t const last = outer._nodes.size() - 1;
    return !outer._nodes.empty() && _nodes.size() > last &&
           std::equal(outer._nodes.begin(), --outer._nodes.end(), _nodes.begin()) &&
           is_in_tree(outer._nodes[last], _nodes[last]);
}

std::string NodePath::text(Node const *root) const
{
    return _nodes.empty() ? std::string() : node_path(root, getVisiting(), getNode());
}

std::size_t NodePath::hash() const
{
    constexpr std::size_t Golden = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
    std::size_t result = 0;
    for(Node const *node : _nodes)
        result = (result ^ std::hash<Node const *>()(node)) * Golden;
    return result;
}

std::string node_path(Node const *root, std::vector<Node *> const &visiting, Node const *node)
{
    if(visiting.empty())
        return path_below(root, node);
    return visiting_paths(root, visiting).back() + '@' +
           path_below(tree_visited_by(visiting.back()), node);
}

std::vector<std::string> visiting_paths(Node const *root, std::vector<Node *> const &visiting)
{
    std::vector<std::string> paths;
    std::string before;
    for(Node const *node : visiting)
    {
        paths.push_back(before + path_below(root, node));
        before = paths.back() + '@';
        root = tree_visited_by(node);
    }
    return paths;
}
} // namespace OSG
