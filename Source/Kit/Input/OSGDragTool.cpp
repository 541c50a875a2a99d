#include "OSGDragTool.h"

namespace OSG
{
void DragTool::press(Event const &event)
{
    if(_isDown) // its release was lost
        cancel();
    _begin = event.pixel;
    _isDown = true;
    _hasMoved = false;
}

void DragTool::note(Event const &event)
{
    _hasMoved = _hasMoved || (event.pixel - _begin).length() > ClickRadius * event.scale;
    if(_hasMoved)
        follow(event);
}

void DragTool::drag(Event const &event)
{
    if(_isDown)
        note(event);
}

void DragTool::release(Event const &event)
{
    if(!_isDown)
        return;
    note(event);
    _isDown = false;
    if(_hasMoved)
        finishDrag(event);
    else
        finishClick(event);
}

void DragTool::cancel() { _isDown = false; }

void DragTool::follow(Event const &) {}
} // namespace OSG
