#pragma once

#include <string>
#include <vector>

namespace Viewer
{
struct HelpLine
{
    char const *keys;
    char const *does;
};

/// What buttons and keys do while the engine of that name (see OSG::engine_names) moves the camera.
/// Empty for another name.
std::vector<HelpLine> help_of_engine(std::string const &name);
/// What the pointer does with each tool.
std::vector<HelpLine> help_of_tools();
} // namespace Viewer
