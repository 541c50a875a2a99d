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
/// Nodes that were added so and are no children of the adding node may form cycles: one that is
/// open on the current path already, or the 1,025th such level, ends its branch with one warning.

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

    /// True where the walk may go from the open frame to `node`, which was added and is no child.
    bool mayEnterAdded(Node *node);
    /// Takes the frame that has gone out of `_open`.
    void forget(Node *node);
    Node *nextOf(Frame &frame);
    static Node *nextChildOf(Frame &frame);

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
        }
    }

    template <class Visitor, class TakeAdded>
    void open(Node *node, bool added, Visitor &visitor, TakeAdded &takeAdded)
    {
        if(!visitor.enter(node))
            return;
        _taken.clear();
        bool const hasAdded = takeAdded(_taken);
        UInt32 const first = static_cast<UInt32>(_added.size());
        _added.insert(_added.end(), _taken.begin(), _taken.end());
        _frames.push_back({node, hasAdded ? first : 0, first, hasAdded, added});
        if(added)
            ++_addedLevels;
    }

    std::vector<Frame, MemAllocator<Frame>> _frames;
    std::vector<Node *, MemAllocator<Node *>> _added; // of all open frames, innermost last
    std::vector<Node *> _taken;
    UInt32 _addedLevels = 0;
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
