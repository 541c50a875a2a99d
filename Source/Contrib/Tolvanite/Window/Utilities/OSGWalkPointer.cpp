#include "OSGWalkPointer.h"

#include <utility>

namespace OSG
{
WalkPointer::WalkPointer(std::shared_ptr<Desktop> desktop)
    : _desktop(std::move(desktop))
{
}

WalkPointer::~WalkPointer()
{
    releaseCapture();
    if(_isHidden)
        _desktop->showPointer(true);
}

void WalkPointer::hide(NativeWindow window)
{
    if(_isHidden)
        return;
    _savedPlace = _desktop->getPointer();
    _desktop->showPointer(false);
    _isHidden = true;
    if(window == nullptr || _desktop->getCapture() != nullptr)
        return;
    _desktop->setCapture(window);
    _captureWindow = _desktop->getCapture();
}

void WalkPointer::show()
{
    if(!_isHidden)
        return;
    _desktop->setPointer(_savedPlace);
    _desktop->showPointer(true);
    _isHidden = false;
    releaseCapture();
}

void WalkPointer::keepCapture(NativeWindow window)
{
    if(_captureWindow == nullptr || _desktop->getCapture() != nullptr)
        return;
    _desktop->setCapture(window);
    _captureWindow = _desktop->getCapture();
}

Desktop::Point WalkPointer::center(NativeWindow window)
{
    Desktop::Size const size = _desktop->getClientSize(window);
    Desktop::Point const middle{size.width / 2, size.height / 2};
    _desktop->setPointer(_desktop->toScreen(window, middle));
    return middle;
}

void WalkPointer::releaseCapture()
{
    if(_captureWindow != nullptr && _desktop->getCapture() == _captureWindow)
        _desktop->releaseCapture();
    _captureWindow = nullptr;
}
} // namespace OSG
