#include "OSGSystemHooks.h"

#include <vector>

#include "OSGLog.h"
#include "OSGStartUpRecord.h"

namespace OSG
{
namespace
{
// Made on first use and never destroyed, because static objects of any library may add to them.
std::vector<SystemHook> &hooks_of(HookList list)
{
    static std::vector<SystemHook> *const lists = new std::vector<SystemHook>[3];
    return lists[static_cast<int>(list)];
}
} // namespace

void addPostFactoryInitFunction(SystemHook const &hook)
{
    if(GlobalSystemState == SystemRunning)
        hook();
    else
        hooks_of(HookList::PostFactoryInit).push_back(hook);
}

void addPreFactoryExitFunction(SystemHook const &hook)
{
    hooks_of(HookList::PreFactoryExit).push_back(hook);
}

void addPostFactoryExitFunction(SystemHook const &hook)
{
    hooks_of(HookList::PostFactoryExit).push_back(hook);
}

void run_system_hooks(HookList list)
{
    // An index, since a hook may add another hook, which invalidates iterators.
    for(std::size_t i = 0; i < hooks_of(list).size(); ++i)
    {
        SystemHook const hook = hooks_of(list)[i];
        if(!hook())
            OSG_LOG_WARNING("A start or exit function failed\n");
    }
    std::vector<SystemHook>().swap(hooks_of(list));
}

StaticInitFuncWrapper::StaticInitFuncWrapper(SystemHook const &hook, char const *name)
{
    record_start_up(StartUpKind::InitFunction, name);
    addPostFactoryInitFunction(hook);
}
} // namespace OSG
