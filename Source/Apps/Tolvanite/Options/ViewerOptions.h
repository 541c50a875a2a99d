#pragma once

#include <string>

#include "Arguments.h"
#include "Command.h"

namespace Tool
{
/// What the viewer is started with.
struct ViewerOptions : CommonOptions
{
    std::string file; ///< empty for none
    std::string size = "1280x720";
    std::string engine; ///< empty for that of the settings
    std::string play;
    std::string report;
    std::string screenshot;
    bool exit = false;
};

/// Adds the options and the argument FILE. The command line is wrong if a file to be read is not
/// there, if no engine has that name, if the size is none or if the screenshot is no PNG file.
void add_viewer_options(CLI::App &command, ViewerOptions &options);

/// The size of the window in pixels.
Pair window_size(ViewerOptions const &options);
} // namespace Tool
