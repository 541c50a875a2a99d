#pragma once

#include <memory>
#include <vector>

#include "OSGAppearanceTable.h"
#include "OSGDrawStateTable.h"
#include "OSGSceneRecord.h"

namespace OSG
{
/// What a table of appearances makes of a record: which items are not drawn as they were recorded,
/// and what is drawn in their place. It stands for the record, the table and the states as they
/// were when it was made.
class OSG_STATE_API DressedRecord
{
  public:
    /// An item that is drawn in another state, by its number in the table of states.
    struct Item
    {
        UInt32 item;
        UInt32 state;
    };

    DressedRecord();
    ~DressedRecord();
    DressedRecord(DressedRecord const &) = delete;
    DressedRecord &operator=(DressedRecord const &) = delete;

    /// The nodes of the record are others than before, or stand in another tree.
    void forgetPlaces();
    /// Time is bounded by the rows of the table and the length of the record.
    void make(SceneRecord const &record, AppearanceTable const &table, DrawStateTable &states);
    void clear();

    /// Nothing of the record looks different.
    bool isPlain() const { return _taken.empty(); }
    /// Bit i % 64 of word i / 64 is set where item i is hidden or drawn in another state. No words
    /// for no such item.
    std::vector<UInt64> const &getTaken() const { return _taken; }
    /// In the order of the tree.
    std::vector<Item> const &getItems() const { return _items; }
    /// By number of an open node: what holds at it.
    Appearance appearanceOf(UInt32 open) const
    {
        return open < _opens.size() ? _opens[open] : Appearance();
    }

  private:
    class Places;
    /// What a row says about an entry and those below it.
    struct Mark
    {
        UInt32 entry;
        Appearance appearance;
    };
    /// Puts the appearances of the marks into effect, from one mark's begin or end to the next.
    class Sweep;

    void addMarks(NodePath const &path, Appearance const &appearance, SceneRecord const &record,
                  std::vector<Mark> &marks);

    std::shared_ptr<Places> _places; // null until a row asks for it
    std::vector<UInt64> _taken;
    std::vector<Item> _items;
    std::vector<Appearance> _opens;
};
} // namespace OSG
