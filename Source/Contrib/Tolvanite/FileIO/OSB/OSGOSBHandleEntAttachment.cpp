#include "OSGOSBHandleEntAttachment.h"

#include <vector>

#include "OSGGeoToEntityAttachment.h"
#include "OSGLog.h"

namespace OSG
{
OSBHandleEntAttachment::OSBHandleEntAttachment(OSBRootElement *root)
    : OSBCommonElement(root, OSGOSBHeaderVersion200)
{
}

OSBHandleEntAttachment::~OSBHandleEntAttachment() = default;

void OSBHandleEntAttachment::read(std::string const &)
{
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    UInt8 pointerType = 0;
    UInt16 version = 0;
    handler.get(&pointerType, sizeof(pointerType));
    handler.getValue(version);
    setVersion(version);
    UnrecordedRefPtr<GeoToEntityAttachment> const table(GeoToEntityAttachment::create());
    if(table == nullptr)
        throw ExceptionBinaryDataHandler::ReadError("a container could not be made");
    setContainer(table);

    std::string name;
    std::string typeName;
    UInt32 size = 0;
    PointerFieldIt pointers;
    while(readFieldHeader("", name, typeName, size))
    {
        if(name == "Geo")
            appendWidened(*table->editMFGeo());
        else if(name == "Ent")
            appendWidened(*table->editMFEnt());
        else
            readFieldContent(name, typeName, size, "", pointers);
    }
}

void OSBHandleEntAttachment::appendWidened(MField<UInt64> &values)
{
    UInt32 count = 0;
    getRoot()->getHandler().getValue(count);
    std::vector<UInt32, MemAllocator<UInt32>> narrow;
    getRoot()->getHandler().appendValues(narrow, count);
    values.insert(values.end(), narrow.begin(), narrow.end());
}

void OSBHandleEntAttachment::postRead() {}

void OSBHandleEntAttachment::preWrite(FieldContainer *container)
{
    preWriteFieldContainer(container, "");
}

void OSBHandleEntAttachment::write()
{
    if(getContainer() == nullptr)
    {
        OSG_LOG_WARNING("OSBHandleEntAttachment::write: Attempt to write nullptr.\n");
        return;
    }
    ExceptionBinaryDataHandler &handler = getRoot()->getHandler();
    UInt8 const pointerType = getFCPtrType(getContainer());
    handler.put(&pointerType, sizeof(pointerType));
    handler.putValue(getVersion());
    writeFields("", true);
}
} // namespace OSG
