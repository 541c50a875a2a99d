#pragma once

#include <bit>
#include <vector>

#include "OSGSceneRecord.h"

namespace OSG
{
/// An open-addressed table from what `By` looks at in an entry of a record to the entries that
/// equal it there. It stands for the entries as they were when it was made.
template <class By>
class EntryTable
{
  public:
    explicit EntryTable(std::vector<SceneRecord::Entry> const &entries)
        : _slots(std::bit_ceil(2 * entries.size() + 2), None)
        , _next(entries.size(), None)
        , _entries(entries)
    {
        for(UInt32 entry = 0; entry < entries.size(); ++entry)
        {
            UInt32 &slot = slotOf(entries[entry]);
            _next[entry] = slot;
            slot = entry;
        }
    }

    template <class Use>
    void forEach(SceneRecord::Entry const &like, Use use)
    {
        for(UInt32 entry = slotOf(like); entry != None; entry = _next[entry])
            use(entry);
    }

  private:
    static constexpr UInt32 None = 0xFFFFFFFF;

    // Multiplicative hashing (Knuth), linear probing.
    UInt32 &slotOf(SceneRecord::Entry const &like)
    {
        UInt64 const hash = By::word(like) * 0x9E3779B97F4A7C15u;
        std::size_t const mask = _slots.size() - 1;
        std::size_t i = static_cast<std::size_t>(hash >> 20) & mask;
        while(_slots[i] != None && !By::isSame(_entries[_slots[i]], like))
            i = (i + 1) & mask;
        return _slots[i];
    }

    std::vector<UInt32> _slots; // the last of the entries that are equal; the others are chained
    std::vector<UInt32> _next;
    std::vector<SceneRecord::Entry> const &_entries;
};

struct ByNode
{
    static UInt64 word(SceneRecord::Entry const &entry)
    {
        return reinterpret_cast<std::uintptr_t>(entry.node);
    }
    static bool isSame(SceneRecord::Entry const &a, SceneRecord::Entry const &b)
    {
        return a.node == b.node;
    }
};

/// By the node and by the way through visiting nodes.
struct ByPlace
{
    static UInt64 word(SceneRecord::Entry const &entry)
    {
        constexpr UInt64 Golden = 0x9E3779B97F4A7C15u; // 2^64 divided by the golden ratio
        return ByNode::word(entry) + entry.visiting * Golden;
    }
    static bool isSame(SceneRecord::Entry const &a, SceneRecord::Entry const &b)
    {
        return a.node == b.node && a.visiting == b.visiting;
    }
};
} // namespace OSG
