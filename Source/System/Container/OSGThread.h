#pragma once

/// \file
/// What each thread has of its own: the aspect that it works on, its change list, its local flags.

#include "OSGBaseTypes.h"
#include "OSGSystemApi.h"

namespace OSG
{
class ChangeList;

/// State of the calling thread; made when the thread first asks. A new thread works on aspect 0
/// with no local flags; threads that run at once use different aspects.
class OSG_SYSTEM_API Thread
{
  public:
    static UInt32 getCurrentAspect();
    static void setCurrentAspect(UInt32 aspect);

    /// Never null. Belongs to the thread and ends with it, after the thread's own objects; that of
    /// the main thread outlives the statics of the process.
    static ChangeList *getCurrentChangeList();

    /// Flags that `create` and `shallowCopy` make new containers with: bits whose fields stay local
    /// to this aspect.
    static UInt64 getCurrentLocalFlags();
    static void setCurrentLocalFlags(UInt64 flags);
};

/// The name that hosts on Windows know it by.
using WinThreadBase = Thread;
} // namespace OSG
