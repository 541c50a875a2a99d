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
enum SystemState
{
    Loaded = 0,
    Starting = 1,
    Running = 2,
    Ending = 3,
    Ended = 4
};

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
    if(GlobalSystemState == Running)
        return true;
    if(GlobalSystemState != Loaded)
        return false;
    GlobalSystemState = Starting;
    doInitLog();
    bring_types_up();
    runSystemHooks(HookList::PostFactoryInit);
    GlobalSystemState = Running;
    return true;
}

void bringUpLateTypes()
{
    if(GlobalSystemState == Running)
        bring_types_up();
}

bool shutDown()
{
    if(GlobalSystemState != Running)
        return false;
    GlobalSystemState = Ending;
    runSystemHooks(HookList::PreFactoryExit);
    Thread::getCurrentChangeList()->commitChanges();
    std::vector<FieldContainerType *> const types = FieldContainerFactoryBase::the()->getTypes();
    for(auto type = types.rbegin(); type != types.rend(); ++type)
        (*type)->terminate();
    break_links();
    runSystemHooks(HookList::PostFactoryExit);
    GlobalSystemState = Ended;
    return true;
}
} // namespace OSG
