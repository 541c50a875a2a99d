#pragma once

/// \file
/// The one way down a tree of nodes.
///
/// NodeWalker keeps its path in frames on the heap, so that depth costs no stack. A visitor has
///
///   bool enter(Node *node)   before what is below the node; false ends the branch: nothing below
///                            is walked and `leave` is not called
///   void leave(Node *node)   after it
///
/// Children are read live, one index after the other: a visitor may edit the list while it is
/// walked. A visitor of `walk` may also ask for other nodes to be walked in place of the children:
///
///   bool takeAdded(std::vector<Node *> &nodes)   called after `enter` was true; true where `nodes`
///                                                (null entries are passed over) take their place
///
/// Nodes that were added so and are no children of the adding node may form cycles, and multiply
/// where they share what is below them: one that is open on the current path already, the 1,025th
/// such level and the 1,048,577th such node of a walk are passed over, with one warning. A visitor
/// may want to know:
///
///   void cut(Node *node)     a node that was added below `node` is passed over
///
/// An exception ends a walk at once: `leave` is then called for none of the nodes that are open. A
/// visitor that keeps a path of its own drops it when its owner is done (see Action::apply).

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "OSGMemManager.h"
#include "OSGNode.h"

namespace OSG
{
/// For visitors that walk what stands below a node besides its children as well: gives the children
/// and the root of the other tree that the core shows. False, and `nodes` as it was, where there is
/// no other tree.
inline bool children_and_other_tree(Node *node, std::vector<Node *> &nodes)
{
    Node *const other = node->getCore() != nullptr ? node->getCore()->getOtherTree() : nullptr;
    if(other == nullptr)
        return false;
    nodes.assign(node->getMFChildren()->begin(), node->getMFChildren()->end());
    nodes.push_back(other);
    return true;
}

class OSG_SYSTEM_API NodeWalker
{
  public:
    static constexpr UInt32 MaxAddedLevels = 1024;
    static constexpr UInt32 MaxAddedNodes = 1024 * 1024;

    template <class Visitor>
    void walk(Node *root, Visitor &visitor)
    {
        run(root, visitor,
            [&visitor](std::vector<Node *> &nodes) { return visitor.takeAdded(nodes); });
    }

    template <class Visitor>
    void walkChildren(Node *root, Visitor &visitor)
    {
        run(root, visitor, [](std::vector<Node *> &) { return false; });
    }

  private:
    struct Frame
    {
        Node *node;
        UInt32 next;       // index of the child, or in _added, to walk next
        UInt32 firstAdded; // end of _added before this frame's nodes
        bool hasAdded;     // walks its added nodes in place of the children
        bool isAdded;      // was itself reached as an added node that is no child
    };

    /// True where the walk may go from the open frame to `node`, which was added and is no child;
    /// counts it.
    bool mayEnterAdded(Node *node);
    /// Takes the frame that has gone out of `_open`.
    void forget(Node *node);
    Node *nextOf(Frame &frame)
    {
        if(frame.hasAdded)
            return nextAddedOf(frame);
        UInt32 const count = frame.node->getNChildren();
        if(frame.next >= count)
            return nullptr;
        Node const &node = *frame.node;
        fetchAhead(frame.next, count, [&node](UInt32 i) { return node.getChild(i); });
        return frame.node->getChild(frame.next++);
    }
    // The innermost frame's nodes stand at the end of the list.
    Node *nextAddedOf(Frame &frame)
    {
        UInt32 const first = frame.firstAdded;
        UInt32 const count = static_cast<UInt32>(_added.size()) - first;
        while(frame.next - first < count)
        {
            fetchAhead(frame.next - first, count, [&](UInt32 i) { return _added[first + i]; });
            Node *const node = _added[frame.next++];
            if(node != nullptr)
                return node;
        }
        return nullptr;
    }
    // Scenes are larger than caches: siblings come out of memory while earlier ones are walked, and
    // so do, once they are there, their cores and what they have first below them.
    template <class NodeAt>
    static void fetchAhead(UInt32 next, UInt32 count, NodeAt nodeAt)
    {
        constexpr UInt32 Far = 6;
        constexpr UInt32 Middle = 4;
        constexpr UInt32 Near = 2;
        if(next == 0)
        {
            for(UInt32 i = 1; i < std::min(Far + 1, count); ++i)
                fetch(nodeAt(i));
            return;
        }
        if(next + Far < count)
            fetch(nodeAt(next + Far));
        if(next + Middle < count && nodeAt(next + Middle) != nullptr)
            fetchBelow(*nodeAt(next + Middle));
        if(next + Near >= count || nodeAt(next + Near) == nullptr)
            return;
        Node const &sibling = *nodeAt(next + Near);
        if(sibling.getNChildren() != 0)
            __builtin_prefetch(sibling.getChild(0)->getCore());
    }
    static void fetch(Node const *node)
    {
        if(node != nullptr)
            node->prefetch();
    }
    static void fetchBelow(Node const &node)
    {
        __builtin_prefetch(node.getCore());
        if(node.getNChildren() != 0)
            node.getChild(0)->prefetch();
    }

    template <class Visitor, class TakeAdded>
    void run(Node *root, Visitor &visitor, TakeAdded takeAdded)
    {
        if(root != nullptr)
            open(root, false, visitor, takeAdded);
        while(!_frames.empty())
        {
            Node *const node = nextOf(_frames.back());
            if(node == nullptr)
            {
                Frame const done = _frames.back();
                visitor.leave(done.node);
                _added.resize(done.firstAdded);
                if(done.isAdded)
                    --_addedLevels;
                _frames.pop_back();
                if(_frames.size() < _counted)
                    forget(done.node);
                continue;
            }
            bool const added = _frames.back().hasAdded && node->getParent() != _frames.back().node;
            if(!added || mayEnterAdded(node))
                open(node, added, visitor, takeAdded);
            else if constexpr(requires { visitor.cut(node); })
                visitor.cut(_frames.back().node);
        }
    }

    template <class Visitor, class TakeAdded>
    void open(Node *node, bool added, Visitor &visitor, TakeAdded &takeAdded)
    {
        if(!visitor.enter(node))
            return;
        bool const hasAdded = takeAdded(_taken);
        // Most nodes of a scene have nothing below them: they are done without a frame.
        if(!hasAdded && node->getNChildren() == 0)
        {
            visitor.leave(node);
            return;
        }
        UInt32 const first = static_cast<UInt32>(_added.size());
        if(hasAdded)
        {
            _added.insert(_added.end(), _taken.begin(), _taken.end());
            _taken.clear();
        }
        _frames.push_back({node, hasAdded ? first : 0, first, hasAdded, added});
        if(added)
            ++_addedLevels;
    }

    std::vector<Frame, MemAllocator<Frame>> _frames;
    std::vector<Node *, MemAllocator<Node *>> _added; // of all open frames, innermost last
    std::vector<Node *> _taken;
    UInt32 _addedLevels = 0;
    UInt32 _addedNodes = 0; // entered by this walk
    // How often each node is open, counted over the first `_counted` frames: brought up to date
    // only where nodes are added, so that other walks do not pay for it.
    using OpenCount = std::pair<Node *const, UInt32>;
    std::unordered_map<Node *, UInt32, std::hash<Node *>, std::equal_to<>, MemAllocator<OpenCount>>
        _open;
    std::size_t _counted = 0;
    bool _warned = false;
};

/// Walks the children of `root`, itself included, depth first.
template <class Visitor>
void walk_children(Node *root, Visitor &visitor)
{
    NodeWalker().walkChildren(root, visitor);
}
} // namespace OSG
