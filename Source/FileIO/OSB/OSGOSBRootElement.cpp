#include "OSGOSBRootElement.h"

#include "OSGShownText.h"

namespace OSG
{
std::string OSBRootElement::readName()
{
    std::string name;
    _handler.getValue(name);
    if(name.find('\0') != std::string::npos)
        throw ExceptionBinaryDataHandler::ReadError("a name holds a zero byte");
    return name;
}

std::string OSBRootElement::shown(std::string const &name)
{
    constexpr std::size_t LongestShown = 100;
    return shown_text(name.substr(0, LongestShown));
}

UInt32 OSBRootElement::addContainer(FieldContainer *container)
{
    if(container == nullptr)
        return 0;
    auto const [place, isNew] =
        _numbers.try_emplace(container, static_cast<UInt32>(_containers.size()) + 1);
    if(isNew)
        _containers.push_back(container);
    return place->second;
}

OSBRootElement::FieldList const &OSBRootElement::getFields(FieldContainerType const &type)
{
    auto const [place, isNew] = _fields.try_emplace(&type);
    if(isNew)
        place->second = type.getFieldDescs();
    return place->second;
}

UInt32 OSBRootElement::getNumber(FieldContainer const *container) const
{
    auto const found = _numbers.find(container);
    return found != _numbers.end() ? found->second : 0;
}
} // namespace OSG
