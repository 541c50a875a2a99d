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
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    UInt8 kind = 0;
    UInt16 version = 0;
    handler.getValue(kind);
    handler.getValue(version);
    setVersion(version);
    UnrecordedRefPtr<FieldContainer> const container(
        FieldContainerFactoryBase::the()->createContainer(typeName.c_str()));
    if(container == nullptr)
        throw ExceptionBinaryDataHandler::ReadError("a container could not be made");
    setContainer(container);

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
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    handler.putValue(getFCPtrType(getContainer()));
    handler.putValue(getVersion());
    writeFields(_exclude, true);
}

OSBNodeElement::OSBNodeElement(OSBRootElement *root)
    : OSBGenericElement(root, "volume")
{
}
} // namespace OSG
