#pragma once

#include <unordered_set>
#include <vector>

#include "OSGContribTolvaniteApi.h"
#include "OSGMemManager.h"

namespace OSG
{
class Geometry;
class Material;
class Node;

/// Lists of nodes that rise in a tree, level by level. Joining two lists takes constant time, and
/// giving a material to a list that was given one before does not visit its nodes again. A chain of
/// groups therefore takes time linear in its nodes. This class neither moves nor counts the nodes.
///
/// Of the materials that are given to a node the last one counts. finish() sets it on the node's
/// geometry. A geometry that several nodes show has the material that was given last to any of
/// them, and may be copied meanwhile. Such a geometry receives each material at once.
class RisingNodes
{
  public:
    /// A list. After it was joined to another list, given a material or finished, it must not be
    /// used again.
    struct List
    {
        static constexpr UInt32 None = ~UInt32(0);

        UInt32 first = None;
        UInt32 last = None;

        bool empty() const { return first == None; }
    };
    using Nodes = std::vector<Node *, MemAllocator<Node *>>;

    /// Appends a node. `takesMaterial` tells whether its core is a Geometry whose material may be
    /// set.
    void append(List &list, Node *node, bool takesMaterial);
    /// Appends the nodes of `tail`.
    void join(List &list, List const &tail);

    /// Gives `material`, which may be null, to the nodes of `list` that take one, and returns them
    /// as a list in the same order. The other nodes are appended to `rest`. The time is linear in
    /// the number of nodes and lists that were added since the last material, and in the number of
    /// geometries that several nodes show.
    List giveMaterial(List const &list, Material *material, Nodes &rest);

    /// Sets the materials that were given, and returns the nodes of the list in order. The list
    /// must not be used afterwards.
    Nodes finish(List const &list);

    /// Forgets all lists.
    void clear();

  private:
    using Shared = std::unordered_set<Geometry *, std::hash<Geometry *>, std::equal_to<>,
                                      MemAllocator<Geometry *>>;

    /// A node, or a list of nodes that have been given one material.
    struct Piece
    {
        Node *node = nullptr;
        Material *material = nullptr; ///< of a list
        List inner;                   ///< the nodes of a list
        UInt32 shared = List::None;   ///< index in _shared of a list's shared geometries
        UInt32 next = List::None;
        bool takesMaterial = false;
        bool isShared = false; ///< the geometry has received its materials already
    };

    void appendPiece(List &list, UInt32 piece);
    UInt32 put(Piece const &piece);
    void giveBack(UInt32 piece);
    UInt32 sharedOf(List const &list);
    void addShared(UInt32 &shared, UInt32 more);

    std::vector<Piece, MemAllocator<Piece>> _pieces;
    UInt32 _firstFree = List::None; ///< unused pieces, chained by `next`
    std::vector<Shared, MemAllocator<Shared>> _shared;
};
} // namespace OSG
