#pragma once

#include <string>

#include "OSGNode.h"
#include "Tool.h"

namespace Tool
{
/// Whether a scene can be written in the format of this suffix.
bool is_written(std::string const &suffix);

/// Writes a scene in the format of the target's suffix, with its images beside it: all files or
/// none, see replace_file. Pictures that the scene was read from are not written again. A picture
/// whose format nobody writes is named in a line and left out. Warns of what the files do not keep.
/// Empty on success, otherwise the reason of the failure.
std::string write_scene(OSG::Node *root, std::string const &target, Streams streams);
} // namespace Tool
