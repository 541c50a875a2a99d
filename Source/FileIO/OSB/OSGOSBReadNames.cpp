#include "OSGOSBReadNames.h"

#include "OSGFieldContainerFactory.h"
#include "OSGOSBElementFactory.h"
#include "OSGOSBFormat.h"
#include "OSGShownText.h"

namespace OSG
{
namespace
{
using ReadError = ExceptionBinaryDataHandler::ReadError;

constexpr std::size_t LongestShown = 100; // of a name in the log
} // namespace

OSBReadNames::OSBReadNames(ExceptionBinaryDataHandler &handler)
    : _handler(handler)
    , _version(OSBFormat::NamesInFull)
{
}
OSBReadNames::~OSBReadNames() = default;

bool OSBReadNames::namesStandInFull() const { return _version == OSBFormat::NamesInFull; }

std::string OSBReadNames::readName()
{
    std::string name;
    _handler.getValue(name);
    if(name.find('\0') != std::string::npos)
        throw ReadError("a name holds a zero byte");
    return name;
}

UInt32 OSBReadNames::readNumber(std::size_t numKnown, bool &isNew)
{
    UInt16 number = 0;
    _handler.getValue(number);
    if(number > numKnown + 1)
        throw ReadError("the number of a name is beyond the next new one");
    isNew = number == numKnown + 1;
    return number;
}

UInt32 OSBReadNames::readType()
{
    UInt32 const number = readTypeNumber();
    _current = number != End ? &getType(number) : nullptr;
    return number;
}

UInt32 OSBReadNames::readTypeNumber()
{
    if(namesStandInFull())
    {
        std::string name = readName();
        if(name.empty())
            return End;
        auto const known = _typeNumbers.find(name);
        if(known != _typeNumbers.end())
            return known->second;
        std::string key = name;
        return _typeNumbers.emplace(std::move(key), addType(std::move(name))).first->second;
    }
    bool isNew = false;
    UInt32 const number = readNumber(_types.size(), isNew);
    return isNew ? addType(readName()) : number;
}

UInt32 OSBReadNames::readField(std::string const &endMarker)
{
    if(namesStandInFull())
    {
        std::string name = readName();
        if(name.empty() || name == endMarker)
            return End;
        std::string typeName = readName();
        std::string key = name + '\0' + typeName;
        auto const known = _fieldNumbers.find(key);
        if(known != _fieldNumbers.end())
            return known->second;
        UInt32 const number = addField(std::move(name), std::move(typeName));
        return _fieldNumbers.emplace(std::move(key), number).first->second;
    }
    bool isNew = false;
    UInt32 const number = readNumber(_fields.size(), isNew);
    if(!isNew)
        return number;
    std::string name = readName();
    return addField(std::move(name), readName());
}

UInt32 OSBReadNames::addType(std::string name)
{
    OSBElementCreatorBase const *const creator = OSBElementFactory::the()->findCreator(name);
    FieldContainerType const *const type = FieldContainerFactoryBase::the()->findType(name.c_str());
    _types.push_back({std::move(name), creator, type});
    return static_cast<UInt32>(_types.size());
}

UInt32 OSBReadNames::addField(std::string name, std::string typeName)
{
    _fields.push_back({std::move(name), std::move(typeName)});
    return static_cast<UInt32>(_fields.size());
}

FieldDescriptionBase const *OSBReadNames::findField(UInt32 number, FieldContainerType const &type)
{
    Field &field = getField(number);
    if(field.askedBy == &type)
        return field.meant;
    FieldDescriptionBase const *const found = type.getFieldDesc(field.name.c_str());
    field.meant =
        found != nullptr && field.typeName == found->getFieldType().getCName() ? found : nullptr;
    field.askedBy = &type;
    return field.meant;
}

FieldContainerType const *OSBReadNames::findContainerType(std::string const &name)
{
    if(_current != nullptr && _current->name == name)
        return _current->containerType;
    return FieldContainerFactoryBase::the()->findType(name.c_str());
}

std::string OSBReadNames::shown(std::string const &name)
{
    return shown_text(name.substr(0, LongestShown));
}
} // namespace OSG
