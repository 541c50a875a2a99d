#pragma once

#include <string>

#include "CubeOverlay.h"
#include "FilesDialog.h"
#include "MenuCommand.h"
#include "OpenPanels.h"
#include "OperationsPanel.h"
#include "SectionsPanel.h"
#include "SelectionPanel.h"
#include "Session.h"
#include "SettingsPanel.h"
#include "SideColumn.h"
#include "TreePanel.h"
#include "WalkPanel.h"

namespace Viewer
{
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
    void drawColumns();
    void drawBottomLine();
    void drawProgress();

    Session &_session;
    Commands const &_commands;
    OpenPanels &_open;
    SideColumn _left{"##left", SideColumn::Side::Left};
    SideColumn _right{"##right", SideColumn::Side::Right};
    TreePanel _tree;
    SelectionPanel _selection;
    SectionsPanel _sections;
    WalkPanel _walk;
    OperationsPanel _operations;
    SettingsPanel _settings;
    CubeOverlay _cube;
    FilesDialog _files;
    double _readBegin = 0; // when nothing was read last, by the panels' clock
};

/// The band or lasso of the tool in hand, and the points of a measurement.
void draw_tool_shape(Session const &session, float unitsPerPixel);
} // namespace Viewer
