#include "OSGChildIndex.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <limits>
#include <list>
#include <mutex>
#include <new>
#include <shared_mutex>
#include <unordered_map>

#include "OSGNode.h"

namespace OSG
{
namespace
{
constexpr Real32 Infinity = std::numeric_limits<Real32>::infinity();

// Boxes without points, which no box test passes, and without end, which none misses.
constexpr ChildIndex::Bounds NoBounds{{Infinity, Infinity, Infinity},
                                      {-Infinity, -Infinity, -Infinity}};
constexpr ChildIndex::Bounds AllBounds{{-Infinity, -Infinity, -Infinity},
                                       {Infinity, Infinity, Infinity}};

/// What is known about the nodes that walks have come to. Few threads walk at once, and each asks
/// once for a node of many children, so one lock serves all.
struct NodeTable
{
    struct Entry
    {
        WalkRoles const *roles;
        std::unique_ptr<ChildIndex> index; // null after the first walk
    };
    using Entries = std::vector<Entry, MemAllocator<Entry>>;
    template <class Value>
    using ByNode = std::unordered_map<Node const *, Value, std::hash<Node const *>, std::equal_to<>,
                                      MemAllocator<std::pair<Node const *const, Value>>>;

    std::shared_mutex guard;
    ByNode<Entries> entries;
    ByNode<bool> handedOut;       // nodes with boxes that a host may write to
    std::atomic<UInt32> used = 0; // number of elements in both
    std::atomic<UInt32> nHandedOut = 0;
    std::atomic<UInt32> built = 0;

    /// Takes no memory, because ends of nodes ask for it. It is never destroyed.
    static NodeTable &the()
    {
        alignas(NodeTable) static std::byte place[sizeof(NodeTable)];
        static NodeTable *const table = new(place) NodeTable;
        return *table;
    }

    void recount()
    {
        used = static_cast<UInt32>(entries.size() + handedOut.size());
        nHandedOut = static_cast<UInt32>(handedOut.size());
    }

    Entry *find(Node const *node, WalkRoles const *roles)
    {
        auto const found = entries.find(node);
        if(found == entries.end())
            return nullptr;
        for(Entry &entry : found->second)
        {
            if(entry.roles == roles)
                return &entry;
        }
        return nullptr;
    }

    bool erase(Node const *node)
    {
        auto const found = entries.find(node);
        if(found == entries.end())
            return false;
        for(Entry const &entry : found->second)
            built -= entry.index != nullptr ? 1 : 0;
        entries.erase(found);
        return true;
    }

    /// Publishes an index unless another thread was faster. Gives the one that stands.
    ChildIndex const *publish(Node const *node, WalkRoles const *roles,
                              std::unique_ptr<ChildIndex> index)
    {
        std::unique_lock const hold(guard);
        Entry *entry = find(node, roles);
        if(entry == nullptr)
        {
            entries[node].push_back({roles, nullptr});
            recount();
            entry = find(node, roles);
        }
        if(entry->index == nullptr && index != nullptr)
        {
            entry->index = std::move(index);
            ++built;
        }
        return entry->index.get();
    }

    /// Whether the node's box may be written to. Hosts get it for the time until the commit.
    bool isHandedOut(Node const *node)
    {
        if(nHandedOut == 0)
            return false;
        std::shared_lock const hold(guard);
        return handedOut.count(node) != 0 && (node->getChangeMask() & Node::VolumeFieldMask) != 0;
    }
};

void extend(ChildIndex::Bounds &bounds, ChildIndex::Bounds const &other)
{
    for(std::size_t axis = 0; axis < 3; ++axis)
    {
        bounds.min[axis] = std::min(bounds.min[axis], other.min[axis]);
        bounds.max[axis] = std::max(bounds.max[axis], other.max[axis]);
    }
}
} // namespace

WalkRoles const *shared_roles(WalkRoles const &roles)
{
    constexpr std::size_t MostTables = 64;
    static std::mutex guard;
    static auto *const tables = new std::list<WalkRoles, MemAllocator<WalkRoles>>;
    std::lock_guard const hold(guard);
    auto const found = std::find(tables->begin(), tables->end(), roles);
    if(found != tables->end())
        return &*found;
    return tables->size() < MostTables ? &tables->emplace_back(roles) : nullptr;
}

/// Computes the boxes of children, and on the way the indices of the nodes below that have many.
class ChildIndexBuilder
{
  public:
    explicit ChildIndexBuilder(WalkRoles const *roles)
        : _roles(roles)
    {
    }

    ChildIndex const *build(Node *node)
    {
        std::unique_ptr<ChildIndex> index(new ChildIndex);
        UInt32 const count = node->getNChildren();
        index->_nChildren = count;
        index->_bounds = NoBounds;
        index->_boxes.resize((count + BoxLanes::Lanes - 1) / BoxLanes::Lanes, emptyLanes());
        for(UInt32 i = 0; i < count; ++i)
        {
            ChildIndex::Bounds const bounds = boundsOf(node->getChild(i), ChildIndex::MaxLevels);
            extend(index->_bounds, bounds);
            BoxLanes &lanes = index->_boxes[i / BoxLanes::Lanes];
            for(std::size_t axis = 0; axis < 3; ++axis)
            {
                lanes.min[axis][i % BoxLanes::Lanes] = bounds.min[axis];
                lanes.max[axis][i % BoxLanes::Lanes] = bounds.max[axis];
            }
        }
        return NodeTable::the().publish(node, _roles, std::move(index));
    }

  private:
    static BoxLanes emptyLanes()
    {
        BoxLanes lanes;
        for(std::size_t axis = 0; axis < 3; ++axis)
        {
            std::fill_n(lanes.min[axis], BoxLanes::Lanes, NoBounds.min[axis]);
            std::fill_n(lanes.max[axis], BoxLanes::Lanes, NoBounds.max[axis]);
        }
        return lanes;
    }

    WalkRole roleOf(Node const *node) const
    {
        NodeCore const *const core = node->getCore();
        if(core == nullptr)
            return WalkRole::Passes;
        UInt32 const type = core->getType().getId();
        return type < _roles->size() ? (*_roles)[type] : WalkRole::Passes;
    }

    // An edit of a node that is not valid tells nobody above it (Node::invalidateVolume), so an
    // index must not depend on one.
    ChildIndex::Bounds boundsOf(Node *node, UInt32 levels) const
    {
        WalkRole const role = roleOf(node);
        if(!node->getVolume().isValid() || role == WalkRole::Other || levels == 0 ||
           NodeTable::the().isHandedOut(node))
            return AllBounds;
        if(role == WalkRole::Gated)
            return boundsOfBox(node);
        if(node->getNChildren() >= ChildIndex::MinChildren)
            return boundsOfGroup(node);
        ChildIndex::Bounds bounds = NoBounds;
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            extend(bounds, boundsOf(node->getChild(i), levels - 1));
        return bounds;
    }

    ChildIndex::Bounds boundsOfGroup(Node *node) const
    {
        NodeTable &table = NodeTable::the();
        {
            std::shared_lock const hold(table.guard);
            NodeTable::Entry const *const entry = table.find(node, _roles);
            if(entry != nullptr && entry->index != nullptr)
                return entry->index->getBounds();
        }
        // Groups below groups below groups: the way down is taken by calls, so it has an end.
        if(_depth >= ChildIndex::MaxLevels)
            return AllBounds;
        ChildIndexBuilder below(_roles);
        below._depth = _depth + 1;
        return below.build(node)->getBounds();
    }

    static ChildIndex::Bounds boundsOfBox(Node const *node)
    {
        BoxVolume const &box = node->getVolume();
        if(box.isEmpty())
            return NoBounds;
        if(box.isInfinite())
            return AllBounds;
        ChildIndex::Bounds bounds;
        for(int axis = 0; axis < 3; ++axis)
        {
            bounds.min[static_cast<std::size_t>(axis)] = box.getMin()[axis];
            bounds.max[static_cast<std::size_t>(axis)] = box.getMax()[axis];
            if(!std::isfinite(box.getMin()[axis]) || !std::isfinite(box.getMax()[axis]))
                return AllBounds;
        }
        return bounds;
    }

    WalkRoles const *_roles;
    UInt32 _depth = 0;
};

ChildIndex const *ChildIndex::find(Node *node, WalkRoles const *roles)
{
    NodeTable &table = NodeTable::the();
    bool wasHere = false;
    {
        std::shared_lock const hold(table.guard);
        if(NodeTable::Entry const *const entry = table.find(node, roles))
        {
            wasHere = true;
            if(entry->index != nullptr)
                return entry->index->getNChildren() == node->getNChildren() ? entry->index.get()
                                                                            : nullptr;
        }
    }
    // See boundsOf.
    if(!node->getVolume().isValid() || table.isHandedOut(node))
        return nullptr;
    try
    {
        return wasHere ? ChildIndexBuilder(roles).build(node) : table.publish(node, roles, nullptr);
    }
    catch(std::bad_alloc const &)
    {
        return nullptr;
    }
}

// An index holds the boxes of nodes up to MaxLevels levels below it, or of an index there. The node
// and the valid ones above it are about to change.
void ChildIndex::drop(Node const *node)
{
    NodeTable &table = NodeTable::the();
    if(table.used == 0)
        return;
    std::unique_lock const hold(table.guard);
    UInt32 left = MaxLevels + 1;
    for(; node != nullptr && left != 0; node = node->getParent())
        left = table.erase(node) || node->getVolume().isValid() ? MaxLevels + 1 : left - 1;
    table.recount();
}

void ChildIndex::forget(Node const *node)
{
    NodeTable &table = NodeTable::the();
    if(table.used == 0)
        return;
    std::unique_lock const hold(table.guard);
    table.erase(node);
    table.handedOut.erase(node);
    table.recount();
}

void ChildIndex::handOutBox(Node const *node)
{
    drop(node);
    NodeTable &table = NodeTable::the();
    std::unique_lock const hold(table.guard);
    table.handedOut.emplace(node, true);
    table.recount();
}

UInt32 ChildIndex::count() { return NodeTable::the().built; }
} // namespace OSG
