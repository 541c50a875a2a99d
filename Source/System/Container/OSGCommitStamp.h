#pragma once

#include "OSGBaseTypes.h"
#include "OSGSystemApi.h"

namespace OSG
{
/// A number for a state of values that was committed, for structures that are computed from them.
/// No other call gives the same, in any thread, until 4,294,967,295 more have been given. Never 0,
/// which stands for values that were never committed.
OSG_SYSTEM_API UInt32 new_commit_stamp();
} // namespace OSG
