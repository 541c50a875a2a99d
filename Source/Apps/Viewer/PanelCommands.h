#pragma once

#include "MenuCommand.h"
#include "OpenPanels.h"
#include "Session.h"

namespace Viewer
{
// The session and the flags have to outlive the commands.

/// Opening and saving.
void add_dialog_commands(Commands &commands, Session &session, OpenPanels &open);
/// What is drawn of the scene.
void add_show_commands(Commands &commands, Session &session);
void add_style_commands(Commands &commands, Session &session);
/// Opening and closing panels.
void add_panel_commands(Commands &commands, OpenPanels &open);
} // namespace Viewer
