#pragma once

/// \file
/// Takes rays through cores that transform their subtree.

#include "OSGFieldContainerType.h"
#include "OSGGroupApi.h"

namespace OSG
{
/// Makes IntersectAction transform its ray by the matrix that cores of `type`, and of types derived
/// from it, accumulate. To be called by init functions in phase SystemPost. Nothing below a
/// singular matrix is hit.
OSG_GROUP_API void register_intersect_space(FieldContainerType const &type);
} // namespace OSG
