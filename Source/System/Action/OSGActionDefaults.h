#pragma once

#include <mutex>

#include "OSGAction.h"

namespace OSG
{
/// The functions that actions of a class begin with. A type gets the functions of the nearest type,
/// itself or above it, that has any. Made when first asked for, dropped when the system shuts down.
class OSG_SYSTEM_API ActionDefaults
{
  public:
    /// Functions of one kind and their promises, by type id.
    struct Table
    {
        Action::FunctorStore functors;
        Action::PromiseStore promises;
    };

    constexpr ActionDefaults() = default;
    ActionDefaults(ActionDefaults const &) = delete;
    ActionDefaults &operator=(ActionDefaults const &) = delete;

    void registerEnter(FieldContainerType const &type, Action::Functor const &function,
                       Action::HandlerPromise promise);
    void registerLeave(FieldContainerType const &type, Action::Functor const &function,
                       Action::HandlerPromise promise);

    /// For every type that there is now.
    Table &resolvedEnter();
    Table &resolvedLeave();

  private:
    struct Tables;

    Tables &tables();
    Tables &resolved();

    std::mutex _guard; // threads may make their first actions at once
    Tables *_tables = nullptr;
};
} // namespace OSG
