#pragma once

#include <vector>

#include <boost/function.hpp>

#include "OSGPickTool.h"

namespace OSG
{
/// Gives polygons that are drawn with the pointer, and clicks.
class OSG_TOLVANITEKIT_API LassoTool : public PickTool
{
  public:
    /// Corners are at least this far apart, in device pixels.
    static constexpr Real32 CornerDistance = 2;

    /// The corners in the order in which they were drawn, in device pixels. The polygon is closed
    /// by the edge from the last corner to the first. It may cross itself.
    struct Lasso
    {
        std::vector<Pnt2f> corners;
        UInt16 modifiers = 0; ///< of the release
    };
    using OnLasso = boost::function<void(Lasso const &lasso)>;

    /// A lasso of fewer than three corners has no result.
    explicit LassoTool(OnLasso onLasso, OnClick onClick = {});

    char const *getName() const override { return "lasso"; }
    void cancel() override;
    /// The corners of the lasso that is being drawn, for the host to show it. Empty while there is
    /// none.
    std::vector<Pnt2f> const &getCorners() const { return _corners; }

  protected:
    void follow(Event const &event) override;
    void finishDrag(Event const &event) override;

  private:
    OnLasso _onLasso;
    std::vector<Pnt2f> _corners;
};
} // namespace OSG
