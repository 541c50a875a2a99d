#include "OSGViewHistory.h"

#include <algorithm>

namespace OSG
{
ViewHistory::ViewHistory(std::size_t limit)
    : _limit(std::max<std::size_t>(limit, 1))
{
}

void ViewHistory::add(WindowView const &view)
{
    if(!is_view(view) || getCurrent() == view)
        return;
    _views.reserve(_current + 1); // the only step that may fail
    _views.erase(_views.begin() + static_cast<std::ptrdiff_t>(_current), _views.end());
    _views.push_back(view);
    if(_views.size() > _limit)
        _views.erase(_views.begin());
    _current = _views.size();
}

std::optional<WindowView> ViewHistory::undo()
{
    if(!canUndo())
        return std::nullopt;
    return _views[--_current - 1];
}

std::optional<WindowView> ViewHistory::redo()
{
    if(!canRedo())
        return std::nullopt;
    return _views[_current++];
}

std::optional<WindowView> ViewHistory::getCurrent() const
{
    if(_current == 0)
        return std::nullopt;
    return _views[_current - 1];
}

void ViewHistory::clear()
{
    _views.clear();
    _current = 0;
}
} // namespace OSG
