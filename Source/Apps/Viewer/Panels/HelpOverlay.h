#pragma once

#include "MenuCommand.h"
#include "Session.h"

namespace Viewer
{
/// The keys of the commands, of the engine in hand and of the tools, over the view.
void draw_help(Session const &session, Commands const &commands, bool &isOpen);
} // namespace Viewer
