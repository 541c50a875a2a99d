#include "OSGLassoTool.h"

#include <utility>

namespace OSG
{
LassoTool::LassoTool(OnLasso onLasso, OnClick onClick)
    : PickTool(std::move(onClick))
    , _onLasso(std::move(onLasso))
{
}

void LassoTool::cancel()
{
    PickTool::cancel();
    _corners.clear();
}

void LassoTool::follow(Event const &event)
{
    if(_corners.empty())
        _corners.push_back(getBegin());
    if((event.pixel - _corners.back()).length() >= CornerDistance)
        _corners.push_back(event.pixel);
}

void LassoTool::finishDrag(Event const &event)
{
    Lasso const lasso{std::exchange(_corners, {}), event.modifiers};
    if(lasso.corners.size() >= 3 && _onLasso)
        _onLasso(lasso);
}
} // namespace OSG
