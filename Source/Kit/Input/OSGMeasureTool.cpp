#include "OSGMeasureTool.h"

#include <algorithm>
#include <utility>

namespace OSG
{
MeasureTool::MeasureTool(UInt32 count, Pick pick, OnMeasured onMeasured)
    : _count(std::max(count, 1u))
    , _pick(std::move(pick))
    , _onMeasured(std::move(onMeasured))
{
}

void MeasureTool::cancel()
{
    DragTool::cancel();
    _points.clear();
}

void MeasureTool::finishClick(Event const &event)
{
    std::optional<Pnt3f> const point =
        _pick ? _pick({getBegin(), event.modifiers}) : std::optional<Pnt3f>();
    if(!point)
        return;
    _points.push_back(*point);
    if(_points.size() < _count)
        return;
    std::vector<Pnt3f> const measured = std::exchange(_points, {});
    if(_onMeasured)
        _onMeasured(measured);
}

void MeasureTool::finishDrag(Event const &) {}
} // namespace OSG
