#include "OSGWindow.h"

#include <vector>

#include "OSGFieldOperations.h"

namespace OSG
{
Window::~Window() { orphanPorts(); }

void Window::setSize(UInt16 width, UInt16 height)
{
    setWidth(width);
    setHeight(height);
}

// --- viewports ---

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
    {
        if(port != nullptr && port->_parent == this)
            port->_parent = nullptr;
    }
}

// The viewports need their parents set, which the base does not know.
void Window::execSync(WindowBase *from, BitVector whichField, AspectOffsets &offsets,
                      BitVector syncMode, UInt32 syncInfo)
{
    WindowBase::execSync(from, whichField & ~PortsFieldMask, offsets, syncMode, syncInfo);
    if((whichField & PortsFieldMask) != 0 && from != this)
        syncPorts(static_cast<Window const &>(*from));
}

// A viewport may have moved to another window. In this aspect it is then in the lists of both
// windows until both are synchronised. Its parent is the window that was synchronised last.
void Window::syncPorts(Window const &source)
{
    std::vector<UnrecordedRefPtr<Viewport>> ports;
    ports.reserve(source.getNPorts());
    for(Viewport *port : source._mfPorts)
    {
        if(Viewport *const copy = in_this_aspect(port))
            ports.emplace_back(copy);
    }
    orphanPorts();
    _mfPorts.clear();
    for(Viewport *port : ports)
    {
        _mfPorts.push_back(port);
        port->_parent = this;
    }
}

void Window::resolveLinks()
{
    orphanPorts();
    WindowBase::resolveLinks();
}
} // namespace OSG
