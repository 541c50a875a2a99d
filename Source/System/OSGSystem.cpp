#include "OSGSystem.h"

#include <new>

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

/// A step of the end; what it does not do for want of memory stays behind.
template <class Step>
void try_to(Step step)
{
    try
    {
        step();
    }
    catch(std::bad_alloc const &)
    {
        OSG_LOG_WARNING("shutDown: out of memory, something is left behind\n");
    }
}

// Children before parents; without memory for that order, the newest before the oldest.
void terminate_types()
{
    try
    {
        std::vector<FieldContainerType *> const types =
            FieldContainerFactoryBase::the()->getTypes();
        for(auto type = types.rbegin(); type != types.rend(); ++type)
            (*type)->terminate();
    }
    catch(std::bad_alloc const &)
    {
        TypeFactory &types = TypeFactory::the();
        for(UInt32 id = types.getNumTypes(); id-- > 0;)
        {
            if(auto *const type = dynamic_cast<FieldContainerType *>(types.findType(id)))
                type->terminate();
        }
    }
}

void take_down()
{
    GlobalSystemState = SystemEnding;
    try_to([] { run_system_hooks(HookList::PreFactoryExit); });
    try_to([] { Thread::getCurrentChangeList()->commitChanges(); });
    terminate_types();
    try_to(&break_links);
    try_to([] { run_system_hooks(HookList::PostFactoryExit); });
    GlobalSystemState = SystemEnded;
}
} // namespace

bool startUp()
{
    if(GlobalSystemState == SystemRunning)
        return true;
    if(GlobalSystemState != SystemLoaded)
        return false;
    GlobalSystemState = SystemStarting;
    try
    {
        doInitLog();
        bring_types_up();
        run_system_hooks(HookList::PostFactoryInit);
    }
    catch(...)
    {
        take_down();
        throw;
    }
    GlobalSystemState = SystemRunning;
    return true;
}

void bring_up_late_types()
{
    if(GlobalSystemState == SystemRunning)
        bring_types_up();
}

bool shutDown()
{
    if(GlobalSystemState != SystemRunning)
        return false;
    take_down();
    return true;
}
} // namespace OSG
