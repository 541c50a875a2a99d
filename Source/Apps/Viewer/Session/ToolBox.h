#pragma once

#include <memory>
#include <string>

#include "OSGBandTool.h"
#include "OSGEventAdapter.h"
#include "OSGLassoTool.h"
#include "OSGMeasureTool.h"
#include "OSGViewDriver.h"
#include "Picking.h"

namespace Viewer
{
/// The tools for the left button, one of them in hand.
class ToolBox
{
  public:
    enum class Tool : OSG::UInt8
    {
        Navigate, ///< drags are the engine's, clicks pick
        Pick,
        Band,
        Lasso,
        Distance,
        Angle,
        Zoom ///< a band is what the window shows then
    };

    /// Keeps references to all, which have to outlive it.
    ToolBox(OSG::EventAdapter &events, Picking &picking, OSG::SceneView &view,
            OSG::ViewDriver &driver);

    /// Ends what the tool before was at.
    void take(Tool tool);
    Tool getTool() const { return _tool; }
    /// Takes the tool that recordings call so; false where there is none.
    bool takeNamed(std::string const &name);
    std::shared_ptr<OSG::PointerTool> const &getPointerTool() const { return _inHand; }
    /// What the pointer draws at the moment: a band or a lasso, in device pixels, closed; or the
    /// pixels of nothing.
    std::vector<OSG::Pnt2f> drawnShape() const;
    /// Whether the shape that is drawn selects what lies wholly inside.
    bool drawsEnclosed() const;
    /// The points of a measurement that is not complete.
    std::vector<OSG::Pnt3f> measuredSoFar() const;

  private:
    void zoom(OSG::PixelArea const &area);

    OSG::EventAdapter &_events;
    Picking &_picking;
    OSG::SceneView &_view;
    OSG::ViewDriver &_driver;
    Tool _tool = Tool::Navigate;
    std::shared_ptr<OSG::PointerTool> _inHand;
    std::shared_ptr<OSG::BandTool> _band;
    std::shared_ptr<OSG::LassoTool> _lasso;
    std::shared_ptr<OSG::MeasureTool> _measure;
};

char const *name_of(ToolBox::Tool tool);
} // namespace Viewer
