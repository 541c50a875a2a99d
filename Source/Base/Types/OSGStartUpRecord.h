#pragma once

/// \file
/// What the static objects of the loaded libraries made known, in the order in which they did.
///
/// The order in which a library comes up decides what is found first by name and by priority. Here
/// it can be read back, by a test or by a host that looks for a plug-in's contribution.

#include <string>
#include <vector>

#include "OSGBaseApi.h"

namespace OSG
{
enum class StartUpKind
{
    Type,            ///< of any kind, by its name
    FileType,        ///< by its first suffix
    SceneElement,    ///< element of the binary scene format, by its type name
    InitFunction,    ///< StaticInitFuncWrapper, by the name that it was given
    StateChunkClass, ///< by its name
};

struct StartUpEntry
{
    StartUpKind kind;
    std::string name;

    bool operator==(StartUpEntry const &) const = default;
};

/// Appends an entry; null counts as the empty name. Guarded by a lock.
OSG_BASE_API void record_start_up(StartUpKind kind, char const *name);
/// A copy of all entries so far.
OSG_BASE_API std::vector<StartUpEntry> start_up_record();
} // namespace OSG
