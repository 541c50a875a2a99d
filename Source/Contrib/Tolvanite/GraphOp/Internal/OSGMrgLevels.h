#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "OSGBakedGeometry.h"
#include "OSGNodeSet.h"
#include "OSGRisingNodes.h"

namespace OSG
{
class Node;

/// Dissolves the groups, material groups and transforms below a node. This is one pass of
/// MrgGraphOp, which calls it for each node after the node's children.
///
/// A level is a node that may dissolve: a group or a material group. The nodes that a level holds
/// are not moved when the level is done. They are noted as a list. The node above takes the list
/// over. If it is a level itself, it joins the list to its own. So each node moves once, however
/// many levels above it dissolve.
class MrgLevels : public MemObject
{
  public:
    /// Nodes in `excluded` keep their place. The set may change between passes.
    MrgLevels(NodeSet const &excluded, VectorArrays const &vectors);

    /// To be called before a pass. Forgets the notes of an unfinished pass.
    void begin();

    /// Whether nothing below the node may change, because the places of its children have a
    /// meaning.
    static bool isLeft(Node const *node);
    bool isLevel(Node const *node) const;

    /// Handles a level whose parent is processed later.
    void note(Node *level);
    /// Handles any other node.
    void process(Node *node);

  private:
    using Nodes = RisingNodes::Nodes;

    /// What a level passes to the node above it.
    struct Held
    {
        RisingNodes::List nodes;
        RisingNodes::List levels; ///< the levels that have dissolved
    };

    bool isFreeGeometryLeaf(Node const *node) const;
    Held goThrough(Node *node, Nodes &kept);
    bool takeUp(Node *level, Held &above);
    Held heldBy(Node *level);
    static void take(Nodes const &nodes, Node *parent);
    void drop(RisingNodes::List const &levels);

    void bakeTransforms(Node *node, Nodes &children, Nodes &baked);
    bool bakeTransform(Node *transform, Node *above, Nodes &baked);
    void bakeNode(Node *node, Matrix const &matrix, Node *above);
    bool isOwn(Geometry const &geometry) const;

    NodeSet const &_excluded;
    VectorArrays const _vectors;
    // The copies that this operation has made, each for one node.
    std::unordered_set<Geometry const *, std::hash<Geometry const *>, std::equal_to<>,
                       MemAllocator<Geometry const *>>
        _own;
    RisingNodes _rising;
    std::unordered_map<Node const *, Held, std::hash<Node const *>, std::equal_to<>,
                       MemAllocator<std::pair<Node const *const, Held>>>
        _noted;
};
} // namespace OSG
