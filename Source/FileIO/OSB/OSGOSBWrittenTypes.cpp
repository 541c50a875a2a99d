#include "OSGOSBWrittenTypes.h"

#include <limits>

#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"

namespace OSG
{
OSBWrittenTypes::OSBWrittenTypes(ExceptionBinaryDataHandler &handler)
    : _handler(handler)
    , _version(OSBFormat::NamesInFull)
{
}
OSBWrittenTypes::~OSBWrittenTypes() = default;

bool OSBWrittenTypes::leavesOut() const { return _version != OSBFormat::NamesInFull; }

OSBWrittenTypes::Type &OSBWrittenTypes::get(FieldContainerType const &type)
{
    if(type.getId() >= _places.size())
        _places.resize(type.getId() + 1, 0);
    UInt32 &place = _places[type.getId()];
    if(place == 0)
    {
        Type written;
        describe(type, written);
        _types.push_back(std::move(written));
        place = static_cast<UInt32>(_types.size());
    }
    return _types[place - 1];
}

// The new container is not made by the prototype, because the host may have changed the prototype
// and the reading process has another one.
void OSBWrittenTypes::describe(FieldContainerType const &type, Type &written) const
{
    written.creator = OSBElementFactory::the()->findCreator(type.getName());
    UnrecordedRefPtr<FieldContainer> const newOne(leavesOut() ? type.createEmptyContainer()
                                                              : TransitPtr<FieldContainer>());
    OSBScratch values;
    for(FieldDescriptionBase const *description : type.getFieldDescs())
    {
        FieldType const &fieldType = description->getFieldType();
        bool const isMulti = fieldType.getCardinality() == FieldCardinality::Multi;
        Field field{description, description->getPointers(), isMulti,
                    fieldType.getClass() == FieldClass::Pointer};
        if(newOne != nullptr && field.pointers != nullptr)
        {
            field.mayBeLeftOut = isMulti ? field.pointers->size(*newOne) == 0
                                         : field.pointers->get(*newOne, 0) == nullptr;
        }
        else if(newOne != nullptr)
        {
            values.clear();
            newOne->copyToBin(values, description->getFieldMask());
            field.inNewOne = values.getBytes();
            field.mayBeLeftOut = true;
        }
        written.fields.push_back(std::move(field));
    }
}

UInt16 OSBWrittenTypes::nextNumber(UInt32 &count) const
{
    if(count == std::numeric_limits<UInt16>::max())
        throw ExceptionBinaryDataHandler::WriteError("there are too many types and fields");
    return static_cast<UInt16>(++count);
}

void OSBWrittenTypes::writeTypeName(FieldContainerType const &type)
{
    if(_version == OSBFormat::NamesInFull)
    {
        _handler.putValue(type.getName());
        return;
    }
    Type &written = get(type);
    bool const isNew = written.number == 0;
    if(isNew)
        written.number = nextNumber(_numTypeNames);
    _handler.putValue(written.number);
    if(isNew)
        _handler.putValue(type.getName());
}

void OSBWrittenTypes::writeFieldName(Field &field)
{
    bool const inFull = _version == OSBFormat::NamesInFull;
    bool const isNew = field.number == 0;
    if(!inFull && isNew)
        field.number = nextNumber(_numFieldNames);
    if(!inFull)
        _handler.putValue(field.number);
    if(inFull || isNew)
    {
        _handler.putValue(field.description->getName());
        _handler.putValue(field.description->getFieldType().getName());
    }
}

void OSBWrittenTypes::writeEnd()
{
    if(_version == OSBFormat::NamesInFull)
        _handler.putValue(std::string());
    else
        _handler.putValue(UInt16(0));
}
} // namespace OSG
