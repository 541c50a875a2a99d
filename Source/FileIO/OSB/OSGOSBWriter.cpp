#include "OSGOSBWriter.h"

#include "OSGNode.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"

namespace OSG
{
void OSBWriter::meetContainers(Node *scene)
{
    _root.addContainer(scene);
    // Elements make further containers known, which this loop then comes to.
    for(std::size_t i = 0; i < _root.getContainers().size(); ++i)
    {
        FieldContainer *const container = _root.getContainers()[i];
        _elements.push_back(
            OSBElementFactory::the()->createElement(container->getType().getName(), &_root));
        _elements.back()->preWrite(container);
    }
}

void OSBWriter::write(Node *scene)
{
    meetContainers(scene);
    // Its parent would list it as a child, and a file's first node has no parent.
    if(_root.getNumber(scene->getParent()) != 0)
        throw ExceptionBinaryDataHandler::WriteError("the part shows what it is a part of");
    ExceptionBinaryDataHandler &handler = _root.getHandler();
    handler.put(OSBFormat::signature, sizeof(OSBFormat::signature));
    handler.putValue(OSBElementBase::OSGOSBHeaderVersion200);
    for(auto const &element : _elements)
    {
        handler.putValue(element->getContainer()->getType().getName());
        element->write();
    }
    handler.putValue(std::string());
}
} // namespace OSG
