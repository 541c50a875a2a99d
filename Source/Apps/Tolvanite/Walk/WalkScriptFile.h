#pragma once

#include <string>
#include <vector>

#include "OSGWalkScript.h"

namespace Tool
{
/// Reads a script of keys from a file, or from standard input for `-`. Raises
/// CLI::ValidationError for `option` where the file cannot be read or a line is none.
std::vector<OSG::WalkScriptLine> read_walk_script(char const *option, std::string const &file);
} // namespace Tool
