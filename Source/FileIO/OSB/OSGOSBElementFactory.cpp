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
    recordStartUp(StartUpKind::SceneElement, typeName.c_str());
    return _creators.try_emplace(typeName, std::move(owned)).second;
}

std::unique_ptr<OSBElementBase> OSBElementFactory::createElement(std::string const &typeName,
                                                                 OSBRootElement *root) const
{
    auto const found = _creators.find(typeName);
    if(found != _creators.end())
        return std::unique_ptr<OSBElementBase>(found->second->createElement(root));
    FieldContainerType const *const type =
        FieldContainerFactoryBase::the()->findType(typeName.c_str());
    if(type == nullptr || type->isAbstract())
        return nullptr;
    return std::make_unique<OSBGenericElement>(root);
}
} // namespace OSG
