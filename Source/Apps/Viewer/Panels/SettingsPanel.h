#pragma once

#include "Session.h"

namespace Viewer
{
/// What the viewer remembers from one start to the next, and how the scene is drawn.
class SettingsPanel
{
  public:
    /// The session has to outlive the panel.
    explicit SettingsPanel(Session &session)
        : _session(session)
    {
    }

    void draw();

  private:
    bool drawColors();
    bool drawUpward();
    bool drawStyle();
    bool drawMoves();
    void drawSamples();

    Session &_session;
};
} // namespace Viewer
