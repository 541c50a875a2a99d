#pragma once

/// \file
/// A place in a scene: which node, and how a walk comes to it.

#include <string>
#include <vector>

#include "OSGNode.h"

namespace OSG
{
/// A node and the visiting nodes through which a walk comes to it. A node has one parent, so only
/// nodes that show another tree (NodeCore::getOtherTree) let one node be at several places.
///
/// A path follows its nodes, not their numbers: it stays the same when the children before them
/// change. It counts references, so that it may outlive its scene, and only the thread that writes
/// in the aspect may copy it.
class OSG_SYSTEM_API NodePath
{
  public:
    /// Of no node.
    NodePath() = default;
    /// `visiting` are the visiting nodes, outermost first. `node` is in the tree that the last of
    /// them shows, or in the scene's own if there are none.
    explicit NodePath(Node *node, std::vector<Node *> const &visiting = {});

    Node *getNode() const { return _nodes.empty() ? nullptr : _nodes.back().get(); }
    std::vector<Node *> getVisiting() const;

    /// Whether a walk from `root` comes to the node on this way.
    bool isIn(Node const *root) const;
    /// Whether the node of `outer` is on this way, or is its end. False for a path of no node.
    bool isBelow(NodePath const &outer) const;
    /// The address; see node_path(). Empty for a path of no node.
    std::string text(Node const *root) const;

    bool operator==(NodePath const &other) const { return _nodes == other._nodes; }
    bool operator!=(NodePath const &other) const { return !(*this == other); }
    /// For tables.
    std::size_t hash() const;

  private:
    std::vector<UnrecordedRefPtr<Node>> _nodes; // the visiting ones, then the node
};

struct NodePathHash
{
    std::size_t operator()(NodePath const &path) const { return path.hash(); }
};

/// The address of a node: child indices from the root. `/` is the root, `/0/3` is the fourth child
/// of the first child. For a node in a visited tree, the address of each visiting node and an `@`
/// come first: `/0/3@/1`.
///
/// `visiting` are the visiting nodes, outermost first. `node` is in the tree that the last of them
/// visits, or in the tree of `root` if there are none.
OSG_SYSTEM_API std::string node_path(Node const *root, std::vector<Node *> const &visiting,
                                     Node const *node);
/// The addresses of the visiting nodes themselves.
OSG_SYSTEM_API std::vector<std::string> visiting_paths(Node const *root,
                                                       std::vector<Node *> const &visiting);
} // namespace OSG
