#include "OSGNode.h"

#include <algorithm>
#include <array>

#include "OSGFieldOperations.h"
#include "OSGLog.h"
#include "OSGName.h"
#include "OSGNodeViewers.h"
#include "OSGNodeWalker.h"

namespace OSG
{
Node::Node()
{
    // Not looked at yet.
    _sfVolume.getValue().setValid(false);
}

Node::~Node()
{
    orphanChildren();
    leaveCore();
    forgetViewers();
}

// --- core ---

void Node::leaveCore()
{
    // A node that could not be made to the end never entered.
    if(NodeCore *const core = getCore())
        core->_parents.erase(this);
}

void Node::setCore(NodeCore *core)
{
    if(core == getCore())
        return;
    markEdited(CoreFieldMask);
    invalidateVolume();
    linkCore(core);
}

void Node::linkCore(NodeCore *core)
{
    UnrecordedRefPtr<NodeCore> const keep(core);
    // What may take memory comes first.
    if(core != nullptr)
        core->_parents.insert(this);
    leaveCore();
    _sfCore.setValue(core);
}

void Node::onCreate(Node const *source)
{
    Pattern::onCreate(source);
    // The pattern has copied the pointer; the core learns of it here.
    if(getCore() != nullptr)
        getCore()->_parents.insert(this);
}

void Node::resolveLinks()
{
    orphanChildren();
    leaveCore();
    NodeBase::resolveLinks();
}

// --- other aspects ---

// The links of the source, between the copies of this aspect.
void Node::execSync(NodeBase *from, BitVector whichField, AspectOffsets &offsets,
                    BitVector syncMode, UInt32 syncInfo)
{
    constexpr BitVector Links = CoreFieldMask | ChildrenFieldMask;
    NodeBase::execSync(from, whichField & ~Links, offsets, syncMode, syncInfo);
    Node const &source = static_cast<Node const &>(*from);
    if(&source == this)
        return;
    if((whichField & CoreFieldMask) != 0)
    {
        NodeCore *const core = in_this_aspect(source.getCore());
        if(core != getCore())
            linkCore(core);
    }
    if((whichField & ChildrenFieldMask) != 0)
        syncChildren(source);
}

// A child that has moved is still in the list of the node that it left, until that one is
// synchronised: its parent is the one that says so last.
void Node::syncChildren(Node const &source)
{
    std::vector<UnrecordedRefPtr<Node>> children;
    children.reserve(source.getNChildren());
    for(Node *child : source._mfChildren)
    {
        if(Node *const copy = in_this_aspect(child))
            children.emplace_back(copy);
    }
    // What may take memory comes first: the list keeps its room while it is emptied.
    _mfChildren.reserve(static_cast<UInt32>(children.size()));
    orphanChildren();
    _mfChildren.resize(0);
    for(Node *child : children)
    {
        _mfChildren.push_back(child);
        child->setSlotHint(_mfChildren.getLastSlot());
        child->_parent = this;
    }
}

// --- tree ---

void Node::orphanChildren()
{
    for(Node *child : _mfChildren)
    {
        if(child->_parent == this)
            child->_parent = nullptr;
    }
}

// Whether `other` is this node or above it. The way up ends early at a node that is known to be
// above `other`, as it is where nodes move up by a few levels: trees may be very deep.
bool Node::isBelow(Node const *other) const
{
    std::array<Node const *, 4> above = {};
    Node const *next = other->_parent;
    for(Node const *&node : above)
    {
        node = next;
        next = next != nullptr ? next->_parent : nullptr;
    }
    for(Node const *node = this; node != nullptr; node = node->_parent)
    {
        if(node == other)
            return true;
        if(std::find(above.begin(), above.end(), node) != above.end())
            return false;
    }
    return false;
}

void Node::addChild(Node *child)
{
    // A node without children is nobody's ancestor.
    bool const mayHoldThis = child != nullptr && (child == this || child->getNChildren() != 0);
    if(child == nullptr || (mayHoldThis && isBelow(child)))
    {
        OSG_LOG_WARNING("Node::addChild: null or an ancestor of the node is no child\n");
        return;
    }
    // What may take memory comes first: without it the child stays where it is.
    Node *const old = child->_parent;
    markEdited(ChildrenFieldMask);
    invalidateVolume();
    if(old != nullptr)
    {
        old->markEdited(ChildrenFieldMask);
        old->invalidateVolume();
    }
    Int32 const oldIndex = old != nullptr ? old->findChild(child) : -1;
    _mfChildren.push_back(child);
    if(oldIndex >= 0)
        old->_mfChildren.erase(static_cast<UInt32>(oldIndex));
    child->setSlotHint(_mfChildren.getLastSlot());
    child->_parent = this;
}

Int32 Node::findChild(Node const *child) const
{
    if(child == nullptr || child->_parent != this)
        return -1;
    UInt32 const index = _mfChildren.findNear(const_cast<Node *>(child), child->getSlotHint());
    return index < _mfChildren.size() ? static_cast<Int32>(index) : -1;
}

void Node::subChild(UInt32 index)
{
    if(index < getNChildren())
        takeOut(index);
}

void Node::subChild(Node *child)
{
    Int32 const index = findChild(child);
    if(index >= 0)
        takeOut(static_cast<UInt32>(index));
}

void Node::takeOut(UInt32 index)
{
    markEdited(ChildrenFieldMask);
    invalidateVolume();
    getChild(index)->_parent = nullptr;
    _mfChildren.erase(index);
}

bool Node::unlinkChild(FieldContainer *child, UInt16 fieldId)
{
    if(fieldId == CoreFieldId && child != nullptr && child == getCore())
    {
        setCore(nullptr);
        return true;
    }
    Int32 const index = fieldId == ChildrenFieldId ? _mfChildren.findIndex(child) : -1;
    if(index < 0)
        return NodeBase::unlinkChild(child, fieldId);
    takeOut(static_cast<UInt32>(index));
    return true;
}

bool Node::linkParent(FieldContainer *parent, UInt16 fieldId)
{
    Node *const node = fieldId == ChildrenFieldId ? dynamic_cast<Node *>(parent) : nullptr;
    if(node == nullptr)
        return false;
    // Refused or not: it is for the parent to say.
    node->addChild(this);
    return true;
}

// --- bounding volume ---

BoxVolume &Node::editVolume()
{
    markEdited(VolumeFieldMask);
    return _sfVolume.getValue();
}

/// The nodes that are shown elsewhere and whose viewers have not been told yet are chained through
/// their entries: an invalidation takes no memory, and no stack for trees that show one another.
struct Node::Invalidation
{
    std::unique_lock<std::mutex> hold;
    NodeViewers::Entry *pending = nullptr;
    bool isRecorded = true; // all boxes are in the change list
};

// Every node above one whose box is out of date has such a box too, so that the way up ends at the
// first of them. It is gone to the end even where memory for the change list does not suffice.
void Node::invalidateUpwards(Invalidation &work)
{
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
    // A node that has an entry is there.
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

namespace
{
/// Boxes from below to above. Where the walk ends a branch because trees show one another in a
/// circle, or too deep, nobody knows what the branch would hold: the box is infinite.
class VolumeUpdate
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
        if(node->getCore() != nullptr)
            node->getCore()->adjustVolume(volume);
        if(!_cut.empty() && _cut.back() == node)
        {
            volume.setInfinite();
            _cut.pop_back();
        }
        volume.setValid(true);
        node->editVolume() = volume;
    }

  private:
    Node *_current = nullptr;
    std::vector<Node *> _cut; // open nodes, innermost last
};
} // namespace

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

// --- names ---

namespace
{
struct NameSearch
{
    char const *name;
    FieldContainer *found = nullptr;

    bool enter(Node *node)
    {
        if(found == nullptr)
            found = node->AttachmentContainer::findNamedComponent(name);
        if(found == nullptr && node->getCore() != nullptr)
            found = node->getCore()->findNamedComponent(name);
        return found == nullptr;
    }
    void leave(Node *) {}
};
} // namespace

FieldContainer *Node::findNamedComponent(char const *name)
{
    NameSearch search{name};
    walk_children(this, search);
    return search.found;
}
} // namespace OSG
