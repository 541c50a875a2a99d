#pragma once

#include "FileChooser.h"

namespace Viewer
{
/// Which panels are open, and what the dialog for files asks.
struct OpenPanels
{
    bool tree = true;
    bool selection = true;
    bool sections = false;
    bool settings = false;
    bool walk = false;
    bool operations = false;
    bool cube = true;
    bool help = false;
    FileChooser files = {};
};
} // namespace Viewer
