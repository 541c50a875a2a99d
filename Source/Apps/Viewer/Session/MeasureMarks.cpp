#include "MeasureMarks.h"

#include <algorithm>

#include "OSGFinite.h"

namespace Viewer
{
namespace
{
OSG::Color3f const PointColor(1, 0.2f, 0.3f);
OSG::Color3f const LineColor(1, 0.75f, 0.1f);
} // namespace

MeasureMarks::MeasureMarks(OSG::SceneView &view)
    : _view(view)
{
    _view.setOverlayOnTop(_markers.getNode());
}

MeasureMarks::~MeasureMarks() { _view.setOverlayOnTop(nullptr); }

bool MeasureMarks::show(std::vector<OSG::Pnt3f> const &points)
{
    std::vector<OSG::Pnt3f> shown;
    std::copy_if(points.begin(), points.end(), std::back_inserter(shown),
                 [](OSG::Pnt3f const &point) { return OSG::is_finite(point); });
    if(shown == _points)
        return false;
    _markers.clear();
    for(std::size_t i = 0; i < shown.size(); ++i)
    {
        if(i > 0)
            _markers.addLine(shown[i - 1], shown[i], LineColor);
        _markers.addPoint(shown[i], PointColor);
    }
    _points = std::move(shown);
    return true;
}
} // namespace Viewer
