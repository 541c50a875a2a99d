#pragma once

#include <optional>
#include <string>

#include "OSGWheelSteps.h"
#include "Session.h"

namespace Viewer
{
/// What was clicked last, what lies under it, what is selected, what may be, and what was
/// measured.
class SelectionPanel
{
  public:
    /// The session has to outlive the panel.
    explicit SelectionPanel(Session &session)
        : _session(session)
    {
    }

    void draw();

  private:
    void drawKinds();
    void drawSelected();
    void drawClicked(OSG::PickResult const &clicked);
    void drawUnderPointer();
    void drawMeasured();

    Session &_session;
    OSG::NodePath _path; // that of _address
    std::string _address;
    OSG::WheelSteps _wheel; // over what lies under the click
};
} // namespace Viewer
