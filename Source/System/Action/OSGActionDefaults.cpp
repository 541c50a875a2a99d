#include "OSGActionDefaults.h"

#include "OSGSystemHooks.h"

namespace OSG
{
/// What was registered, and the tables in which derived types have got the functions of their
/// parents.
struct ActionDefaults::Tables
{
    Table registeredEnter;
    Table registeredLeave;
    Table enter;
    Table leave;
    UInt32 typesSeen = 0; // 0 asks for a new resolution
};

namespace
{
using Table = ActionDefaults::Table;

void put(Table &table, FieldContainerType const &type, Action::Functor const &function,
         Action::HandlerPromise promise)
{
    put_functor(table.functors, type, function, Action::Functor());
    if(type.getId() >= table.promises.size())
        table.promises.resize(type.getId() + 1, Action::HandlerPromise::Nothing);
    table.promises[type.getId()] = promise;
}

bool has(Table const &table, UInt32 id)
{
    return id < table.functors.size() && !table.functors[id].empty();
}

void inherit(Table &table, UInt32 id, Table const &registered, UInt32 from)
{
    if(!has(registered, from))
        return;
    table.functors[id] = registered.functors[from];
    table.promises[id] = registered.promises[from];
}

void reset(Table &table, UInt32 types, Action::Functor const &passing)
{
    table.functors.assign(types, passing);
    table.promises.assign(types, Action::HandlerPromise::Nothing);
}
} // namespace

ActionDefaults::Tables &ActionDefaults::tables()
{
    if(_tables == nullptr)
    {
        _tables = new Tables;
        addPostFactoryExitFunction(
            [this]
            {
                delete _tables;
                _tables = nullptr;
                return true;
            });
    }
    return *_tables;
}

void ActionDefaults::registerEnter(FieldContainerType const &type, Action::Functor const &function,
                                   Action::HandlerPromise promise)
{
    put(tables().registeredEnter, type, function, promise);
    _tables->typesSeen = 0;
}

void ActionDefaults::registerLeave(FieldContainerType const &type, Action::Functor const &function,
                                   Action::HandlerPromise promise)
{
    put(tables().registeredLeave, type, function, promise);
    _tables->typesSeen = 0;
}

// Enter and leave functions belong together: a type that has one of its own inherits neither.
ActionDefaults::Tables &ActionDefaults::resolved()
{
    std::lock_guard const hold(_guard);
    Tables &all = tables();
    UInt32 const types = TypeFactory::the().getNumTypes();
    if(all.typesSeen == types)
        return all;
    reset(all.enter, types, &Action::_defaultEnterFunction);
    reset(all.leave, types, &Action::_defaultLeaveFunction);
    for(UInt32 id = 0; id < types; ++id)
    {
        TypeBase const *type = TypeFactory::the().findType(id);
        while(type != nullptr && !has(all.registeredEnter, type->getId()) &&
              !has(all.registeredLeave, type->getId()))
            type = type->getParent();
        if(type == nullptr)
            continue;
        inherit(all.enter, id, all.registeredEnter, type->getId());
        inherit(all.leave, id, all.registeredLeave, type->getId());
    }
    all.typesSeen = types;
    return all;
}

ActionDefaults::Table &ActionDefaults::resolvedEnter() { return resolved().enter; }
ActionDefaults::Table &ActionDefaults::resolvedLeave() { return resolved().leave; }
} // namespace OSG
