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

    /// `left` and `right`: where the view ends at its sides, and `unitsPerPixel`: device pixels,
    /// all in the toolkit's units. The axes are left out in a view that is narrow.
    void draw(float left, float right, float unitsPerPixel);

  private:
    void drawCube(OSG::ViewCube const &cube, std::optional<OSG::CubePart> const &part,
                  float unitsPerPixel);
    void drawTriad(OSG::Pnt2f const &middle, float length, float unitsPerPixel) const;

    Session &_session;
};
} // namespace Viewer
