#pragma once

/// \file
/// Functions that run at the system's start and end.
///
/// startUp resolves the types, makes the prototypes (phase SystemPre, then SystemPost), and then
/// calls the functions of addPostFactoryInitFunction in the order in which they were added.
/// shutDown calls the functions of addPreFactoryExitFunction, releases the prototypes and what the
/// factories hold, and then calls the functions of addPostFactoryExitFunction. Each function is
/// called once. If a function returns false, a warning is logged and the other functions are still
/// called.

#include <boost/function.hpp>

#include "OSGBaseApi.h"

namespace OSG
{
using SystemHook = boost::function<bool()>;

/// Calls `hook` at once where the system is running already.
OSG_BASE_API void addPostFactoryInitFunction(SystemHook const &hook);
OSG_BASE_API void addPreFactoryExitFunction(SystemHook const &hook);
OSG_BASE_API void addPostFactoryExitFunction(SystemHook const &hook);

/// The lists that startUp and shutDown work through.
enum class HookList
{
    PostFactoryInit,
    PreFactoryExit,
    PostFactoryExit
};
OSG_BASE_API void run_system_hooks(HookList list);

/// A static object whose function is called when the system starts. Where the system is running
/// already, as for a library that is loaded later, the function is called at once.
class OSG_BASE_API StaticInitFuncWrapper
{
  public:
    /// `name` says what the function initialises; it appears in the start-up record.
    explicit StaticInitFuncWrapper(SystemHook const &hook, char const *name = "");
};
} // namespace OSG
