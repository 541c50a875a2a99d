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

// A record of a few bytes makes a container of some hundred, which a host may have to pay for
// millions of records that hold nothing. Scenes stay far below: each of their containers is pointed
// to as well, and nearly each holds something.
constexpr UInt64 FreeBytes = 32 * 1024 * 1024;
constexpr UInt64 BytesForAByte = 36;
constexpr UInt64 LeastRecordBytes = 7;       // type, kind, version, end
constexpr UInt64 BytesBesideContainer = 160; // element, pointers, numbers
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
    {
        if(element != nullptr)
            element->postRead();
    }
    checkPointers();
    try
    {
        setPointers();
    }
    catch(...)
    {
        takeApart();
        throw;
    }
    return TransitPtr<Node>(scene);
}

void OSBReader::readHeader()
{
    UInt8 signature[sizeof(OSBFormat::Signature)];
    UInt16 version = 0;
    _root.getHandler().get(signature, sizeof(signature));
    if(!std::equal(signature, signature + sizeof(signature), OSBFormat::Signature))
        throw ReadError("it does not begin as an OSB file");
    _root.getHandler().getValue(version);
    if(version != OSBFormat::NamesInFull && version != OSBFormat::NamesOnce)
        throw ReadError("it has another version");
    _root.setVersion(version);
}

void OSBReader::readRecords()
{
    OSBReadNames &names = _root.getNames();
    for(UInt32 type = names.readType(); type != OSBReadNames::End; type = names.readType())
    {
        readRecord(type);
        SceneFileHandlerBase::the()->updateReadProgress();
    }
}

void OSBReader::readRecord(UInt32 number)
{
    OSBReadNames::Type &type = _root.getNames().getType(number);
    if(type.creator == nullptr)
    {
        passOver(type);
        return;
    }
    std::unique_ptr<OSBElementBase> element(type.creator->createElement(&_root));
    element->read(type.name);
    FieldContainer *const container = element->getContainer();
    _elements.push_back(std::move(element));
    addContainer(container);
}

// What all elements of the library write can be read without knowing the class.
void OSBReader::passOver(OSBReadNames::Type &type)
{
    if(!type.isReported)
        OSG_LOG_WARNING("OSB: there is no container type '%s', it is passed over\n",
                        OSBReadNames::shown(type.name).c_str());
    type.isReported = true;
    SceneFileHandlerBase::the()->setReadIncomplete();
    UInt8 kind = 0;
    UInt16 version = 0;
    ExceptionBinaryDataHandler &handler = _root.getHandler();
    handler.getValue(kind);
    handler.getValue(version);
    while(_root.getNames().readField() != OSBReadNames::End)
    {
        UInt32 size = 0;
        handler.getValue(size);
        OSBContent(handler, size).skipRest();
    }
    _elements.push_back(nullptr);
    addContainer(nullptr);
}

void OSBReader::addContainer(FieldContainer *container)
{
    _byNumber.push_back(container);
    _containers.add(static_cast<UInt32>(_byNumber.size()), container);
    _containerBytes +=
        BytesBesideContainer + (container != nullptr ? container->getContainerSize() : 0);
    checkMemory();
}

void OSBReader::checkMemory() const
{
    UInt64 const bytesRead = LeastRecordBytes * _byNumber.size() + _root.getContentBytes();
    if(_containerBytes > FreeBytes + BytesForAByte * bytesRead)
        throw ReadError("it has more containers than its bytes can hold");
}

void OSBReader::checkPointers()
{
    for(OSBRootElement::PointerField const &pointers : _root.getPointerFields())
    {
        auto const &type =
            static_cast<PointerType const &>(pointers.field->getFieldType().getContentType());
        for(std::size_t at = pointers.begin; at < pointers.end; ++at)
        {
            UInt32 &number = _root.editTargets()[at];
            if(number > _byNumber.size())
                throw ReadError("a pointer leads out of the file");
            if(number == 0)
                continue;
            FieldContainer const *const target = _byNumber[number - 1];
            if(target == nullptr)
                number = 0;
            else if(!target->getType().isDerivedFrom(type.getPointedTo()))
                throw ReadError("a pointer leads to a container of another kind");
        }
    }
}

// What the scene does not lead to stays without pointers: circles among it would outlive the read.
void OSBReader::setPointers()
{
    OSBStructure structure(_byNumber, _root.getPointerFields(), _root.editTargets());
    if(UInt32 const cut = structure.cutCircles())
    {
        OSG_LOG_WARNING("OSB: pointers that would close a circle of counted references are null: "
                        "%u\n",
                        cut);
        SceneFileHandlerBase::the()->setReadIncomplete();
    }
    for(UInt32 const number : structure.getReachedFromBelow())
        _elements[number - 1]->postMap();
}

// Nodes that visit one another hold one another: references alone would not end them.
void OSBReader::takeApart() noexcept
{
    for(FieldContainer *container : _byNumber)
    {
        try
        {
            if(container != nullptr)
                container->resolveLinks();
        }
        catch(...)
        {
            // It could not be noted as edited; the others are still taken apart.
        }
    }
}
} // namespace OSG
