#include "OSGNode.h"

#include <algorithm>
#include <array>

#include "OSGBinaryDataHandler.h"
#include "OSGFieldOperations.h"
#include "OSGLog.h"
#include "OSGName.h"
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
}

// --- core ---

// A core may be shown by very many nodes: each node knows its place in the core's list, so that
// leaving is a swap with the last one.
void Node::enterCore(NodeCore *core)
{
    core->_parents.push_back(this);
    _coreSlot = core->_parents.size() - 1;
}

void Node::leaveCore()
{
    NodeCore *const core = getCore();
    if(core == nullptr)
        return;
    NodeCore::ParentList &parents = core->_parents;
    // A node that could not be made to the end never entered.
    if(_coreSlot >= parents.size() || parents[_coreSlot] != this)
        return;
    Node *const last = parents.back();
    parents.set(_coreSlot, last);
    last->_coreSlot = _coreSlot;
    parents.pop_back();
}

void Node::setCore(NodeCore *core)
{
    if(core == getCore())
        return;
    markEdited(CoreFieldMask);
    linkCore(core);
    invalidateVolume();
}

void Node::linkCore(NodeCore *core)
{
    UnrecordedRefPtr<NodeCore> const keep(core);
    // What may take memory comes first.
    if(core != nullptr)
        core->_parents.push_back(this);
    leaveCore();
    if(core != nullptr)
        _coreSlot = core->_parents.size() - 1;
    _sfCore.setValue(core);
}

void Node::onCreate(Node const *source)
{
    Pattern::onCreate(source);
    // The pattern has copied the pointer; the core learns of it here.
    if(getCore() != nullptr)
        enterCore(getCore());
}

void Node::resolveLinks()
{
    orphanChildren();
    leaveCore();
    NodeBase::resolveLinks();
}

// Core and children come as ids and are linked as anybody else would link them.
void Node::copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask)
{
    NodeBase::copyFromBin(handler, mask & ~(CoreFieldMask | ChildrenFieldMask));
    UInt32 id = 0;
    if((mask & CoreFieldMask) != 0)
    {
        handler.getValue(id);
        setCore(mapped_pointer<NodeCore>(id));
    }
    if((mask & ChildrenFieldMask) == 0)
        return;
    UInt32 count = 0;
    handler.getValue(count);
    while(getNChildren() != 0)
        takeOut(getNChildren() - 1);
    for(; count > 0; --count)
    {
        handler.getValue(id);
        if(Node *const child = mapped_pointer<Node>(id))
            addChild(child);
    }
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
    orphanChildren();
    _mfChildren.clear();
    _mfChildren.reserve(static_cast<UInt32>(children.size()));
    for(Node *child : children)
    {
        _mfChildren.push_back(child);
        child->_childSlot = _mfChildren.getLastSlot();
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
    UnrecordedRefPtr<Node> const keep(child);
    if(child->_parent != nullptr)
        child->_parent->subChild(child);
    markEdited(ChildrenFieldMask);
    _mfChildren.push_back(child);
    child->_childSlot = _mfChildren.getLastSlot();
    child->_parent = this;
    invalidateVolume();
}

Int32 Node::findChild(Node const *child) const
{
    if(child == nullptr || child->_parent != this)
        return -1;
    UInt32 const index = _mfChildren.findNear(const_cast<Node *>(child), child->_childSlot);
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
    getChild(index)->_parent = nullptr;
    invalidateVolume();
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
    node->addChild(this);
    return _parent == node;
}

// --- bounding volume ---

BoxVolume &Node::editVolume()
{
    markEdited(VolumeFieldMask);
    return _sfVolume.getValue();
}

void Node::invalidateVolume()
{
    // Above a node that is out of date everything is.
    for(Node *node = this; node != nullptr && node->getVolume().isValid(); node = node->_parent)
        node->editVolume().setValid(false);
}

namespace
{
struct VolumeUpdate
{
    Node *current = nullptr;

    bool enter(Node *node)
    {
        current = node;
        return !node->getVolume().isValid();
    }

    bool takeAdded(std::vector<Node *> &nodes) { return children_and_other_tree(current, nodes); }

    void leave(Node *node)
    {
        BoxVolume volume;
        volume.setEmpty();
        for(UInt32 i = 0; i < node->getNChildren(); ++i)
            extend(volume, node->getChild(i)->getVolume());
        if(node->getCore() != nullptr)
            node->getCore()->adjustVolume(volume);
        volume.setValid(true);
        node->editVolume() = volume;
    }
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
