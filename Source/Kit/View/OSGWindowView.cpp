#include "OSGWindowView.h"

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
} // namespace OSG
