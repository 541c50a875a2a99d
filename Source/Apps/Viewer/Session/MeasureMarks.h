#pragma once

#include <vector>

#include "OSGMarkers.h"
#include "OSGSceneView.h"

namespace Viewer
{
/// The points and lines of a measurement, seen through everything in a view.
class MeasureMarks
{
  public:
    /// Keeps a reference to the view, which has to outlive the marks.
    explicit MeasureMarks(OSG::SceneView &view);
    ~MeasureMarks();
    MeasureMarks(MeasureMarks const &) = delete;
    MeasureMarks &operator=(MeasureMarks const &) = delete;

    /// Shows these points and the lines from each to the next. Whether they are others than before:
    /// then there is something to commit. Points that are not finite are not shown.
    bool show(std::vector<OSG::Pnt3f> const &points);
    std::vector<OSG::Pnt3f> const &getPoints() const { return _points; }

  private:
    OSG::SceneView &_view;
    OSG::Markers _markers;
    std::vector<OSG::Pnt3f> _points;
};
} // namespace Viewer
