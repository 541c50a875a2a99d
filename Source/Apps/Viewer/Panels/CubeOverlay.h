#pragma once

#include "OSGViewCube.h"
#include "Session.h"

namespace Viewer
{
/// The cube that turns the view, and the axes of the scene beside it, at the right top of the view.
class CubeOverlay
{
  public:
    /// The session has to outlive the overlay.
    explicit CubeOverlay(Session &session)
        : _session(session)
    {
    }

    /// `right`: where the view ends at its right, and `unitsPerPixel`: device pixels, both in the
    /// toolkit's units.
    void draw(float right, float unitsPerPixel);

  private:
    void drawCube(OSG::ViewCube const &cube, float unitsPerPixel);
    void drawTriad(OSG::Pnt2f const &middle, float length, float unitsPerPixel) const;

    Session &_session;
};
} // namespace Viewer
