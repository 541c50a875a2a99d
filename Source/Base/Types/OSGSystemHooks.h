#pragma once

/// \file
/// Functions that run at the system's start and end.
///
/// startUp runs: types resolved, prototypes made (phase SystemPre, then SystemPost), then the
/// functions of addPostFactoryInitFunction in the order in which they were given. shutDown runs the
/// functions of addPreFactoryExitFunction, releases prototypes and what factories hold, then runs
/// those of addPostFactoryExitFunction. A function runs once and is forgotten. A function that
/// returns false is reported as a warning; the others run all the same.

#include <boost/function.hpp>

#include "OSGBaseApi.h"

namespace OSG
{
using SystemHook = boost::function<bool()>;

/// Called at once where the system is up already.
OSG_BASE_API void addPostFactoryInitFunction(SystemHook const &hook);
OSG_BASE_API void addPreFactoryExitFunction(SystemHook const &hook);
OSG_BASE_API void addPostFactoryExitFunction(SystemHook const &hook);

/// The lists as startUp and shutDown see them.
enum class HookList
{
    PostFactoryInit,
    PreFactoryExit,
    PostFactoryExit
};
OSG_BASE_API void run_system_hooks(HookList list);

/// Static object that has a function called when the system starts; at once where it is up already,
/// as for a library that is loaded later.
class OSG_BASE_API StaticInitFuncWrapper
{
  public:
    /// `name` tells people what it brings up (OSGStartUpRecord.h).
    explicit StaticInitFuncWrapper(SystemHook const &hook, char const *name = "");
};
} // namespace OSG
