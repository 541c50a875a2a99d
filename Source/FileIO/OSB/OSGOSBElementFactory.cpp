#include "OSGOSBElementFactory.h"

#include "OSGFieldContainerFactory.h"
#include "OSGOSBGenericElement.h"
#include "OSGStartUpRecord.h"

namespace OSG
{
OSBElementCreatorBase::~OSBElementCreatorBase() = default;

OSBElementFactory *OSBElementFactory::the()
{
    static OSBElementFactory *const factory = new OSBElementFactory;
    return factory;
}

template <>
OSBElementFactory *SingletonHolder<OSBElementFactory>::the()
{
    return OSBElementFactory::the();
}

bool OSBElementFactory::registerElement(std::string const &typeName, OSBElementCreatorBase *creator)
{
    std::unique_ptr<OSBElementCreatorBase> owned(creator);
    record_start_up(StartUpKind::SceneElement, typeName.c_str());
    return _creators.try_emplace(typeName, std::move(owned)).second;
}

OSBElementCreatorBase const *OSBElementFactory::findCreator(std::string const &typeName) const
{
    static OSBElementCreator<OSBGenericElement> const *const generic =
        new OSBElementCreator<OSBGenericElement>;
    auto const found = _creators.find(typeName);
    if(found != _creators.end())
        return found->second.get();
    FieldContainerType const *const type =
        FieldContainerFactoryBase::the()->findType(typeName.c_str());
    return type != nullptr && !type->isAbstract() ? generic : nullptr;
}

std::unique_ptr<OSBElementBase> OSBElementFactory::createElement(std::string const &typeName,
                                                                 OSBRootElement *root) const
{
    OSBElementCreatorBase const *const creator = findCreator(typeName);
    return std::unique_ptr<OSBElementBase>(creator != nullptr ? creator->createElement(root)
                                                              : nullptr);
}
} // namespace OSG
