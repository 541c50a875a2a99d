#include "OSGPickTool.h"

#include <utility>

namespace OSG
{
PickTool::PickTool(OnClick onClick)
    : _onClick(std::move(onClick))
{
}

void PickTool::finishClick(Event const &event)
{
    if(_onClick)
        _onClick({getBegin(), event.modifiers});
}

void PickTool::finishDrag(Event const &) {}

bool NavigateTool::sharesDrag() const { return true; }
} // namespace OSG
