#include "ToolBox.h"

#include <utility>

#include "OSGViewMoves.h"

namespace Viewer
{
namespace
{
using Event = OSG::PointerTool::Event;

/// In recordings its bands are not those that select.
class NamedZoomTool : public OSG::BandTool
{
  public:
    using BandTool::BandTool;
    char const *getName() const override { return "zoom"; }
};

/// Distances and angles have names of their own in recordings.
class NamedMeasureTool : public OSG::MeasureTool
{
  public:
    NamedMeasureTool(Picking &picking, OSG::UInt32 count)
        : MeasureTool(
              count, [&picking](Event const &click) { return picking.pointAt(click); },
              [&picking](std::vector<OSG::Pnt3f> const &points) { picking.measure(points); })
        , _isAngle(count > 2)
    {
    }

    char const *getName() const override { return _isAngle ? "angle" : "distance"; }

  private:
    bool _isAngle;
};
} // namespace

ToolBox::ToolBox(OSG::EventAdapter &events, Picking &picking, OSG::SceneView &view,
                 OSG::ViewDriver &driver)
    : _events(events)
    , _picking(picking)
    , _view(view)
    , _driver(driver)
{
    take(Tool::Navigate);
}

void ToolBox::take(Tool tool)
{
    auto const click = [this](Event const &event) { _picking.click(event); };
    _tool = tool;
    _band.reset();
    _lasso.reset();
    _measure.reset();
    switch(tool)
    {
    case Tool::Navigate:
        _inHand = std::make_shared<OSG::NavigateTool>(click);
        break;
    case Tool::Pick:
        _inHand = std::make_shared<OSG::PickTool>(click);
        break;
    case Tool::Band:
        _inHand = _band = std::make_shared<OSG::BandTool>(
            [this](OSG::BandTool::Band const &band) { _picking.band(band); }, click);
        break;
    case Tool::Lasso:
        _inHand = _lasso = std::make_shared<OSG::LassoTool>(
            [this](OSG::LassoTool::Lasso const &lasso) { _picking.lasso(lasso); }, click);
        break;
    case Tool::Zoom:
        _inHand = _band = std::make_shared<NamedZoomTool>([this](OSG::BandTool::Band const &band)
                                                          { zoom(band.area); });
        break;
    case Tool::Distance:
    case Tool::Angle:
        _inHand = _measure =
            std::make_shared<NamedMeasureTool>(_picking, tool == Tool::Angle ? 3 : 2);
        break;
    }
    _events.setTool(_inHand);
}

bool ToolBox::takeNamed(std::string const &name)
{
    std::pair<char const *, Tool> const tools[] = {
        {"navigate", Tool::Navigate}, {"pick", Tool::Pick},         {"band", Tool::Band},
        {"lasso", Tool::Lasso},       {"distance", Tool::Distance}, {"measure", Tool::Distance},
        {"angle", Tool::Angle},       {"zoom", Tool::Zoom}};
    for(auto const &[known, tool] : tools)
    {
        if(name != known)
            continue;
        take(tool);
        return true;
    }
    return false;
}

// What lies under the middle of the band is as large as the window lets it.
void ToolBox::zoom(OSG::PixelArea const &area)
{
    OSG::WindowView const view = _view.getView();
    OSG::Pnt2f const middle((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    auto const found = _picking.getPicker().foremost(middle);
    _driver.goTo(OSG::zoom_window(view, {area.left, area.top}, {area.right, area.bottom},
                                  found ? found->point : view.at));
}

std::vector<OSG::Pnt2f> ToolBox::drawnShape() const
{
    if(_lasso != nullptr)
        return _lasso->getCorners();
    auto const band = _band != nullptr ? _band->getBand() : std::nullopt;
    if(!band)
        return {};
    OSG::PixelArea const &area = band->area;
    return {{area.left, area.top},
            {area.right, area.top},
            {area.right, area.bottom},
            {area.left, area.bottom}};
}

bool ToolBox::drawsEnclosed() const
{
    auto const band = _band != nullptr ? _band->getBand() : std::nullopt;
    return band && band->direction == OSG::BandTool::Direction::LeftToRight;
}

std::vector<OSG::Pnt3f> ToolBox::measuredSoFar() const
{
    return _measure != nullptr ? _measure->getPoints() : std::vector<OSG::Pnt3f>();
}

char const *name_of(ToolBox::Tool tool)
{
    constexpr char const *Names[] = {"Navigate", "Pick",  "Band",       "Lasso",
                                     "Distance", "Angle", "Zoom window"};
    return Names[static_cast<std::size_t>(tool)];
}
} // namespace Viewer
