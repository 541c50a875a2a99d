#include "OSGNodeWalker.h"

#include <algorithm>

#include "OSGLog.h"

namespace OSG
{
Node *NodeWalker::nextOf(Frame &frame)
{
    if(!frame.hasAdded)
        return nextChildOf(frame);
    // The frame's nodes are the last of the list while it is the innermost one.
    while(frame.next < _added.size())
    {
        Node *const node = _added[frame.next++];
        if(node != nullptr)
            return node;
    }
    return nullptr;
}

namespace
{
// Scenes are larger than caches: siblings come out of memory while earlier ones are walked, and so
// does, once they are there, what they have first below them.
void fetch_ahead(Node const &node, UInt32 next, UInt32 count)
{
    constexpr UInt32 Far = 5;
    constexpr UInt32 Near = 2;
    UInt32 const end = std::min(next + Far + 1, count);
    for(UInt32 i = next == 0 ? 1 : next + Far; i < end; ++i)
        node.getChild(i)->prefetch();
    if(next == 0 || next + Near >= count)
        return;
    Node const *const sibling = node.getChild(next + Near);
    if(sibling->getNChildren() != 0)
        sibling->getChild(0)->prefetch();
}
} // namespace

Node *NodeWalker::nextChildOf(Frame &frame)
{
    UInt32 const count = frame.node->getNChildren();
    if(frame.next >= count)
        return nullptr;
    fetch_ahead(*frame.node, frame.next, count);
    return frame.node->getChild(frame.next++);
}

bool NodeWalker::mayEnterAdded(Node *node)
{
    for(; _counted < _frames.size(); ++_counted)
        ++_open[_frames[_counted].node];
    if(_open.find(node) == _open.end() && _addedLevels < MaxAddedLevels)
        return true;
    if(!_warned)
        OSG_LOG_WARNING("Traversal: a subtree is added below itself or too deep, it ends here\n");
    _warned = true;
    return false;
}

void NodeWalker::forget(Node *node)
{
    --_counted;
    auto const found = _open.find(node);
    if(--found->second == 0)
        _open.erase(found);
}
} // namespace OSG
