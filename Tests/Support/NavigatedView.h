#pragma once

/// \file
/// A view with a navigator, for tests of engines.

#include "CameraBuilders.h"
#include "GeometryBuilders.h"
#include "OSGNavigator.h"

namespace OSG::Test
{
/// Camera at (0, 0, 10), unless an engine says otherwise, in a window of 640 by 480 pixels, and a
/// scene with one large triangle in the plane z = 0, seen from the front.
struct NavigatedView
{
    NavigatedView() { setCamera(make_perspective(0.8f, 0.1f, 1000.f).get()); }
    explicit NavigatedView(Camera *view) { setCamera(view); }

    void setCamera(Camera *view)
    {
        camera = view;
        camera->setBeacon(beacon);
        viewport->setCamera(camera);
        viewport->setRoot(root);
        navigator.setViewport(viewport);
    }

    /// The ray through a pixel of the view as it stands.
    Line ray(Int32 x, Int32 y) const
    {
        Line line;
        EXPECT_TRUE(camera->calcViewRay(line, x, y, *viewport));
        return line;
    }

    NodePtr const root = make_group({make_node(
        make_geometry(one_primitive(TrianglesPrimitive, {{-9, -9, 0}, {9, -9, 0}, {0, 9, 0}})))});
    NodePtr const beacon = make_transform(translation(0, 0, 10));
    UnrecordedRefPtr<Camera> camera;
    ViewportPtr const viewport{Viewport::create()};
    WindowPtr const window = make_window(640, 480, viewport);
    Navigator navigator;
};

/// Where a point of the scene lies in a view: pixels from the window's left top corner. Computed
/// from the camera's matrices in double precision.
inline std::pair<Real64, Real64> pixel_of(NavigatedView const &view, Pnt3f const &point)
{
    UInt32 const width = static_cast<UInt32>(view.viewport->calcPixelWidth());
    UInt32 const height = static_cast<UInt32>(view.viewport->calcPixelHeight());
    Matrix projection, viewing;
    view.camera->getProjection(projection, width, height);
    view.camera->getViewing(viewing, width, height);
    Pnt3d norm;
    (Matrix4d(projection) * Matrix4d(viewing)).multFull(Pnt3d(point[0], point[1], point[2]), norm);
    return {(norm[0] + 1) / 2 * width + view.viewport->calcPixelLeft(),
            view.window->getHeight() - view.viewport->calcPixelBottom() -
                (norm[1] + 1) / 2 * height};
}
} // namespace OSG::Test
