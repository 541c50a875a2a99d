#pragma once

/// \file
/// Cameras and viewports for tests.

#include "OSGMatrixUtility.h"
#include "OSGOrthographicCamera.h"
#include "OSGPerspectiveCamera.h"
#include "OSGViewport.h"
#include "OSGWindow.h"
#include "SceneBuilders.h"

namespace OSG::Test
{
using ViewportPtr = UnrecordedRefPtr<Viewport>;
using WindowPtr = UnrecordedRefPtr<Window>;
template <class AnyCamera>
using CameraPtr = UnrecordedRefPtr<AnyCamera>;

/// `fov` is vertical, in radians.
inline CameraPtr<PerspectiveCamera> make_perspective(Real32 fov, Real32 near, Real32 far)
{
    CameraPtr<PerspectiveCamera> camera(PerspectiveCamera::create());
    camera->setFov(fov);
    camera->setNear(near);
    camera->setFar(far);
    return camera;
}

inline CameraPtr<OrthographicCamera> make_orthographic(Real32 size, Real32 near, Real32 far)
{
    CameraPtr<OrthographicCamera> camera(OrthographicCamera::create());
    camera->setVerticalSize(size);
    camera->setNear(near);
    camera->setFar(far);
    return camera;
}

/// A transform node with the matrix of a camera at `from`. Whoever sets it as a beacon keeps it.
inline NodePtr make_beacon(Pnt3f const &from, Pnt3f const &at, Vec3f const &up)
{
    Matrix matrix;
    EXPECT_FALSE(MatrixLookAt(matrix, from, at, up));
    return make_transform(matrix);
}

/// A view whose edges are these pixels; rows count from the bottom.
inline ViewportPtr make_viewport(Int32 left, Int32 bottom, Int32 right, Int32 top)
{
    ViewportPtr viewport(Viewport::create());
    viewport->setLeft(static_cast<Real32>(left));
    viewport->setBottom(static_cast<Real32>(bottom));
    viewport->setRight(static_cast<Real32>(right));
    viewport->setTop(static_cast<Real32>(top));
    return viewport;
}

/// A window all of which `viewport` covers, unless it has edges of its own.
inline WindowPtr make_window(UInt16 width, UInt16 height, Viewport *viewport)
{
    WindowPtr window(Window::create());
    window->setSize(width, height);
    window->addPort(viewport);
    return window;
}
} // namespace OSG::Test
