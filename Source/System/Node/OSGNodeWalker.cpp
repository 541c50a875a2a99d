#include "OSGNodeWalker.h"

#include <algorithm>

#include "OSGLog.h"

namespace OSG
{
Node *NodeWalker::nextOf(Frame &frame)
{
    if(!frame.hasAdded)
        return frame.next < frame.node->getNChildren() ? frame.node->getChild(frame.next++) : nullptr;
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
    bool const open = std::any_of(_frames.begin(), _frames.end(),
                                  [node](Frame const &frame) { return frame.node == node; });
    if(!open && _addedLevels < MaxAddedLevels)
        return true;
    if(!_warned)
        OSG_LOG_WARNING("Traversal: a subtree is added below itself or too deep, it ends here\n");
    _warned = true;
    return false;
}
} // namespace OSG
