#include "OSGNodeWalker.h"

#include "OSGLog.h"

namespace OSG
{
Node *NodeWalker::nextOf(Frame &frame)
{
    if(!frame.hasAdded)
        return frame.next < frame.node->getNChildren() ? frame.node->getChild(frame.next++)
                                                       : nullptr;
    // The frame's nodes are the last of the list while it is the innermost one.
    while(frame.next < _added.size())
    {
        Node *const node = _added[frame.next++];
        if(node != nullptr)
            return node;
    }
    return nullptr;
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
