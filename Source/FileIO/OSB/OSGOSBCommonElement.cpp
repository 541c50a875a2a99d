#include "OSGOSBCommonElement.h"

#include <cstring>
#include <limits>

#include "OSGAttachment.h"
#include "OSGFieldHandle.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
using WriteError = ExceptionBinaryDataHandler::WriteError;

bool names_field(std::string const &list, std::string const &name)
{
    constexpr char const *separators = " ,";
    for(std::size_t at = list.find(name); at != std::string::npos; at = list.find(name, at + 1))
    {
        std::size_t const end = at + name.size();
        if((at == 0 || std::strchr(separators, list[at - 1]) != nullptr) &&
           (end == list.size() || std::strchr(separators, list[end]) != nullptr))
            return true;
    }
    return false;
}

bool is_pointer_field(FieldDescriptionBase const &field)
{
    return field.getFieldType().getClass() != FieldClass::Value;
}

bool is_multi(FieldDescriptionBase const &field)
{
    return field.getFieldType().getCardinality() == FieldCardinality::Multi;
}
} // namespace

OSBCommonElement::OSBCommonElement(OSBRootElement *root, UInt16 version)
    : OSBElementBase(root, version)
{
}

// --- reading ---

void OSBCommonElement::readBegin()
{
    UInt8 kind = 0;
    UInt16 version = 0;
    getRoot()->getHandler().getValue(kind);
    getRoot()->getHandler().getValue(version);
    setVersion(version);
}

void OSBCommonElement::takeContainer(FieldContainer *container)
{
    if(container == nullptr)
        throw ReadError("a container could not be made");
    setContainer(container);
}

bool OSBCommonElement::readFieldHeader(std::string const &endMarker, std::string &name,
                                       std::string &typeName, UInt32 &size)
{
    name = getRoot()->readName();
    if(name == endMarker)
        return false;
    typeName = getRoot()->readName();
    getRoot()->getHandler().getValue(size);
    return true;
}

bool OSBCommonElement::readFieldContent(std::string const &name, std::string const &typeName,
                                        UInt32 size, std::string const &exclude,
                                        PointerFieldIt &pointerField)
{
    std::vector<UInt8> content;
    getRoot()->getHandler().appendValues(content, size);
    if(names_field(exclude, name))
        return false;
    FieldContainerType const &type = getContainer()->getType();
    FieldDescriptionBase const *const field = type.getFieldDesc(name.c_str());
    if(field == nullptr || typeName != field->getFieldType().getCName())
    {
        OSG_LOG_WARNING("OSB: %s has no field %s of type %s, it is passed over\n", type.getCName(),
                        OSBRootElement::shown(name).c_str(),
                        OSBRootElement::shown(typeName).c_str());
        return false;
    }
    MemoryBinaryDataHandler handler(std::move(content));
    if(is_pointer_field(*field))
        pointerField = readPointers(handler, *field);
    else
        getContainer()->copyFromBin(handler, field->getFieldMask());
    if(handler.getRest() != 0)
        throw ReadError("a field is longer than its content");
    return true;
}

OSBCommonElement::PointerFieldIt OSBCommonElement::readPointers(MemoryBinaryDataHandler &handler,
                                                                FieldDescriptionBase const &field)
{
    PointerFieldIt known = _firstPointers;
    for(UInt32 i = 0; i < _numPointerFields; ++i, ++known)
    {
        if(known->field == &field)
            throw ReadError("a field of pointers comes twice");
    }
    OSBRootElement::PointerField pointers{getContainer(), &field, {}};
    UInt32 count = 1;
    if(is_multi(field))
        handler.getValue(count);
    handler.appendValues(pointers.targets, count);
    OSBRootElement::PointerFieldList &all = getRoot()->editPointerFields();
    PointerFieldIt const place = all.insert(all.end(), std::move(pointers));
    if(_numPointerFields++ == 0)
        _firstPointers = place;
    return place;
}

void OSBCommonElement::postMap()
{
    // The numbers mean the containers of this file (StreamIdMap) while pointers are set.
    PointerFieldIt pointers = _firstPointers;
    for(UInt32 i = 0; i < _numPointerFields; ++i, ++pointers)
    {
        MemoryBinaryDataHandler handler;
        if(is_multi(*pointers->field))
            handler.putValue(static_cast<UInt32>(pointers->targets.size()));
        handler.putValues(pointers->targets.data(), pointers->targets.size());
        pointers->container->copyFromBin(handler, pointers->field->getFieldMask());
    }
}

// --- writing ---

void OSBCommonElement::writeBegin()
{
    getRoot()->getHandler().putValue(getFCPtrType(getContainer()));
    getRoot()->getHandler().putValue(getVersion());
}

void OSBCommonElement::preWriteFieldContainer(FieldContainer *container, std::string const &exclude)
{
    setContainer(container);
    if(container == nullptr)
        return;
    for(FieldDescriptionBase const *field : getRoot()->getFields(container->getType()))
    {
        // What is only looked at does not belong to the scene by that.
        if(field->getFieldType().getClass() != FieldClass::Pointer ||
           names_field(exclude, field->getCName()))
            continue;
        GetFieldHandlePtr const handle = field->createGetHandle(*container);
        for(UInt32 i = 0; i < handle->size(); ++i)
            getRoot()->addContainer(handle->getPointer(i));
    }
}

void OSBCommonElement::writeFields(std::string const &exclude, bool writeEndMarker)
{
    for(FieldDescriptionBase const *field : getRoot()->getFields(getContainer()->getType()))
    {
        if(!names_field(exclude, field->getCName()))
            writeField(*field);
    }
    if(writeEndMarker)
        getRoot()->getHandler().putValue(std::string());
}

void OSBCommonElement::writeField(FieldDescriptionBase const &field)
{
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    UInt64 const size = getContainer()->getBinSize(field.getFieldMask());
    if(size > std::numeric_limits<UInt32>::max())
        throw WriteError("a field is too long");
    handler.putValue(field.getName());
    handler.putValue(field.getFieldType().getName());
    handler.putValue(static_cast<UInt32>(size));
    if(is_pointer_field(field))
        writePointers(handler, field);
    else
        getContainer()->copyToBin(handler, field.getFieldMask());
}

void OSBCommonElement::writePointers(ExceptionBinaryDataHandler &handler,
                                     FieldDescriptionBase const &field)
{
    GetFieldHandlePtr const handle = field.createGetHandle(*getContainer());
    if(is_multi(field))
        handler.putValue(handle->size());
    for(UInt32 i = 0; i < handle->size(); ++i)
        handler.putValue(getRoot()->getNumber(handle->getPointer(i)));
}

UInt8 OSBCommonElement::getFCPtrType(FieldContainer const *container)
{
    if(dynamic_cast<Node const *>(container) != nullptr)
        return 1;
    if(dynamic_cast<NodeCore const *>(container) != nullptr)
        return 2;
    if(dynamic_cast<Attachment const *>(container) != nullptr)
        return 3;
    return 4;
}
} // namespace OSG
