#pragma once

#include "Session.h"

namespace Viewer
{
/// The planes that cut the scene open.
class SectionsPanel
{
  public:
    /// The session has to outlive the panel.
    explicit SectionsPanel(Session &session)
        : _session(session)
    {
    }

    void draw();

  private:
    bool drawAdding();
    bool drawCut(std::size_t number);

    Session &_session;
};
} // namespace Viewer
