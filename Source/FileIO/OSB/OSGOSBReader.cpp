#include "OSGOSBReader.h"

#include <algorithm>

#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"
#include "OSGOSBStructure.h"
#include "OSGSceneFileHandler.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
} // namespace

OSBReader::OSBReader(ExceptionBinaryDataHandler &handler)
    : _root(handler)
{
}

OSBReader::~OSBReader() = default;

TransitPtr<Node> OSBReader::read()
{
    readHeader();
    readRecords();
    auto *const scene = dynamic_cast<Node *>(_containers.find(1));
    if(scene == nullptr)
        throw ReadError("its first container is no node");
    for(auto const &element : _elements)
        element->postRead();
    checkPointers();
    setPointers();
    return TransitPtr<Node>(scene);
}

void OSBReader::readHeader()
{
    UInt8 signature[sizeof(OSBFormat::signature)];
    UInt16 version = 0;
    _root.getHandler().get(signature, sizeof(signature));
    if(!std::equal(signature, signature + sizeof(signature), OSBFormat::signature))
        throw ReadError("it does not begin as an OSB file");
    _root.getHandler().getValue(version);
    if(version != OSBElementBase::OSGOSBHeaderVersion200)
        throw ReadError("it has another version");
}

void OSBReader::readRecords()
{
    for(std::string typeName = _root.readName(); !typeName.empty(); typeName = _root.readName())
    {
        std::unique_ptr<OSBElementBase> element =
            OSBElementFactory::the()->createElement(typeName, &_root);
        if(element == nullptr)
        {
            OSG_LOG_WARNING("OSB: there is no container type '%s'\n",
                            OSBRootElement::shown(typeName).c_str());
            throw ReadError("a container type is unknown");
        }
        element->read(typeName);
        _elements.push_back(std::move(element));
        _containers.add(numContainers(), _elements.back()->getContainer());
        SceneFileHandlerBase::the()->updateReadProgress();
    }
}

void OSBReader::checkPointers() const
{
    for(OSBRootElement::PointerField const &pointers : _root.getPointerFields())
    {
        auto const &type =
            static_cast<PointerType const &>(pointers.field->getFieldType().getContentType());
        for(UInt32 const number : pointers.targets)
        {
            if(number == 0)
                continue;
            FieldContainer const *const target = _containers.find(number);
            if(target == nullptr)
                throw ReadError("a pointer leads out of the file");
            if(!target->getType().isDerivedFrom(type.getPointedTo()))
                throw ReadError("a pointer leads to a container of another kind");
        }
    }
}

// What the scene does not lead to stays without pointers: circles among it would outlive the read.
void OSBReader::setPointers()
{
    OSBRootElement::ContainerList containers;
    for(auto const &element : _elements)
        containers.push_back(element->getContainer());
    for(UInt32 const number :
        OSBStructure(containers, _root.getPointerFields()).getReachedFromBelow())
        _elements[number - 1]->postMap();
}
} // namespace OSG
