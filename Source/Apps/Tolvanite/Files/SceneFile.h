#pragma once

#include <string>

#include "Command.h"
#include "OSGNode.h"
#include "OSGRefCountPtr.h"

namespace Tool
{
/// Options of a command that reads one scene.
struct SceneOptions : CommonOptions
{
    std::string file;
    bool strict = false; ///< a scene that was not read completely is none
};

/// Adds --strict and the argument FILE; a command line that names none, or one that does not exist,
/// is misused.
void add_file_argument(CLI::App &command, SceneOptions &options);

using ScenePtr = OSG::UnrecordedRefPtr<OSG::Node>;

/// A scene with its volumes up to date, and the seconds that its read has taken.
struct Scene
{
    ScenePtr root;
    bool isComplete = false; ///< the read went through the whole file
    double loadSeconds = 0;
};

/// Reads the scene, with a progress bar where one is wanted. The root is null where the file gives
/// none, or not the whole of one under --strict; one line has said so by then, behind those of the
/// log. Raises std::bad_alloc.
Scene read_scene(SceneOptions const &options, Streams streams);
} // namespace Tool
