#pragma once

#include <optional>

#include <boost/function.hpp>

#include "OSGPickTool.h"
#include "OSGPickVolume.h"

namespace OSG
{
/// Gives rectangles that are drawn with the pointer, and clicks.
class OSG_TOLVANITEKIT_API BandTool : public PickTool
{
  public:
    /// CAD users expect that a band to the right takes what lies wholly inside, and one to the left
    /// what it touches.
    enum class Direction
    {
        LeftToRight,
        RightToLeft
    };
    struct Band
    {
        PixelArea area; ///< in device pixels
        Direction direction = Direction::LeftToRight;
        UInt16 modifiers = 0; ///< of the release
    };
    using OnBand = boost::function<void(Band const &band)>;

    /// A band without width or height has no result.
    explicit BandTool(OnBand onBand, OnClick onClick = {});
    char const *getName() const override { return "band"; }

    /// The band that is being drawn, for the host to show it. No value while there is none.
    std::optional<Band> getBand() const;

  protected:
    void follow(Event const &event) override;
    void finishDrag(Event const &event) override;

  private:
    Band bandTo(Event const &event) const;

    OnBand _onBand;
    Event _last;
};
} // namespace OSG
