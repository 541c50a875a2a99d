#include "OSGSceneCache.h"

#include <algorithm>
#include <tuple>

#include "OSGChangeList.h"
#include "OSGDrawEpochs.h"
#include "OSGEntryTable.h"
#include "OSGNode.h"
#include "OSGThread.h"

namespace OSG
{
class SceneCache::NodeTable : public EntryTable<ByNode>
{
  public:
    using EntryTable::EntryTable;
};

void SceneCache::clear()
{
    _journal.reset();
    _nodes.reset();
    _dressed.forgetPlaces();
    _dressed.clear();
    _dressedOpaque.clear();
    _dressedTransparent.clear();
    _isDressed = false;
    _record.clear();
    _part.clear();
    _shapes.clear();
    _states.clear();
    _boxes = BoxPyramid();
    _order.clear();
    _places.clear();
    _numOpaque = 0;
    _roots.clear();
    ++_number;
}

// --- what was edited ---

bool SceneCache::addEntriesOf(Node const *node, std::vector<UInt32> &entries)
{
    if(_nodes == nullptr)
        _nodes = std::make_shared<NodeTable>(_record.entries);
    std::size_t const before = entries.size();
    _nodes->forEach({const_cast<Node *>(node), 0, 0, {}, SceneRecord::NoEntry},
                    [&entries](UInt32 entry) { entries.push_back(entry); });
    return entries.size() != before;
}

// Appends the entries of edited nodes. False where the whole scene has to be walked.
bool SceneCache::findEdited(std::vector<UInt32> &entries)
{
    std::vector<EditJournal::Entry> journal;
    if(!_journal->read(journal) || _numDropped != ChangeList::getNumDropped())
        return false;
    bool isWhole = true;
    for(EditJournal::Entry const &edit : journal)
    {
        if(addEntriesOf(edit.node, entries) && edit.hasEnded)
            isWhole = false;
    }
    // What a host has edited and not committed is shown as it is now.
    Thread::getCurrentChangeList()->forEachOpen(
        [this, &entries](FieldContainer *container)
        {
            constexpr BitVector Links =
                Node::TravMaskFieldMask | Node::CoreFieldMask | Node::ChildrenFieldMask;
            if(auto const *const node = dynamic_cast<Node const *>(container))
            {
                if((node->getChangeMask() & Links) != 0)
                    addEntriesOf(node, entries);
            }
            else if(auto const *const core = dynamic_cast<NodeCore const *>(container))
            {
                for(Node const *parent : core->getParents())
                    addEntriesOf(parent, entries);
            }
        });
    return isWhole;
}

// Open edits of materials and meshes are read again in each frame until they are committed.
void SceneCache::noteOpenEdits()
{
    std::vector<NodeCore *> cores; // an invalidation adds to the list of edits
    Thread::getCurrentChangeList()->forEachOpen(
        [&cores](FieldContainer *container)
        {
            if(auto *const core = dynamic_cast<NodeCore *>(container))
                cores.push_back(core);
            DrawEpochs::Kind const kind =
                DrawEpochs::kindOf(static_cast<FieldContainerType const &>(container->getType()));
            if(kind == DrawEpochs::Kind::Material)
                DrawEpochs::noteMaterial();
            if(kind == DrawEpochs::Kind::Mesh)
                DrawEpochs::noteMesh();
        });
    for(NodeCore *core : cores)
        core->invalidateVolume();
}

// --- walking ---

void SceneCache::update(std::vector<Node *> const &roots, UInt64 key,
                        AppearanceTable const &appearances, Walk const &walk)
{
    try
    {
        std::vector<UInt32> edited;
        if(_journal == nullptr || roots != _roots || key != _key || !findEdited(edited) ||
           !recordAgain(edited, walk))
            recordAll(roots, walk);
        _key = key;
        if(_shapeEnds != DrawEpochs::getShapeEnds())
            renumberShapes();
        if(_materialEpoch != DrawEpochs::getMaterials())
            refreshStates();
        if(!_isSorted)
            sort();
        if(!_isDressed || _appearances != appearances.getNumber())
            dress(appearances);
    }
    catch(...)
    {
        clear();
        throw;
    }
}

void SceneCache::recordAll(std::vector<Node *> const &roots, Walk const &walk)
{
    clear();
    _journal = std::make_unique<EditJournal::Follower>();
    _numDropped = ChangeList::getNumDropped();
    _shapeEnds = DrawEpochs::getShapeEnds();
    _materialEpoch = DrawEpochs::getMaterials();
    SceneRecorder recorder(_record, _shapes, _states);
    recorder.beginScene();
    for(Node *root : roots)
    {
        if(root != nullptr)
            walk(recorder, root);
    }
    UInt32 const items = static_cast<UInt32>(_record.items.size());
    _boxes.resize(items);
    for(UInt32 item = 0; item < items; ++item)
        _boxes.set(item, _record.boxes[item]);
    _boxes.update(0, items);
    _roots = roots;
    _isSorted = false;
}

bool SceneCache::recordAgain(std::vector<UInt32> &entries, Walk const &walk)
{
    std::sort(entries.begin(), entries.end());
    UInt32 end = 0; // of what has been walked already
    for(UInt32 const entry : entries)
    {
        if(entry < end)
            continue;
        if(!recordPart(entry, walk))
            return false;
        end = _record.entries[entry].end;
    }
    return true;
}

bool SceneCache::recordPart(UInt32 entry, Walk const &walk)
{
    SceneRecorder recorder(_part, _shapes, _states);
    recorder.beginPart(_record, entry);
    walk(recorder, _record.entries[entry].node);
    if(!_record.fits(entry, _part))
        return false;
    _isSorted = _isSorted && _record.hasSameItems(entry, _part);
    if(!_record.hasSameNodes(entry, _part))
    {
        _nodes.reset();
        _dressed.forgetPlaces();
        _isDressed = false;
    }
    _record.replace(entry, _part);
    UInt32 const first = _record.entries[entry].starts.item;
    UInt32 const end = first + static_cast<UInt32>(_part.items.size());
    for(UInt32 item = first; item < end; ++item)
        _boxes.set(item, _record.boxes[item]);
    _boxes.update(first, end);
    ++_number;
    return true;
}

// --- tables and order ---

// The number of a shape that has ended may not go to another one at the same address.
void SceneCache::renumberShapes()
{
    std::vector<DrawShape const *> const shapes = _shapes.getShapes();
    _shapeEnds = DrawEpochs::getShapeEnds();
    _shapes.clear();
    for(SceneRecord::Item &item : _record.items)
        item.shape = _shapes.numberOf(shapes[item.shape]);
    ++_number;
}

void SceneCache::refreshStates()
{
    std::vector<bool> inUse(_states.size(), false);
    for(SceneRecord::Item const &item : _record.items)
        inUse[item.state] = true;
    _materialEpoch = DrawEpochs::getMaterials();
    _states.refresh(inUse);
    _isSorted = false;
    ++_number;
}

struct SceneCache::Key
{
    static constexpr UInt64 Transparent = UInt64(1) << 32; // after all that is opaque

    UInt64 material; // transparent or not, key of the material
    UInt64 state;    // place among the states, and layout
    UInt32 item;

    bool operator<(Key const &other) const
    {
        return std::tie(material, state, item) < std::tie(other.material, other.state, other.item);
    }
};

// Of the item in that state. Gives the states of opaque items their ranks.
SceneCache::Key SceneCache::keyOf(UInt32 number, UInt32 stateNumber)
{
    SceneRecord::Item const &item = _record.items[number];
    UInt32 const state = _states.stateOf(stateNumber);
    if(_states.getStates()[state]->isTransparent())
        return {Key::Transparent, 0, number};
    UInt32 &rank = _stateRanks[state];
    if(rank == NoRank)
        rank = _numRanks++;
    UInt32 const sortKey = static_cast<UInt32>(_states.sortKeyOf(stateNumber)) ^ 0x80000000u;
    UInt32 const layout = _shapes.getShapes()[item.shape]->getMeshLayout();
    return {sortKey, UInt64(rank) << 32 | layout, number};
}

void SceneCache::sort()
{
    std::vector<Key> keys(_record.items.size());
    _stateRanks.assign(_states.getStates().size(), NoRank);
    _numRanks = 0;
    _numOpaque = 0;
    for(UInt32 i = 0; i < keys.size(); ++i)
    {
        keys[i] = keyOf(i, _record.items[i].state);
        _numOpaque += keys[i].material != Key::Transparent ? 1 : 0;
    }
    if(!std::is_sorted(keys.begin(), keys.end()))
        std::sort(keys.begin(), keys.end());
    _order.resize(keys.size());
    _places.resize(keys.size());
    for(UInt32 place = 0; place < keys.size(); ++place)
    {
        _order[place] = keys[place].item;
        _places[keys[place].item] = place;
    }
    _isSorted = true;
    _isDressed = false;
    ++_number;
}

// The ranks of the items' own states stay: what has another state for a while moves nothing else.
void SceneCache::dress(AppearanceTable const &appearances)
{
    bool const wasPlain = _dressed.isPlain();
    _dressed.make(_record, appearances, _states);
    _dressedOpaque.clear();
    _dressedTransparent.clear();
    if(!wasPlain || !appearances.isEmpty())
        ++_number;
    _stateRanks.resize(_states.getStates().size(), NoRank);
    std::vector<std::pair<Key, DressedRecord::Item>> opaque;
    UInt32 const numRanks = _numRanks;
    std::replace_if(
        _stateRanks.begin(), _stateRanks.end(),
        [numRanks](UInt32 rank) { return rank >= numRanks; }, NoRank);
    for(DressedRecord::Item const &item : _dressed.getItems())
    {
        Key const key = keyOf(item.item, item.state);
        if(key.material == Key::Transparent)
            _dressedTransparent.push_back(item);
        else
            opaque.emplace_back(key, item);
    }
    _numRanks = numRanks;
    std::sort(opaque.begin(), opaque.end(),
              [](auto const &a, auto const &b) { return a.first < b.first; });
    for(auto const &[key, item] : opaque)
        _dressedOpaque.push_back(item);
    _appearances = appearances.getNumber();
    _isDressed = true;
}
} // namespace OSG
