#pragma once

/// \file
/// Descends the tree of a PrimitiveIndex.

#include "OSGPrimitiveIndex.h"

namespace OSG
{
/// What a walk knows of the children of one node.
struct BoxChoices
{
    UInt32 wanted;                ///< children to enter as bits; all that there are, at first
    Real32 key[BoxNode::Width];   ///< the child with the smallest key is entered first; of equal
                                  ///< keys the one with the highest `last`
    UInt32 state[BoxNode::Width]; ///< handed to test() or to the leaf at the child
};

/// Walks the tree depth first. `boxes` has two functions:
///
///   void test(BoxNode const &node, UInt32 state, BoxChoices &choices)
///     takes those out of `choices.wanted` that are of no use, sets key and state of the others
///   bool wants(Real32 key, UInt32 last)
///     whether a chosen child is still of use when its turn comes; `last` is the last primitive
///     below it
///
/// `leaf(UInt32 block, UInt32 state)` is called for each block; the walk ends where it is false.
/// Nothing is allocated.
template <class Boxes, class Leaf>
void walk_boxes(PrimitiveIndex const &index, UInt32 state, Boxes &boxes, Leaf &&leaf)
{
    struct Entry
    {
        Real32 key;
        UInt32 state;
        UInt32 node;
        UInt32 last;
        UInt32 level; // plus 1; 0 is a block
    };
    auto const isBetter = [](Entry const &a, Entry const &b)
    { return a.key < b.key || (a.key == b.key && a.last > b.last); };
    Entry stack[PrimitiveIndex::MaxLevels * BoxNode::Width];
    if(index.levelCount() == 0)
        return;
    UInt32 open = 0;
    Entry entry = {0.f, state, 0, 0, index.levelCount()};
    for(bool isRoot = true;; isRoot = false)
    {
        if(isRoot || boxes.wants(entry.key, entry.last))
        {
            if(entry.level == 0)
            {
                if(!leaf(entry.node, entry.state))
                    return;
            }
            else
            {
                UInt32 const level = entry.level - 1;
                BoxNode const &node = index.level(level)[entry.node];
                BoxChoices choices;
                choices.wanted = index.childrenOf(level, entry.node);
                boxes.test(node, entry.state, choices);
                UInt32 const begin = open;
                for(UInt32 rest = choices.wanted; rest != 0; rest &= rest - 1)
                {
                    UInt32 const child = static_cast<UInt32>(__builtin_ctz(rest));
                    // The best stands last. There are eight at most.
                    Entry const entered = {choices.key[child], choices.state[child],
                                           entry.node * BoxNode::Width + child, node.last[child],
                                           level};
                    UInt32 at = open++;
                    for(; at > begin && isBetter(stack[at - 1], entered); --at)
                        stack[at] = stack[at - 1];
                    stack[at] = entered;
                }
            }
        }
        if(open == 0)
            return;
        entry = stack[--open];
    }
}

/// Calls `visit(primitive)` with each primitive that stands in no block, until it is false.
template <class Visit>
void visit_untamed(PrimitiveIndex const &index, Visit visit)
{
    for(UInt32 place = index.untamedBegin(); place < index.size(); ++place)
        if(!visit(index.primitiveAt(place)))
            return;
}

/// Calls `visit(primitive)` with each primitive of a block. It ends, with false, where that is
/// false.
template <class Visit>
bool visit_block(PrimitiveIndex const &index, UInt32 block, Visit visit)
{
    UInt32 const begin = block * PrimitiveIndex::BlockSize;
    UInt32 const end = begin + index.blockSize(block);
    for(UInt32 place = begin; place < end; ++place)
        if(!visit(index.primitiveAt(place)))
            return false;
    return true;
}
} // namespace OSG
