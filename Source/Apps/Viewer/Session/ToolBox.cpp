#include "ToolBox.h"

namespace Viewer
{
namespace
{
using Event = OSG::PointerTool::Event;

std::shared_ptr<OSG::MeasureTool> measure_tool(Picking &picking, OSG::UInt32 count)
{
    return std::make_shared<OSG::MeasureTool>(
        count, [&picking](Event const &click) { return picking.pointAt(click); },
        [&picking](std::vector<OSG::Pnt3f> const &points) { picking.measure(points); });
}
} // namespace

ToolBox::ToolBox(OSG::EventAdapter &events, Picking &picking)
    : _events(events)
    , _picking(picking)
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
        _events.setTool(std::make_shared<OSG::NavigateTool>(click));
        return;
    case Tool::Pick:
        _events.setTool(std::make_shared<OSG::PickTool>(click));
        return;
    case Tool::Band:
        _band = std::make_shared<OSG::BandTool>(
            [this](OSG::BandTool::Band const &band) { _picking.band(band); }, click);
        _events.setTool(_band);
        return;
    case Tool::Lasso:
        _lasso = std::make_shared<OSG::LassoTool>(
            [this](OSG::LassoTool::Lasso const &lasso) { _picking.lasso(lasso); }, click);
        _events.setTool(_lasso);
        return;
    case Tool::Distance:
    case Tool::Angle:
        _measure = measure_tool(_picking, tool == Tool::Angle ? 3 : 2);
        _events.setTool(_measure);
        return;
    }
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
    constexpr char const *Names[] = {"Navigate", "Pick", "Band", "Lasso", "Distance", "Angle"};
    return Names[static_cast<std::size_t>(tool)];
}
} // namespace Viewer
