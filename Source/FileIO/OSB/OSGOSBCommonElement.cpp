#include "OSGOSBCommonElement.h"

#include <cstring>
#include <limits>

#include "OSGAttachment.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldLinks.h"
#include "OSGLog.h"
#include "OSGNode.h"
#include "OSGNodeCore.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;
using WriteError = ExceptionBinaryDataHandler::WriteError;

bool names_field(std::string const &list, char const *name)
{
    constexpr char const *Separators = " ,";
    if(list.empty())
        return false;
    std::size_t const length = std::strlen(name);
    for(std::size_t at = list.find(name); at != std::string::npos; at = list.find(name, at + 1))
    {
        std::size_t const end = at + length;
        if((at == 0 || std::strchr(Separators, list[at - 1]) != nullptr) &&
           (end == list.size() || std::strchr(Separators, list[end]) != nullptr))
            return true;
    }
    return false;
}

OSBWrittenTypes::Type &written_type(OSBRootElement &root, FieldContainer const &container,
                                    std::string const &exclude)
{
    OSBWrittenTypes::Type &type = root.getWrittenTypes().get(container.getType());
    if(type.exclude == exclude)
        return type;
    for(OSBWrittenTypes::Field &field : type.fields)
        field.isExcluded = names_field(exclude, field.description->getCName());
    type.exclude = exclude;
    return type;
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
    OSBReadNames &names = getRoot()->getNames();
    UInt32 const number = names.readField(endMarker);
    if(number == OSBReadNames::End)
        return false;
    name = names.getField(number).name;
    typeName = names.getField(number).typeName;
    getRoot()->getHandler().getValue(size);
    return true;
}

bool OSBCommonElement::readFieldContent(std::string const &name, std::string const &typeName,
                                        UInt32 size, std::string const &exclude,
                                        PointerFieldIt &pointerField)
{
    FieldDescriptionBase const *field = getContainer()->getType().getFieldDesc(name.c_str());
    if(field != nullptr && typeName != field->getFieldType().getCName())
        field = nullptr;
    return readContent({name, typeName}, field, size, names_field(exclude, name.c_str()),
                       pointerField);
}

void OSBCommonElement::readFields(std::string const &exclude)
{
    OSBReadNames &names = getRoot()->getNames();
    FieldContainerType const &type = getContainer()->getType();
    PointerFieldIt place = 0;
    for(UInt32 number = names.readField(); number != OSBReadNames::End; number = names.readField())
    {
        OSBReadNames::Field const &named = names.getField(number);
        UInt32 size = 0;
        getRoot()->getHandler().getValue(size);
        readContent(named, names.findField(number, type), size,
                    names_field(exclude, named.name.c_str()), place);
    }
}

bool OSBCommonElement::readContent(OSBReadNames::Field const &named,
                                   FieldDescriptionBase const *field, UInt32 size, bool isExcluded,
                                   PointerFieldIt &pointerField)
{
    OSBContent content(getRoot()->getHandler(), size);
    getRoot()->countContent(size);
    if(isExcluded || field == nullptr)
    {
        content.skipRest();
        if(!isExcluded)
            OSG_LOG_WARNING("OSB: %s has no field %s of type %s, it is passed over\n",
                            getContainer()->getType().getCName(),
                            OSBReadNames::shown(named.name).c_str(),
                            OSBReadNames::shown(named.typeName).c_str());
        return false;
    }
    if(field->getPointers() != nullptr)
        pointerField = readPointers(content, *field);
    else
        getContainer()->copyFromBin(content, field->getFieldMask());
    if(content.getRest() != 0)
    {
        content.skipRest();
        throw ReadError("a field is longer than its content");
    }
    return true;
}

OSBCommonElement::PointerFieldIt OSBCommonElement::readPointers(OSBContent &content,
                                                                FieldDescriptionBase const &field)
{
    OSBRootElement::PointerFieldList &all = getRoot()->editPointerFields();
    for(UInt32 i = 0; i < _numPointerFields; ++i)
    {
        if(all[_firstPointers + i].field == &field)
            throw ReadError("a field of pointers comes twice");
    }
    UInt32 count = 1;
    if(field.getFieldType().getCardinality() == FieldCardinality::Multi)
        content.getValue(count);
    OSBRootElement::NumberList &targets = getRoot()->editTargets();
    std::size_t const begin = targets.size();
    content.appendValues(targets, count);
    if(_numPointerFields == 0)
        _firstPointers = all.size();
    all.push_back({getContainer(), &field, begin, targets.size()});
    ++_numPointerFields;
    return all.size() - 1;
}

void OSBCommonElement::postMap()
{
    // While pointers are set, the numbers stand for the containers of this file (StreamIdMap).
    FieldContainerFactoryBase const &containers = *FieldContainerFactoryBase::the();
    OSBRootElement::ContainerList &pointers = getRoot()->editFound();
    for(UInt32 i = 0; i < _numPointerFields; ++i)
    {
        OSBRootElement::PointerField const &field =
            getRoot()->getPointerFields()[_firstPointers + i];
        pointers.clear();
        for(std::size_t at = field.begin; at < field.end; ++at)
        {
            UInt32 const number = getRoot()->getTargets()[at];
            pointers.push_back(number != 0 ? containers.getMappedContainer(number) : nullptr);
        }
        FieldLinks(*field.container, *field.field)
            .restore(pointers.data(), static_cast<UInt32>(pointers.size()));
    }
}

// --- writing ---

void OSBCommonElement::writeBegin()
{
    OSBWrittenTypes::Type &type = getRoot()->getWrittenTypes().get(getContainer()->getType());
    if(type.kind == 0)
        type.kind = getFCPtrType(getContainer());
    getRoot()->getHandler().putValue(type.kind);
    getRoot()->getHandler().putValue(getVersion());
}

void OSBCommonElement::preWriteFieldContainer(FieldContainer *container, std::string const &exclude)
{
    setContainer(container);
    if(container == nullptr)
        return;
    for(WrittenField const &field : written_type(*getRoot(), *container, exclude).fields)
    {
        // Only counted pointers make a container part of the scene.
        if(field.pointers == nullptr || !field.isCounted || field.isExcluded)
            continue;
        UInt32 const size = field.pointers->size(*container);
        for(UInt32 i = 0; i < size; ++i)
            getRoot()->addContainer(field.pointers->get(*container, i));
    }
}

void OSBCommonElement::writeFields(std::string const &exclude, bool writeEndMarker)
{
    for(WrittenField &field : written_type(*getRoot(), *getContainer(), exclude).fields)
    {
        if(!field.isExcluded)
            writeField(field);
    }
    if(writeEndMarker)
        getRoot()->getWrittenTypes().writeEnd();
}

void OSBCommonElement::writeField(WrittenField &field)
{
    if(field.pointers != nullptr)
        writePointers(field);
    else
        writeValues(field);
}

void OSBCommonElement::writeFieldHeader(WrittenField &field, UInt64 size)
{
    if(size > std::numeric_limits<UInt32>::max())
        throw WriteError("a field is too long");
    getRoot()->getWrittenTypes().writeFieldName(field);
    getRoot()->getHandler().putValue(static_cast<UInt32>(size));
}

void OSBCommonElement::writeValues(WrittenField &field)
{
    BitVector const mask = field.description->getFieldMask();
    UInt64 const size = getContainer()->getBinSize(mask);
    if(!field.mayBeLeftOut || size != field.inNewOne.size())
    {
        writeFieldHeader(field, size);
        getContainer()->copyToBin(getRoot()->getHandler(), mask);
        return;
    }
    OSBScratch &values = getRoot()->getScratch();
    values.clear();
    getContainer()->copyToBin(values, mask);
    if(values.getBytes() == field.inNewOne)
        return;
    writeFieldHeader(field, size);
    getRoot()->getHandler().put(values.getBytes().data(), size);
}

void OSBCommonElement::writePointers(WrittenField &field)
{
    FieldContainer const &container = *getContainer();
    UInt32 const count = field.pointers->size(container);
    bool const pointsNowhere =
        field.isMulti ? count == 0 : field.pointers->get(container, 0) == nullptr;
    if(field.mayBeLeftOut && pointsNowhere)
        return;
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    writeFieldHeader(field, sizeof(UInt32) * (UInt64(count) + (field.isMulti ? 1 : 0)));
    if(field.isMulti)
        handler.putValue(count);
    for(UInt32 i = 0; i < count; ++i)
        handler.putValue(getRoot()->getNumber(field.pointers->get(container, i)));
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
