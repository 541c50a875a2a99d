#include "OSGViewportView.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "OSGBeaconPose.h"
#include "OSGFinite.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGViewFrame.h"
#include "OSGViewport.h"

namespace OSG
{
namespace
{
Vec3d axis_of(Matrix const &matrix, UInt32 column)
{
    return Vec3d(matrix[column][0], matrix[column][1], matrix[column][2]);
}

/// Whether the matrix only turns and moves.
bool is_rigid(Matrix const &matrix)
{
    constexpr Real64 Tolerance = 1e-4;
    Vec3d const x = axis_of(matrix, 0);
    Vec3d const y = axis_of(matrix, 1);
    Vec3d const z = axis_of(matrix, 2);
    return is_finite(matrix) && (x - y.cross(z)).length() < Tolerance &&
           (y - z.cross(x)).length() < Tolerance && (z - x.cross(y)).length() < Tolerance &&
           std::abs(z.length() - 1) < Tolerance;
}

void put_projection(WindowView &view, Camera const *camera)
{
    if(auto const *const perspective = dynamic_cast<PerspectiveCamera const *>(camera))
        view.fieldOfView = static_cast<Real32>(perspective->getFov() / std::numbers::pi * 180);
    else if(auto const *const flat = dynamic_cast<OrthographicCamera const *>(camera))
        view.orthographicHeight = flat->getVerticalSize();
}

Real64 distance_for(Pnt3d const &eye, std::optional<Real32> const &distance)
{
    return distance && *distance != 0 ? *distance
                                      : std::max(1., ShortestTrueOffset * last_unit(eye));
}
// Whether the camera has the projection of the view.
bool is_shown_alike(Viewport const &viewport, WindowView const &view)
{
    Camera *const camera = viewport.getCamera();
    bool const isAlike = view.orthographicHeight
                             ? dynamic_cast<OrthographicCamera *>(camera) != nullptr
                             : dynamic_cast<PerspectiveCamera *>(camera) != nullptr;
    return isAlike && is_view(view);
}
} // namespace

std::optional<WindowView> view_of(Viewport const &viewport, std::optional<Real32> distance)
{
    Camera const *const camera = viewport.getCamera();
    Int32 const width = viewport.calcPixelWidth();
    Int32 const height = viewport.calcPixelHeight();
    if(camera == nullptr || camera->getBeacon() == nullptr || width < 1 || height < 1)
        return std::nullopt;
    Matrix const pose = camera->getBeacon()->getToWorld();
    if(!is_rigid(pose))
        return std::nullopt;
    WindowView view{{}, {}, {0, 1, 0}, 0, static_cast<UInt32>(width), static_cast<UInt32>(height)};
    put_projection(view, camera);
    Pnt3d const eye(pose[3][0], pose[3][1], pose[3][2]);
    Real64 const away = distance_for(eye, distance);
    if(!(away > 0) || !std::isfinite(away))
        return std::nullopt;
    Vec3d const offset = axis_of(pose, 2) * away;
    return anchored_view(view, offset, narrow(axis_of(pose, 1)),
                         middle_anchor(view, eye - offset, away));
}

bool show_view(Viewport const &viewport, WindowView const &view)
{
    return is_shown_alike(viewport, view) && pose_beacon(viewport.getCamera(), camera_of(view)) &&
           show_projection(viewport, view);
}

bool show_projection(Viewport const &viewport, WindowView const &view)
{
    if(!is_shown_alike(viewport, view))
        return false;
    if(view.orthographicHeight)
    {
        auto &flat = dynamic_cast<OrthographicCamera &>(*viewport.getCamera());
        if(flat.getVerticalSize() != *view.orthographicHeight)
            flat.setVerticalSize(*view.orthographicHeight);
        return true;
    }
    auto &perspective = dynamic_cast<PerspectiveCamera &>(*viewport.getCamera());
    Real32 const angle = static_cast<Real32>(view.fieldOfView * std::numbers::pi / 180);
    if(perspective.getFov() != angle)
        perspective.setFov(angle);
    return true;
}
} // namespace OSG
