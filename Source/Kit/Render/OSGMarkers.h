#pragma once

#include <utility>
#include <vector>

#include "OSGColor.h"
#include "OSGGeometry.h"
#include "OSGNode.h"
#include "OSGSimpleMaterial.h"
#include "OSGTolvaniteKitApi.h"

namespace OSG
{
/// Points and lines that a host shows over a scene, such as those of a measurement. A point is a
/// disc that keeps its size in pixels, however near it is and in whatever projection.
///
///     view.setOverlay(markers.getNode());      // hidden behind what lies before them
///     view.setOverlayOnTop(markers.getNode()); // or seen through everything
///
/// In the overlays of a SceneView they are true to the pixel, far from the origin as well, as far
/// as the numbers of the view and of the points are; in other viewports as ConstantSizeTransform
/// is. Each change is an edit that the host commits.
class OSG_TOLVANITEKIT_API Markers
{
  public:
    static constexpr Real32 DefaultPixels = 9;

    Markers();
    ~Markers();
    Markers(Markers const &) = delete;
    Markers &operator=(Markers const &) = delete;

    /// Holds all of them, in the coordinates of the scene's root. No transform may stand above it.
    Node *getNode() const { return _root; }

    /// A disc of that many pixels from side to side. A point that is not finite, and a size that is
    /// not above 0, is left out with a warning.
    void addPoint(Pnt3f const &point, Color3f const &color, Real32 pixels = DefaultPixels);
    /// A line of one pixel. One with an end that is not finite is left out with a warning.
    void addLine(Pnt3f const &from, Pnt3f const &to, Color3f const &color);
    void clear();
    /// Number of points and lines.
    std::size_t size() const { return _root->getNChildren(); }

  private:
    Material *materialOf(Color3f const &color);
    Geometry *ballOf(Real32 pixels, Color3f const &color);
    void add(Pnt3f const &place, Node *node);

    struct Ball
    {
        Real32 pixels;
        Color3f color;
        UnrecordedRefPtr<Geometry> geometry;
    };

    UnrecordedRefPtr<Node> _root;
    std::vector<std::pair<Color3f, UnrecordedRefPtr<SimpleMaterial>>> _materials; // one a colour
    std::vector<Ball> _balls;
};
} // namespace OSG
