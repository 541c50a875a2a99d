#pragma once

#include <functional>
#include <memory>

#include "OSGBoxPyramid.h"
#include "OSGDressedRecord.h"
#include "OSGEditJournal.h"
#include "OSGSceneRecorder.h"

namespace OSG
{
/// The record of the scene that an action draws, kept from frame to frame.
///
/// A frame looks only at the nodes that were edited since the last one: at those that the journal
/// of edits names, and at those with edits that the calling thread has not committed yet. What is
/// below an edited node is walked again, what is not stays as it was recorded. Where the walk finds
/// another number of nodes, shapes, spaces or lights there than before, the whole scene is walked
/// again; so it is after a node of it has ended.
class OSG_STATE_API SceneCache
{
  public:
    /// Walks from a node and tells the recorder what it finds.
    using Walk = std::function<void(SceneRecorder &, Node *)>;

    /// Looks at the edits that the calling thread has not committed: the volumes of cores that have
    /// any are out of date then. To be called before the volumes are brought up to date.
    static void noteOpenEdits();
    /// Brings the record up to date with the trees of `roots`, whose volumes are valid. `key`
    /// stands for what else the walk depends on: another key walks everything. Another state of
    /// `appearances` walks nothing. An exception leaves the cache cleared.
    void update(std::vector<Node *> const &roots, UInt64 key, AppearanceTable const &appearances,
                Walk const &walk);
    void clear();

    SceneRecord const &getRecord() const { return _record; }
    BoxPyramid const &getBoxes() const { return _boxes; }
    ShapeTable &getShapes() { return _shapes; }
    DrawStateTable &getStates() { return _states; }
    /// Numbers of the items in the order in which they are drawn: the opaque ones by key of their
    /// material, state and layout, then the transparent ones in the order of the tree. It follows
    /// from the scene alone, not from edits before.
    std::vector<UInt32> const &getOrder() const { return _order; }
    UInt32 getNumOpaque() const { return _numOpaque; }
    /// By state: its place among those of the items, in the order of first use in the tree; what no
    /// item has is beyond the list or NoRank.
    std::vector<UInt32> const &getStateRanks() const { return _stateRanks; }
    static constexpr UInt32 NoRank = 0xFFFFFFFF;
    /// What the appearances make of the items. Those that are drawn in another state stand in the
    /// order that getOrder() would have them in; their states have ranks.
    DressedRecord const &getDressed() const { return _dressed; }
    std::vector<DressedRecord::Item> const &getDressedOpaque() const { return _dressedOpaque; }
    std::vector<DressedRecord::Item> const &getDressedTransparent() const
    {
        return _dressedTransparent;
    }
    /// Place of each item in the order.
    std::vector<UInt32> const &getPlaces() const { return _places; }
    /// Changes with the record or the states.
    UInt64 getNumber() const { return _number; }

  private:
    /// Where the entries of a node are.
    class NodeTable;
    struct Key;

    bool findEdited(std::vector<UInt32> &entries);
    bool addEntriesOf(Node const *node, std::vector<UInt32> &entries);
    void recordAll(std::vector<Node *> const &roots, Walk const &walk);
    bool recordAgain(std::vector<UInt32> &entries, Walk const &walk);
    bool recordPart(UInt32 entry, Walk const &walk);
    void renumberShapes();
    void refreshStates();
    Key keyOf(UInt32 number, UInt32 state);
    void sort();
    void dress(AppearanceTable const &appearances);

    SceneRecord _record;
    SceneRecord _part;
    ShapeTable _shapes;
    DrawStateTable _states;
    BoxPyramid _boxes;
    std::vector<UInt32> _order;
    std::vector<UInt32> _places;
    std::vector<UInt32> _stateRanks;
    UInt32 _numRanks = 0;
    UInt32 _numOpaque = 0;
    bool _isSorted = false;

    DressedRecord _dressed;
    std::vector<DressedRecord::Item> _dressedOpaque;
    std::vector<DressedRecord::Item> _dressedTransparent;
    UInt64 _appearances = 0; // number of the table's state
    bool _isDressed = false;

    std::unique_ptr<EditJournal::Follower> _journal; // null: nothing is recorded
    std::vector<Node *> _roots;
    UInt64 _key = 0;
    std::shared_ptr<NodeTable> _nodes; // null until an edit asks for it
    UInt64 _materialEpoch = 0;
    UInt64 _shapeEnds = 0;
    UInt32 _numDropped = 0;
    UInt64 _number = 0;
};
} // namespace OSG
