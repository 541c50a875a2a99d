#pragma once

#include "Panels.h"

namespace Viewer
{
/// All commands of the viewer. The session and the flags have to outlive them.
Commands make_commands(Session &session, OpenPanels &open, std::function<void()> const &quit);
} // namespace Viewer
