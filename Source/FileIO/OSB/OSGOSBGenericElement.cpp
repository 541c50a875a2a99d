#include "OSGOSBGenericElement.h"

#include "OSGFieldContainerFactory.h"

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
    UnrecordedRefPtr<FieldContainer> const container(
        FieldContainerFactoryBase::the()->createContainer(typeName.c_str()));
    takeContainer(container);

    std::string name;
    std::string fieldType;
    UInt32 size = 0;
    PointerFieldIt pointers;
    while(readFieldHeader("", name, fieldType, size))
        readFieldContent(name, fieldType, size, _exclude, pointers);
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
