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
    readBegin();
    UnrecordedRefPtr<GeoToEntityAttachment> const table(GeoToEntityAttachment::create());
    takeContainer(table);

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
    writeBegin();
    writeFields("", true);
}
} // namespace OSG
