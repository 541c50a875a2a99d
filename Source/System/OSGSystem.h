#pragma once

/// \file
/// Start and end of the scene graph.

#include "OSGSystemApi.h"

namespace OSG
{
/// Brings the types of all loaded libraries up, in phases: descriptions and prototypes, init
/// functions in phase SystemPre, then all in SystemPost, then the functions given to
/// addPostFactoryInitFunction. A second call does nothing. False after shutDown: the system does
/// not start twice in a process. Without memory it is taken down again, and std::bad_alloc passes
/// on; that was the one start then.
OSG_SYSTEM_API bool startUp();

/// Ends the scene graph: exit functions, links of what is left, prototypes, post-factory exit
/// functions. Objects that the host still holds stay valid but point to nothing. False where the
/// system is not up.
OSG_SYSTEM_API bool shutDown();

/// Brings up the types of a library that was loaded after startUp; nothing before it.
OSG_SYSTEM_API void bring_up_late_types();
} // namespace OSG
