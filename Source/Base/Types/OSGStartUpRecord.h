#pragma once

/// \file
/// Lists what the static objects of the loaded libraries have registered, in order.
///
/// The order decides what is found first by name and by priority. A test can read it back, and so
/// can a host that looks for what a plug-in has added.

#include <string>
#include <vector>

#include "OSGBaseApi.h"

namespace OSG
{
enum class StartUpKind
{
    Type,            ///< run-time type, by its name
    FileType,        ///< file type, by its first suffix
    SceneElement,    ///< element of the binary scene format, by its type name
    InitFunction,    ///< StaticInitFuncWrapper, by the name that it was given
    StateChunkClass, ///< kind of state chunk, by its name
};

struct StartUpEntry
{
    StartUpKind kind;
    std::string name;

    bool operator==(StartUpEntry const &) const = default;
};

/// Appends an entry. A null name counts as an empty one. Guarded by a lock.
OSG_BASE_API void record_start_up(StartUpKind kind, char const *name);
/// A copy of all entries so far.
OSG_BASE_API std::vector<StartUpEntry> start_up_record();
} // namespace OSG
