#pragma once

#include <optional>
#include <vector>

#include <boost/function.hpp>

#include "OSGDragTool.h"

namespace OSG
{
/// Gives points of the scene that the user clicks one after the other: two for a distance, three
/// for an angle.
class OSG_TOLVANITEKIT_API MeasureTool : public DragTool
{
  public:
    /// The point of the scene under a click. No value where there is none: the click then does not
    /// count.
    using Pick = boost::function<std::optional<Pnt3f>(Event const &click)>;
    /// All points of a measurement. The next click begins another one.
    using OnMeasured = boost::function<void(std::vector<Pnt3f> const &points)>;

    /// `count` points, 0 counts as 1.
    MeasureTool(UInt32 count, Pick pick, OnMeasured onMeasured);

    char const *getName() const override { return "measure"; }
    /// Forgets the points that were clicked.
    void cancel() override;
    bool isBusy() const override { return DragTool::isBusy() || !_points.empty(); }
    /// The points that were clicked so far.
    std::vector<Pnt3f> const &getPoints() const { return _points; }

  protected:
    void finishClick(Event const &event) override;
    void finishDrag(Event const &event) override;

  private:
    UInt32 _count;
    Pick _pick;
    OnMeasured _onMeasured;
    std::vector<Pnt3f> _points;
};
} // namespace OSG
