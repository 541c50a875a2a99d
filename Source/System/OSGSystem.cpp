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

// Containers that are left may keep one another alive in cycles.
void break_links()
{
    FieldContainerFactoryBase *const factory = FieldContainerFactoryBase::the();
    for(UInt32 id : factory->getIds())
    {
        // It may have ended together with one before it.
        UnrecordedRefPtr<FieldContainer> const container(factory->getContainer(id));
        if(container != nullptr)
            container->resolveLinks();
    }
    Thread::getCurrentChangeList()->commitChanges();
}

/// Runs one step of shutDown. Where it runs out of memory the rest of the step is left out.
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

// Types end before their parents. Finding that order takes memory; without it the newest type ends
// first, which is nearly the same order.
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
