#include "OSGAppearanceWalk.h"

#include "OSGNodeCore.h"

namespace OSG
{
void AppearanceWalk::begin(AppearanceTable const *table, Appearance const &around,
                           std::vector<Node *> const &visiting)
{
    _table = table;
    _current = around;
    _visiting = visiting;
    _frames.clear();
}

bool AppearanceWalk::enter(Node *node)
{
    if(_table == nullptr)
        return true;
    Node *const above = _frames.empty() ? nullptr : _frames.back().node;
    NodeCore const *const core = above != nullptr ? above->getCore() : nullptr;
    bool const isVisited = core != nullptr && core->getOtherTree() == node;
    if(isVisited)
        _visiting.push_back(above);
    _frames.push_back({node, _current, isVisited});
    _current = _current.with(_table->find(node, _visiting));
    if(!_current.isHidden)
        return true;
    leave();
    return false;
}

void AppearanceWalk::leave()
{
    if(_table == nullptr)
        return;
    _current = _frames.back().around;
    if(_frames.back().isVisited)
        _visiting.pop_back();
    _frames.pop_back();
}
} // namespace OSG
