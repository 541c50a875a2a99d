#include "OSGNodeWalker.h"

#include "OSGLog.h"

namespace OSG
{
bool NodeWalker::mayEnterAdded(Node *node)
{
    for(; _counted < _frames.size(); ++_counted)
        ++_open[_frames[_counted].node];
    bool const isCircle = _addedLevels >= MaxAddedLevels || _open.find(node) != _open.end();
    if(!isCircle && _addedNodes < MaxAddedNodes)
    {
        ++_addedNodes;
        return true;
    }
    if(!_warned && isCircle)
        OSG_LOG_WARNING("Traversal: a subtree is added below itself or too deep, it ends here\n");
    else if(!_warned)
        OSG_LOG_WARNING("Traversal: %u subtrees have been added, further ones are passed over\n",
                        MaxAddedNodes);
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
