#include "OSGCamera.h"

#include <cmath>

#include "OSGViewport.h"

namespace OSG
{
Camera::~Camera() = default;

void Camera::getProjectionTranslation(Matrix &result, UInt32, UInt32) const
{
    result.setIdentity();
}

void Camera::getViewing(Matrix &result, UInt32, UInt32) const
{
    if(getBeacon() != nullptr)
        result.invertFrom(getBeacon()->getToWorld());
    else
        result.setIdentity();
}

Matrix4d Camera::worldToScreen(Matrix const &viewing, UInt32 width, UInt32 height) const
{
    Matrix projection;
    Matrix translation;
    getProjection(projection, width, height);
    getProjectionTranslation(translation, width, height);
    return Matrix4d(projection) * Matrix4d(translation) * Matrix4d(viewing);
}

namespace
{
// What is on the inner side of row 3 + sign * row `row` (Gribb, Hartmann: Fast extraction of
// viewing frustum planes from the world-view-projection matrix, 2001). False where it has no
// direction.
bool plane_of(Matrix4d const &m, int row, int sign, Plane &plane)
{
    Real64 coefficient[4];
    for(int c = 0; c < 4; ++c)
        coefficient[c] = m[c][3] + sign * m[c][row];
    Vec3d const normal(coefficient[0], coefficient[1], coefficient[2]);
    Real64 const length = normal.length();
    if(!(length > 0) || !std::isfinite(length))
        return false;
    plane.setValue(Vec3f(normal[0] / length, normal[1] / length, normal[2] / length),
                   static_cast<Real32>(-coefficient[3] / length));
    return true;
}
} // namespace

void Camera::getFrustum(FrustumVolume &result, UInt32 width, UInt32 height) const
{
    Matrix viewing;
    getViewing(viewing, width, height);
    Matrix4d const screen = worldToScreen(viewing, width, height);
    Plane near, far, left, right, top, bottom;
    bool const bounded = plane_of(screen, 2, 1, near) && plane_of(screen, 2, -1, far) &&
                         plane_of(screen, 0, 1, left) && plane_of(screen, 0, -1, right) &&
                         plane_of(screen, 1, -1, top) && plane_of(screen, 1, 1, bottom);
    result = bounded ? FrustumVolume(near, far, left, right, top, bottom) : FrustumVolume();
}

bool Camera::calcScreenToWorld(Matrix4d &result, Matrix const &viewing, UInt32 width,
                               UInt32 height) const
{
    return result.invertFrom(worldToScreen(viewing, width, height));
}

bool Camera::calcViewRay(Line &line, Int32 x, Int32 y, Viewport const &port, Real32 *length) const
{
    Real32 normX;
    Real32 normY;
    if(!port.calcNormalizedCoordinates(normX, normY, x, y))
        return false;
    UInt32 const width = static_cast<UInt32>(port.calcPixelWidth());
    UInt32 const height = static_cast<UInt32>(port.calcPixelHeight());
    Matrix viewing;
    getViewing(viewing, width, height);
    Matrix4d toWorld;
    if(!calcScreenToWorld(toWorld, viewing, width, height))
        return false;
    Pnt3d start;
    Pnt3d end;
    toWorld.multFull(Pnt3d(normX, normY, -1), start);
    toWorld.multFull(Pnt3d(normX, normY, 1), end);
    Vec3d const way = end - start;
    Real64 const distance = way.length();
    if(!(distance > 0) || !std::isfinite(distance))
        return false;
    // Of length 1 before it is rounded: a ray may be shorter than what a line can normalise.
    Vec3d const direction = way * (1 / distance);
    line.setValue(Pnt3f(start[0], start[1], start[2]),
                  Vec3f(direction[0], direction[1], direction[2]));
    if(length != nullptr)
        *length = static_cast<Real32>(distance);
    return true;
}
} // namespace OSG
