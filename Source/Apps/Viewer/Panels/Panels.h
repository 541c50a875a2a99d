#pragma once

#include <string>

#include "MenuCommand.h"
#include "Session.h"

namespace Viewer
{
/// Which panels are open.
struct OpenPanels
{
    bool help = false;
};

/// What is drawn over the scene by Dear ImGui: menus, the line at the bottom, panels, and what a
/// tool draws. To be called in a frame of Gui.
class Panels
{
  public:
    Panels(Session &session, Commands const &commands, OpenPanels &open);

    /// `scale`: the toolkit's units in a device pixel, for what a tool draws.
    void draw(float unitsPerPixel);

  private:
    void drawMenus();
    void drawBottomLine();
    void drawProgress();

    Session &_session;
    Commands const &_commands;
    OpenPanels &_open;
};

/// The band or lasso of the tool in hand, and the points of a measurement.
void draw_tool_shape(Session const &session, float unitsPerPixel);
/// The keys of commands and engines.
void draw_help(Session const &session, Commands const &commands, bool &isOpen);
} // namespace Viewer
