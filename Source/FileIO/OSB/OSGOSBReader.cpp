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

// A record of a few bytes makes a container of several hundred. A hostile file could hold millions
// of empty records, so the memory of containers is bounded by these free bytes plus BytesForAByte
// for each byte read. Real scenes stay far below, because each container is also pointed to and
// nearly each has fields.
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
        throw ReadError("its first container is not a node");
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
        throw ReadError("its first bytes are not those of an OSB file");
    _root.getHandler().getValue(version);
    if(version != OSBFormat::NamesInFull && version != OSBFormat::NamesOnce)
        throw ReadError("its version is unknown");
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

// Skips a record. The library's elements all write the same layout, so the class need not be known.
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

// Containers that cannot be reached from the root keep no pointers. Otherwise circles among them
// would outlive the read.
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

// After an error the containers are taken apart by resolveLinks. Nodes that visit one another hold
// references to one another, so dropping the references of the elements would not free them.
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
            // There was no memory to note the edit. The other containers are still taken apart.
        }
    }
}
} // namespace OSG
