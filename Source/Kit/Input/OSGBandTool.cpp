#include "OSGBandTool.h"

#include <utility>

namespace OSG
{
BandTool::BandTool(OnBand onBand, OnClick onClick)
    : PickTool(std::move(onClick))
    , _onBand(std::move(onBand))
{
}

std::optional<BandTool::Band> BandTool::getBand() const
{
    return isDragging() ? std::optional(bandTo(_last)) : std::nullopt;
}

void BandTool::follow(Event const &event) { _last = event; }

void BandTool::finishDrag(Event const &event)
{
    Band const band = bandTo(event);
    bool const hasExtent = band.area.left < band.area.right && band.area.top < band.area.bottom;
    if(hasExtent && _onBand)
        _onBand(band);
}

BandTool::Band BandTool::bandTo(Event const &event) const
{
    Pnt2f const &begin = getBegin();
    return {pixel_rectangle(begin[0], begin[1], event.pixel[0], event.pixel[1]),
            event.pixel[0] < begin[0] ? Direction::RightToLeft : Direction::LeftToRight,
            event.modifiers};
}
} // namespace OSG
