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
    // preWrite appends further containers to the list, which this loop then reaches.
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
    // A core of the scene shows a tree that contains the scene's parent, which would be written
    // with the root as its child. The first node of a file must not have a parent.
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
