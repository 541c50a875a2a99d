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

/// Takes up what groups, material groups and transforms below a node hold: what MrgGraphOp does in
/// one pass, called for each node when its children are done.
///
/// A level is a node that may dissolve: a group or a material group. What a level holds is not
/// moved when the level is done, but noted as a list. The node above takes the list over, joined to
/// what itself holds if it is a level too. So a node moves once, however many levels above it go.
class MrgLevels : public MemObject
{
  public:
    /// Nodes in `excluded` stay where they are. The set may change between passes.
    MrgLevels(NodeSet const &excluded, VectorArrays const &vectors);

    /// Before a pass. What an unfinished one has noted is forgotten.
    void begin();

    /// Whether nothing is done below the node: its children have places.
    static bool isLeft(Node const *node);
    bool isLevel(Node const *node) const;

    /// For a level whose parent is processed later.
    void note(Node *level);
    /// For any other node.
    void process(Node *node);

  private:
    using Nodes = RisingNodes::Nodes;

    /// What a level gives to the node above it.
    struct Held
    {
        RisingNodes::List nodes;
        RisingNodes::List levels; ///< that have dissolved
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
    // Copies that were made for one node each.
    std::unordered_set<Geometry const *, std::hash<Geometry const *>, std::equal_to<>,
                       MemAllocator<Geometry const *>>
        _own;
    RisingNodes _rising;
    std::unordered_map<Node const *, Held, std::hash<Node const *>, std::equal_to<>,
                       MemAllocator<std::pair<Node const *const, Held>>>
        _noted;
};
} // namespace OSG
