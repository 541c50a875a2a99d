#pragma once

/// \file
/// The boxes of a node's children, side by side, so that a walk passes over whole groups at once.
///
/// A walk may leave a child out where it would find nothing there and nobody could tell: where
/// every way down from the child ends at a node whose handler does nothing but test its box, and
/// skips it. Such handlers say so (Action::HandlerPromise). The box of a child in the index holds
/// all boxes that those handlers would test; nodes on the way without a handler are passed through.
/// Where that is not so, the child is never left out: a node whose handler promises nothing, a box
/// that is not valid, infinite or NaN, a box that a host may still write to, a way of more than
/// MaxLevels nodes. Children that are walked keep their order.
///
/// An index is built when a walk comes to a node of at least MinChildren children for the second
/// time since an edit. It is dropped when the children, cores or boxes below change, so the next
/// walk is a plain one. Traversal masks do not matter: a node that is masked out finds nothing.
/// Several threads may walk one scene, and build, while nobody edits it. Where there is no memory,
/// there is no index.

#include <array>
#include <memory>
#include <vector>

#include "OSGFourLanes.h"
#include "OSGMemManager.h"
#include "OSGSystemApi.h"

namespace OSG
{
class Node;

/// What an action does at the nodes of a core type.
enum class WalkRole : UInt8
{
    Passes, ///< no handler: goes on to the children
    Gated,  ///< skips the node, and does nothing else, where its valid box is missed
    Other   ///< anything
};
/// By type id. Types beyond the table pass.
using WalkRoles = std::vector<WalkRole, MemAllocator<WalkRole>>;

/// The one table of all actions that equals `roles`. It lives until the program ends. Null where
/// very many tables are in use already.
OSG_SYSTEM_API WalkRoles const *shared_roles(WalkRoles const &roles);

/// Eight boxes by coordinates, to be tested four at a time. A box without points has min above max,
/// one without end infinite coordinates.
struct BoxLanes
{
    static constexpr UInt32 Lanes = 8;
    static constexpr UInt32 Quads = 2;

    alignas(FourReal32) Real32 min[3][Lanes];
    alignas(FourReal32) Real32 max[3][Lanes];

    /// Coordinates of four boxes along an axis.
    FourReal32 minOf(int axis, UInt32 quad) const { return load(&min[axis][4 * quad]); }
    FourReal32 maxOf(int axis, UInt32 quad) const { return load(&max[axis][4 * quad]); }

  private:
    static FourReal32 load(Real32 const *numbers)
    {
        return *reinterpret_cast<FourReal32 const *>(numbers);
    }
};

/// Sets a bit of `missed` for each box that `misses(BoxLanes const &boxes, UInt32 quad)` sets a
/// lane for.
template <class Misses>
void find_missed(BoxLanes const *boxes, std::size_t count, UInt8 *missed, Misses misses)
{
    for(std::size_t i = 0; i < count; ++i)
    {
        UInt32 bits = 0;
        for(UInt32 quad = 0; quad < BoxLanes::Quads; ++quad)
            bits |= lane_bits(misses(boxes[i], quad)) << 4 * quad;
        missed[i] = static_cast<UInt8>(bits);
    }
}

class OSG_SYSTEM_API ChildIndex : public MemObject
{
  public:
    static constexpr UInt32 MinChildren = 8;
    static constexpr UInt32 MaxLevels = 8;

    struct Bounds
    {
        std::array<Real32, 3> min;
        std::array<Real32, 3> max;
    };

    /// Index of `node` for walks with these roles; null where there is none yet.
    static ChildIndex const *find(Node *node, WalkRoles const *roles);
    /// Forgets what depends on the node: its index and those of the nodes above it.
    static void drop(Node const *node);
    /// The node ends.
    static void forget(Node const *node);
    /// A host may write to the node's box until the next commit.
    static void handOutBox(Node const *node);
    /// Number of indices that there are now.
    static UInt32 count();

    UInt32 getNChildren() const { return _nChildren; }
    std::vector<BoxLanes, MemAllocator<BoxLanes>> const &getBoxes() const { return _boxes; }
    /// Around all children.
    Bounds const &getBounds() const { return _bounds; }

  private:
    friend class ChildIndexBuilder;

    ChildIndex() = default;

    UInt32 _nChildren = 0;
    Bounds _bounds;
    std::vector<BoxLanes, MemAllocator<BoxLanes>> _boxes;
};
} // namespace OSG
