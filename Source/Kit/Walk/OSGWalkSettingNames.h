#pragma once

/// \file
/// The settings of a walk by their names.

#include <string>
#include <vector>

#include "OSGTolvaniteKitApi.h"
#include "OSGWASDWalkEngine.h"

namespace OSG
{
enum class WalkSettingResult : UInt8
{
    Set,
    UnknownName,
    BadValue
};

/// Calls the accessor `name` of the engine, for example `height`, with the value that the text
/// stands for. A truth is `true`, `false`, `1` or `0`, a number is written as in C or is `nan`,
/// `inf` or `-inf`, a vector is three finite numbers `x,y,z`.
OSG_TOLVANITEKIT_API WalkSettingResult set_walk_setting(WASDWalkEngine &engine,
                                                        std::string const &name,
                                                        std::string const &value);
/// The names of all settings in alphabetical order.
OSG_TOLVANITEKIT_API std::vector<std::string> walk_setting_names();
} // namespace OSG
