#include "OSGOSBRootElement.h"

namespace OSG
{
OSBRootElement::OSBRootElement(ExceptionBinaryDataHandler &handler)
    : _handler(handler)
    , _names(handler)
    , _types(handler)
{
}
OSBRootElement::~OSBRootElement() = default;

void OSBRootElement::setVersion(UInt16 version)
{
    _names.setVersion(version);
    _types.setVersion(version);
}

UInt32 OSBRootElement::addContainer(FieldContainer *container)
{
    UInt32 number = 0;
    if(container != nullptr)
        _numbers.add(container, number);
    return number;
}

UInt32 OSBRootElement::getNumber(FieldContainer const *container) const
{
    return container != nullptr ? _numbers.find(container) : 0;
}
} // namespace OSG
