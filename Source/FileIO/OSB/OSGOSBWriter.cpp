#include "OSGOSBWriter.h"

#include "OSGNode.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"

namespace OSG
{
OSBWriter::OSBWriter(ExceptionBinaryDataHandler &handler)
    : _root(handler)
{
    _root.setVersion(OSBFormat::NamesOnce);
}

OSBWriter::~OSBWriter() = default;

void OSBWriter::meetContainers(Node *scene)
{
    _root.addContainer(scene);
    // Elements make further containers known, which this loop then comes to.
    for(std::size_t i = 0; i < _root.getContainers().size(); ++i)
    {
        FieldContainer *const container = _root.getContainers()[i];
        OSBElementCreatorBase const &creator =
            *_root.getWrittenTypes().get(container->getType()).creator;
        std::unique_ptr<OSBElementBase> element(creator.createElement(&_root));
        element->preWrite(container);
        _elements.push_back(std::move(element));
    }
}

void OSBWriter::write(Node *scene)
{
    meetContainers(scene);
    // Its parent would list it as a child, and a file's first node has no parent.
    if(_root.getNumber(scene->getParent()) != 0)
        throw ExceptionBinaryDataHandler::WriteError("the part shows what it is a part of");
    ExceptionBinaryDataHandler &handler = _root.getHandler();
    handler.put(OSBFormat::Signature, sizeof(OSBFormat::Signature));
    handler.putValue(OSBFormat::NamesOnce);
    for(auto const &element : _elements)
    {
        _root.getWrittenTypes().writeTypeName(element->getContainer()->getType());
        element->write();
    }
    _root.getWrittenTypes().writeEnd();
}
} // namespace OSG
