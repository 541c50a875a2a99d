#include "OSGWindow.h"

#include "OSGBinaryDataHandler.h"
#include "OSGFieldOperations.h"

namespace OSG
{
Window::~Window() { orphanPorts(); }

void Window::setSize(UInt16 width, UInt16 height)
{
    setWidth(width);
    setHeight(height);
}

// --- views ---

void Window::addPort(Viewport *port)
{
    if(port == nullptr)
        return;
    UnrecordedRefPtr<Viewport> const keep(port);
    if(port->_parent != nullptr)
        port->_parent->subPort(port);
    markEdited(PortsFieldMask);
    _mfPorts.push_back(port);
    port->_parent = this;
}

void Window::subPort(Viewport *port) { unlinkChild(port, PortsFieldId); }

bool Window::unlinkChild(FieldContainer *child, UInt16 fieldId)
{
    Int32 const index = fieldId == PortsFieldId ? _mfPorts.findIndex(child) : -1;
    if(index < 0)
        return WindowBase::unlinkChild(child, fieldId);
    markEdited(PortsFieldMask);
    getPort(static_cast<UInt32>(index))->_parent = nullptr;
    _mfPorts.erase(static_cast<UInt32>(index));
    return true;
}

void Window::orphanPorts()
{
    for(Viewport *port : _mfPorts)
        port->_parent = nullptr;
}

void Window::resolveLinks()
{
    orphanPorts();
    WindowBase::resolveLinks();
}

// The views come as ids and are put in as anybody else would put them in.
void Window::copyFromBin(ExceptionBinaryDataHandler &handler, BitVector mask)
{
    WindowBase::copyFromBin(handler, mask & ~PortsFieldMask);
    if((mask & PortsFieldMask) == 0)
        return;
    while(getNPorts() != 0)
        subPort(getPort(0));
    UInt32 count = 0;
    handler.getValue(count);
    for(; count > 0; --count)
    {
        UInt32 id = 0;
        handler.getValue(id);
        addPort(mapped_pointer<Viewport>(id));
    }
}
} // namespace OSG
