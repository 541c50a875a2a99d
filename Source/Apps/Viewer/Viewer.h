#pragma once

#include "ViewerOptions.h"

namespace Viewer
{
/// Opens the window and shows it until the user closes it. The result is an exit status.
int run_viewer(Tool::ViewerOptions const &options, Tool::Streams streams);
} // namespace Viewer
