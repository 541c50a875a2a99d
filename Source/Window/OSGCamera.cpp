#include "OSGCamera.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "OSGHomogeneous.h"
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
// The plane whose coefficients are row 3 plus or minus row `row` of the matrix (Gribb, Hartmann:
// Fast extraction of viewing frustum planes from the world-view-projection matrix, 2001). If these
// rows give no direction, the result is the default plane, which has everything inside. That
// happens to the far plane if (far + near) / (far - near) rounds to 1 in single precision.
Plane plane_of(Matrix4d const &m, int row, int sign)
{
    Real64 coefficient[4];
    for(int c = 0; c < 4; ++c)
        coefficient[c] = m[c][3] + sign * m[c][row];
    Vec3d const normal(coefficient[0], coefficient[1], coefficient[2]);
    Real64 const length = normal.length();
    Plane plane;
    if(length > 0 && std::isfinite(length))
        plane.setValue(Vec3f(normal[0] / length, normal[1] / length, normal[2] / length),
                       static_cast<Real32>(-coefficient[3] / length));
    return plane;
}
} // namespace

void Camera::getFrustum(FrustumVolume &result, UInt32 width, UInt32 height) const
{
    Matrix viewing;
    getViewing(viewing, width, height);
    Matrix4d const screen = worldToScreen(viewing, width, height);
    result =
        FrustumVolume(plane_of(screen, 2, 1), plane_of(screen, 2, -1), plane_of(screen, 0, 1),
                      plane_of(screen, 0, -1), plane_of(screen, 1, -1), plane_of(screen, 1, 1));
}

bool Camera::calcScreenToWorld(Matrix4d &result, Matrix const &viewing, UInt32 width,
                               UInt32 height) const
{
    return result.invertFrom(worldToScreen(viewing, width, height));
}

namespace
{
// The length of a ray between two homogeneous points; `way` has its direction. The end may lie at
// infinity. The length is then computed from the camera's fields near and far.
Real64 ray_length(Camera const &camera, Vec4d const &start, Vec4d const &end, Vec3d const &way,
                  Matrix const &viewing)
{
    // If the end lies at infinity, its w is 0 but for rounding in double precision. The smallest
    // other ratio that matrices in single precision give is 5e-8.
    constexpr Real64 LargestZeroW = 1e-12;
    if(end[3] / start[3] > LargestZeroW)
        return way.length() / (start[3] * end[3]);
    Vec3d const ahead(-viewing[0][2], -viewing[1][2], -viewing[2][2]);
    Real64 const depth = Real64(camera.getFar()) - camera.getNear();
    return depth * way.length() / ahead.dot(way);
}
} // namespace

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
    Vec4d const start = homogeneous_image(toWorld, Pnt3d(normX, normY, -1));
    Vec4d const end = homogeneous_image(toWorld, Pnt3d(normX, normY, 1));
    if(start[3] == 0)
        return false;
    Vec3d const way = homogeneous_way(start, end);
    Real64 const distance = ray_length(*this, start, end, way, viewing);
    if(!(distance > 0) || !std::isfinite(distance))
        return false;
    // Line does not normalise directions shorter than 1e-6, and a ray may be that short. So the
    // direction is given length 1 here.
    Vec3d const direction = way * (1 / way.length());
    line.setValue(Pnt3f(start[0] / start[3], start[1] / start[3], start[2] / start[3]),
                  Vec3f(direction[0], direction[1], direction[2]));
    if(length != nullptr)
        *length =
            static_cast<Real32>(std::min<Real64>(distance, std::numeric_limits<Real32>::max()));
    return true;
}
} // namespace OSG
