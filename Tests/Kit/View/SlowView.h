#pragma once

/// \file
/// Where a view shows a point, by the product of full matrices in double precision; and random
/// views.

#include <cmath>

#include "OSGMatrix.h"
#include "OSGWindowView.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
struct SlowPixel
{
    Real64 x, y;
    Real64 w; ///< above 0 before the eye
};

inline Vec3d unit_wide(Vec3d const &v) { return v / v.length(); }

/// Scene to camera, from the numbers of the view.
inline Matrix4d slow_viewing(WindowView const &view)
{
    Pnt3d const from(view.from[0], view.from[1], view.from[2]);
    Pnt3d const at(view.at[0], view.at[1], view.at[2]);
    Vec3d const z = unit_wide(from - at);
    Vec3d const x = unit_wide(Vec3d(view.up[0], view.up[1], view.up[2]).cross(z));
    Vec3d const y = z.cross(x);
    Matrix4d result;
    Vec3d const rows[3] = {x, y, z};
    for(UInt32 r = 0; r < 3; ++r)
    {
        for(UInt32 c = 0; c < 3; ++c)
            result[c][r] = rows[r][c];
        result[3][r] = -rows[r].dot(from.subZero());
    }
    return result;
}

inline Matrix4d slow_projection(WindowView const &view)
{
    Real64 const near = 0.1;
    Real64 const far = 1000;
    Real64 const aspect = Real64(view.width) / view.height;
    Matrix4d m;
    if(view.orthographicHeight)
    {
        m[1][1] = 2 / Real64(*view.orthographicHeight);
        m[0][0] = m[1][1] / aspect;
        m[2][2] = -2 / (far - near);
        m[3][2] = -(far + near) / (far - near);
        return m;
    }
    m[1][1] = 1 / std::tan(view.fieldOfView * M_PI / 360);
    m[0][0] = m[1][1] / aspect;
    m[2][2] = -(far + near) / (far - near);
    m[3][2] = -2 * far * near / (far - near);
    m[2][3] = -1;
    m[3][3] = 0;
    return m;
}

inline SlowPixel slow_pixel(WindowView const &view, Pnt3d const &point)
{
    Matrix4d const m = slow_projection(view) * slow_viewing(view);
    Real64 image[4];
    for(UInt32 r = 0; r < 4; ++r)
        image[r] = m[0][r] * point[0] + m[1][r] * point[1] + m[2][r] * point[2] + m[3][r];
    return {(image[0] / image[3] + 1) / 2 * view.width, (1 - image[1] / image[3]) / 2 * view.height,
            image[3]};
}
inline SlowPixel slow_pixel(WindowView const &view, Pnt3f const &point)
{
    return slow_pixel(view, Pnt3d(point[0], point[1], point[2]));
}

/// How far apart two places in a window are.
inline Real64 pixels_apart(SlowPixel const &a, Real64 x, Real64 y)
{
    return std::hypot(a.x - x, a.y - y);
}

/// A view of the ball of radius 5 around `center`, from a distance of 15 to 30.
inline WindowView random_view(RandomNumbers &random, bool isOrthographic, Pnt3f const &center = {})
{
    WindowView view{};
    Vec3f way;
    do
    {
        way = random.vector();
        view.up = random.vector();
    } while(way.length() < 0.3f || way.cross(view.up).length() < 0.3f);
    view.from = center + way * (random.real(15, 30) / way.length());
    view.at = center + random.vector();
    view.fieldOfView = random.real(25, 100);
    view.width = 200 + random.below(1800);
    view.height = 200 + random.below(1000);
    if(isOrthographic)
        view.orthographicHeight = random.real(5, 20);
    return view;
}
} // namespace OSG::Test
