#pragma once

/// \file
/// How the choices of a copy are named.

#include <string>
#include <vector>

#include "OSGBaseTypes.h"

namespace OSG
{
class ReflexiveContainerType;

using ContainerTypeList = std::vector<ReflexiveContainerType const *>;
/// Ids as of ReflexiveContainerType::getGroupId.
using ContainerGroupList = std::vector<UInt32>;
using NameList = std::vector<std::string>;
} // namespace OSG
