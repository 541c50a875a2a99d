#include "OSGNode.h"

#include <algorithm>
#include <array>

#include "OSGChildIndex.h"
#include "OSGEditJournal.h"
#include "OSGFieldOperations.h"
#include "OSGLog.h"
#include "OSGName.h"
#include "OSGNodeWalker.h"

namespace OSG
{
Node::Node()
{
    // The box of a new node has not been computed yet.
    _sfVolume.getValue().setValid(false);
}

Node::~Node()
{
    ChildIndex::forget(this);
    EditJournal::addEnd(this);
    orphanChildren();
    leaveCore();
    forgetViewers();
}

// --- core ---

void Node::leaveCore()
{
    // A node whose construction failed is not among the parents: erase() then does nothing.
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
    // The step that may run out of memory comes first.
    if(core != nullptr)
        core->_parents.insert(this);
    leaveCore();
    _sfCore.setValue(core);
}

void Node::onCreate(Node const *source)
{
    Pattern::onCreate(source);
    // The pattern has copied the pointer. The core does not know its new node yet.
    if(getCore() != nullptr)
        getCore()->_parents.insert(this);
}

void Node::resolveLinks()
{
    ChildIndex::drop(this);
    orphanChildren();
    leaveCore();
    NodeBase::resolveLinks();
}

void Node::copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask)
{
    ChildIndex::drop(this);
    NodeBase::copyFromBin(handler, mask);
}

void Node::changed(BitVector whichField, UInt32 origin, BitVector details)
{
    if((whichField & (TravMaskFieldMask | CoreFieldMask | ChildrenFieldMask)) != 0)
        EditJournal::addEdit(this);
    NodeBase::changed(whichField, origin, details);
}

// --- other aspects ---

// This node is linked to the copies, in its own aspect, of what the source is linked to.
void Node::execSync(NodeBase *from, BitVector whichField, AspectOffsets &offsets,
                    BitVector syncMode, UInt32 syncInfo)
{
    constexpr BitVector Links = CoreFieldMask | ChildrenFieldMask;
    ChildIndex::drop(this);
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

// A child that has moved stands in two lists until the node that it left is synchronised too. The
// node that is synchronised last becomes its parent.
void Node::syncChildren(Node const &source)
{
    std::vector<UnrecordedRefPtr<Node>> children;
    children.reserve(source.getNChildren());
    for(Node *child : source._mfChildren)
    {
        if(Node *const copy = in_this_aspect(child))
            children.emplace_back(copy);
    }
    // The step that may run out of memory comes first. The list keeps its room while it is emptied.
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
        // Most children end with their parent, and their cores with them.
        __builtin_prefetch(child->getCore());
        if(child->_parent == this)
            child->_parent = nullptr;
    }
}

// Whether `other` is this node or above it. Trees may be very deep, and many edits move a node up
// by a few levels only: the search stops early at the nodes that are known to be above `other`.
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
    // The steps that may run out of memory come first: if one does, the child stays where it is.
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
    // The parent may refuse the child. Even then the edit has been dealt with.
    node->addChild(this);
    return true;
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
