#pragma once

#include <string>

#include "Command.h"
#include "OSGNode.h"
#include "OSGRefCountPtr.h"

namespace Tool
{
/// The options of a command that reads one scene.
struct SceneOptions : CommonOptions
{
    std::string file;
    bool strict = false; ///< refuse a scene that was not read completely
};

/// Adds --strict and the argument FILE. The command line is wrong without FILE, or if there is no
/// such file.
void add_file_argument(CLI::App &command, SceneOptions &options);

using ScenePtr = OSG::UnrecordedRefPtr<OSG::Node>;

/// A scene with up-to-date volumes, and the seconds that its read took.
struct Scene
{
    ScenePtr root;
    bool isComplete = false; ///< the whole file was read
    double loadSeconds = 0;
};

/// Reads the scene, with a progress bar if the options allow it. The root is null where the file
/// gives no scene, or with --strict an incomplete one. A line about this has then been printed,
/// after those of the log. Raises std::bad_alloc.
Scene read_scene(SceneOptions const &options, Streams streams);
} // namespace Tool
