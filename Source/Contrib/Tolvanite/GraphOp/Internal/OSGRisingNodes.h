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

/// Lists of nodes that go up in a tree, level by level. Joining two lists and giving all nodes of a
/// list a material take the same time however many nodes there are, so that a chain of groups costs
/// no more than its nodes. The nodes themselves are neither moved nor counted.
///
/// Of the materials that a node is given the last one counts; its geometry receives that one alone,
/// by finish. A geometry that several nodes show is different: it has the material that was given
/// last in time to one of them, and others may copy it meanwhile. It receives each material at
/// once.
class RisingNodes
{
  public:
    /// A list. Once it is joined to another one, given a material or finished, it stands for
    /// nothing.
    struct List
    {
        static constexpr UInt32 None = ~UInt32(0);

        UInt32 first = None;
        UInt32 last = None;

        bool empty() const { return first == None; }
    };
    using Nodes = std::vector<Node *, MemAllocator<Node *>>;

    /// Appends a node. `takesMaterial` says whether its core is a Geometry that giveMaterial may
    /// give a material to.
    void append(List &list, Node *node, bool takesMaterial);
    /// Appends what `tail` holds.
    void join(List &list, List const &tail);

    /// The nodes of `list` that take a material, in order, with `material`, which may be null. The
    /// others go to `rest`. Time goes with the number of nodes and lists that were joined since the
    /// last material, and with the geometries among them that several nodes show.
    List giveMaterial(List const &list, Material *material, Nodes &rest);

    /// The nodes of the list in order, their geometries with the materials that they were given.
    /// The list stands for nothing afterwards.
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
        Material *material = nullptr; ///< of the list
        List inner;                   ///< of the list
        UInt32 shared = List::None;   ///< place of the list's geometries that several nodes show
        UInt32 next = List::None;
        bool takesMaterial = false;
        bool isShared = false; ///< the node's geometry has received its materials at once
    };

    void appendPiece(List &list, UInt32 piece);
    UInt32 put(Piece const &piece);
    void giveBack(UInt32 piece);
    UInt32 sharedOf(List const &list);
    void addShared(UInt32 &shared, UInt32 more);

    std::vector<Piece, MemAllocator<Piece>> _pieces;
    UInt32 _firstFree = List::None; ///< pieces that no list has any more, chained by `next`
    std::vector<Shared, MemAllocator<Shared>> _shared;
};
} // namespace OSG
