#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "OSGDrawState.h"

namespace OSG
{
class Material;

/// The states that materials amount to, each value once.
///
/// A material, together with the one that overrides it, has a number as long as the table is not
/// cleared; its state is looked up by that number. Materials are not counted: whoever keeps a
/// number keeps the materials, or does not ask for its state again.
class OSG_STATE_API DrawStateTable
{
  public:
    /// Null stands for no material.
    UInt32 numberOf(Material const *material, Material const *overriding);
    UInt32 stateOf(UInt32 number) const { return _entries[number].state; }
    /// The overriding material that the number was asked for with; null for none.
    Material const *overridingOf(UInt32 number) const { return _entries[number].key.overriding; }
    /// Materials of a lower key are drawn first.
    Int32 sortKeyOf(UInt32 number) const { return _entries[number].sortKey; }

    UInt32 size() const { return static_cast<UInt32>(_entries.size()); }
    std::vector<DrawState const *> const &getStates() const { return _states; }

    /// Reads the materials of the numbers that are in use again, and forgets the others.
    void refresh(std::vector<bool> const &inUse);
    void clear();

  private:
    struct Key
    {
        Material const *material;
        Material const *overriding;

        bool operator==(Key const &) const = default;
    };
    struct KeyHash
    {
        std::size_t operator()(Key const &key) const;
    };
    struct Entry
    {
        Key key;
        UInt32 state;
        Int32 sortKey;
    };
    struct ValueHash
    {
        std::size_t operator()(DrawState const *state) const;
    };
    struct SameValue
    {
        bool operator()(DrawState const *a, DrawState const *b) const { return *a == *b; }
    };

    Entry read(Key const &key);
    UInt32 intern(DrawState const &state);

    std::vector<Entry> _entries;
    std::vector<UInt32> _free; // numbers that are not in use
    std::unordered_map<Key, UInt32, KeyHash> _numbers;
    std::deque<DrawState> _values; // stay where they are
    std::vector<DrawState const *> _states;
    std::unordered_map<DrawState const *, UInt32, ValueHash, SameValue> _byValue;
};
} // namespace OSG
