#include "OSGSystem.h"

#include "OSGChangeList.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"
#include "OSGLog.h"
#include "OSGSystemHooks.h"
#include "OSGThread.h"

namespace OSG
{
namespace
{
void bring_types_up()
{
    TypeFactory::the().resolve();
    std::vector<FieldContainerType *> const types = FieldContainerFactoryBase::the()->getTypes();
    for(FieldContainerType *type : types)
        type->describeFields();
    for(FieldContainerType *type : types)
        type->makePrototype();
    for(FieldContainerType *type : types)
        type->initialize(TypeBase::SystemPre);
    for(FieldContainerType *type : types)
        type->initialize(TypeBase::SystemPost);
}

// What cycles there are among the containers that are left.
void break_links()
{
    FieldContainerFactoryBase *const factory = FieldContainerFactoryBase::the();
    for(UInt32 id : factory->getIds())
    {
        // An earlier one may have taken this one with it.
        UnrecordedRefPtr<FieldContainer> const container(factory->getContainer(id));
        if(container != nullptr)
            container->resolveLinks();
    }
    Thread::getCurrentChangeList()->commitChanges();
}
} // namespace

bool startUp()
{
    if(GlobalSystemState == SystemRunning)
        return true;
    if(GlobalSystemState != SystemLoaded)
        return false;
    GlobalSystemState = SystemStarting;
    doInitLog();
    bring_types_up();
    runSystemHooks(HookList::PostFactoryInit);
    GlobalSystemState = SystemRunning;
    return true;
}

void bringUpLateTypes()
{
    if(GlobalSystemState == SystemRunning)
        bring_types_up();
}

bool shutDown()
{
    if(GlobalSystemState != SystemRunning)
        return false;
    GlobalSystemState = SystemEnding;
    runSystemHooks(HookList::PreFactoryExit);
    Thread::getCurrentChangeList()->commitChanges();
    std::vector<FieldContainerType *> const types = FieldContainerFactoryBase::the()->getTypes();
    for(auto type = types.rbegin(); type != types.rend(); ++type)
        (*type)->terminate();
    break_links();
    runSystemHooks(HookList::PostFactoryExit);
    GlobalSystemState = SystemEnded;
    return true;
}
} // namespace OSG
