#include "OSGOSBGenericElement.h"

namespace OSG
{
OSBGenericElement::OSBGenericElement(OSBRootElement *root)
    : OSBGenericElement(root, "")
{
}

OSBGenericElement::OSBGenericElement(OSBRootElement *root, char const *exclude)
    : OSBCommonElement(root, OSGOSBHeaderVersion200)
    , _exclude(exclude)
{
}

void OSBGenericElement::read(std::string const &typeName)
{
    readBegin();
    FieldContainerType const *const type = getRoot()->getNames().findContainerType(typeName);
    UnrecordedRefPtr<FieldContainer> const container(
        type != nullptr ? type->createEmptyContainer() : TransitPtr<FieldContainer>());
    takeContainer(container);
    readFields(_exclude);
}

void OSBGenericElement::postRead() {}

void OSBGenericElement::preWrite(FieldContainer *container)
{
    preWriteFieldContainer(container, _exclude);
}

void OSBGenericElement::write()
{
    writeBegin();
    writeFields(_exclude, true);
}

OSBNodeElement::OSBNodeElement(OSBRootElement *root)
    : OSBGenericElement(root, "volume")
{
}
} // namespace OSG
