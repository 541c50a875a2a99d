// The bounding volumes of nodes, and how they learn that they are out of date.

#include <new>
#include <vector>

#include "OSGChildIndex.h"
#include "OSGEditJournal.h"
#include "OSGNode.h"
#include "OSGNodeViewers.h"
#include "OSGNodeWalker.h"

namespace OSG
{
BoxVolume &Node::editVolume()
{
    ChildIndex::handOutBox(this);
    EditJournal::addEdit(this);
    markEdited(VolumeFieldMask);
    return _sfVolume.getValue();
}

void Node::setUpdatedVolume(BoxVolume const &volume)
{
    markEdited(VolumeFieldMask);
    _sfVolume.getValue() = volume;
}

/// Nodes that are shown elsewhere wait here until their viewers are told. They are chained through
/// their entries, so that an invalidation allocates nothing and does not recurse.
struct Node::Invalidation
{
    std::unique_lock<std::mutex> hold;
    NodeViewers::Entry *pending = nullptr;
    bool isRecorded = true; // all boxes are in the change list
};

// If the box of a node is out of date, the boxes of all nodes above it are out of date too. So the
// loop may stop at the first such node. It goes on when the change list runs out of memory, because
// a half marked path would break that rule.
void Node::invalidateUpwards(Invalidation &work)
{
    ChildIndex::drop(this);
    for(Node *node = this; node != nullptr && node->getVolume().isValid(); node = node->_parent)
    {
        node->_sfVolume.getValue().setValid(false);
        try
        {
            node->markEdited(VolumeFieldMask);
        }
        catch(std::bad_alloc const &)
        {
            work.isRecorded = false;
        }
        if(!node->hasDependents())
            continue;
        if(!work.hold.owns_lock())
            work.hold = std::unique_lock(NodeViewers::the().guard());
        if(NodeViewers::Entry *const entry = NodeViewers::the().findEntry(node))
        {
            entry->nextPending = work.pending;
            work.pending = entry;
        }
    }
}

void Node::invalidateVolume()
{
    EditJournal::addEdit(this);
    if(!getVolume().isValid())
        return;
    Invalidation work;
    invalidateUpwards(work);
    while(NodeViewers::Entry *const entry = work.pending)
    {
        work.pending = entry->nextPending;
        for(NodeCore *viewer : entry->viewers)
        {
            for(Node *node : viewer->getParents())
                node->invalidateUpwards(work);
        }
    }
    if(!work.isRecorded)
        throw std::bad_alloc();
}

void Node::addViewer(Node *shown, NodeCore *viewer)
{
    NodeViewers &all = NodeViewers::the();
    std::lock_guard const hold(all.guard());
    PointerBagOf<NodeCore> &viewers = all.entryOf(shown).viewers;
    shown->setHasDependents(true);
    if(!viewers.contains(viewer))
        viewers.insert(viewer);
}

void Node::subViewer(Node const *shown, NodeCore *viewer)
{
    NodeViewers &all = NodeViewers::the();
    std::lock_guard const hold(all.guard());
    NodeViewers::Entry *const entry = all.findEntry(shown);
    if(entry == nullptr || !entry->viewers.erase(viewer) || !entry->viewers.empty())
        return;
    // Nodes remove their entry when they end. This one has an entry, so it still exists.
    const_cast<Node *>(shown)->setHasDependents(false);
    all.forget(shown);
}

void Node::forgetViewers()
{
    if(!hasDependents())
        return;
    std::lock_guard const hold(NodeViewers::the().guard());
    NodeViewers::the().forget(this);
}

/// Computes boxes from the leaves upwards. The walk cuts a branch where trees show one another in a
/// circle, or are nested too deep. What such a branch holds is not known, so the box above it is
/// infinite.
class Node::VolumeUpdate
{
  public:
    bool enter(Node *node)
    {
        _current = node;
        return !node->getVolume().isValid();
    }

    bool takeAdded(std::vector<Node *> &nodes) { return children_and_other_tree(_current, nodes); }

    void cut(Node *node)
    {
        if(_cut.empty() || _cut.back() != node)
            _cut.push_back(node);
    }

    void leave(Node *node)
    {
        BoxVolume volume;
        UInt32 const count = node->getNChildren();
        for(UInt32 i = 0; i < count; ++i)
            extend(volume, node->getChild(i)->getVolume());
        NodeCore *const core = node->getCore();
        if(core != nullptr && count == 0)
            volume = boxOfLeaf(core);
        else if(core != nullptr)
            core->adjustVolume(volume);
        if(!_cut.empty() && _cut.back() == node)
        {
            volume.setInfinite();
            _cut.pop_back();
        }
        volume.setValid(true);
        node->setUpdatedVolume(volume);
    }

  private:
    // Parts that are alike share a core, and often follow one another. The box of a core that shows
    // another tree depends on that tree, which the same update may bring up to date: it is not
    // kept.
    BoxVolume const &boxOfLeaf(NodeCore *core)
    {
        if(core == _leafCore)
            return _leafBox;
        _leafBox = BoxVolume();
        core->adjustVolume(_leafBox);
        _leafCore = core->getOtherTree() == nullptr ? core : nullptr;
        return _leafBox;
    }

    Node *_current = nullptr;
    NodeCore *_leafCore = nullptr; // of the leaf whose box is kept
    BoxVolume _leafBox;
    std::vector<Node *> _cut; // open nodes, innermost last
};

void Node::updateVolume()
{
    VolumeUpdate update;
    NodeWalker().walk(this, update);
}

void Node::getWorldVolume(BoxVolume &world)
{
    updateVolume();
    world = getVolume();
    if(_parent != nullptr)
        world.transform(_parent->getToWorld());
}

Matrix Node::getToWorld() const
{
    std::vector<Node const *> path;
    for(Node const *node = this; node != nullptr; node = node->_parent)
        path.push_back(node);
    Matrix matrix;
    for(auto node = path.rbegin(); node != path.rend(); ++node)
    {
        if((*node)->getCore() != nullptr)
            (*node)->getCore()->accumulateMatrix(matrix);
    }
    return matrix;
}
} // namespace OSG
