#include "OSGWindowView.h"

#include <cmath>
#include <numbers>

#include "OSGFinite.h"
#include "OSGMatrixUtility.h"

namespace OSG
{
namespace
{
bool has_extent(WindowView const &view)
{
    if(view.orthographicHeight)
        return *view.orthographicHeight > 0 && is_finite(*view.orthographicHeight);
    return view.fieldOfView > 0 && view.fieldOfView < 180;
}
} // namespace

bool is_view(WindowView const &view)
{
    Matrix camera;
    return view.width > 0 && view.height > 0 && has_extent(view) &&
           !MatrixLookAt(camera, view.from, view.at, view.up);
}

Matrix camera_of(WindowView const &view)
{
    Matrix camera;
    if(is_view(view))
        MatrixLookAt(camera, view.from, view.at, view.up);
    return camera;
}

Real64 shown_height(WindowView const &view, Real64 depth)
{
    if(view.orthographicHeight)
        return *view.orthographicHeight;
    return depth * 2 * std::tan(view.fieldOfView * std::numbers::pi / 360);
}
} // namespace OSG
