#pragma once

/// \file
/// How rays pass cores that move what is below them.

#include "OSGFieldContainerType.h"
#include "OSGGroupApi.h"

namespace OSG
{
/// Has rays carried through the matrix that cores of `type`, and of types derived from it,
/// accumulate. For init functions, in phase SystemPost. What lies below a matrix without an inverse
/// is not hit.
OSG_GROUP_API void register_intersect_space(FieldContainerType const &type);
} // namespace OSG
