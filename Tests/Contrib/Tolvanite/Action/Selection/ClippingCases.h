#pragma once

/// \file
/// Random polytopes, polygons and triangles for the tests of clipping, and slow, obvious clippers
/// in double precision to compare with.

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "OSGFrustum.h"
#include "OSGSelectionClipping.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
using PlaneArray = std::array<Plane, 6>;
struct DoublePoint
{
    double x, y, z;
};
using DoublePolygon = std::vector<DoublePoint>;

/// x and y from 0 to 1, z from 0 down to -1.
inline Frustum box_frustum()
{
    return Frustum({0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, -1}, {1, 0, -1}, {1, 1, -1},
                   {0, 1, -1});
}

inline PlaneArray box_planes() { return box_frustum().Volume().getPlanes(); }

/// A box that is scaled, projected, turned and moved, of sizes about 1 near the origin.
inline PlaneArray random_polytope(RandomNumbers &random)
{
    Matrix centre, project, scale, turn, move;
    centre.setTranslate(-0.5f, -0.5f, 0.5f);
    project[2][3] = random.real(-0.8f, 0.8f);
    scale.setScale(random.real(0.3f, 2.f), random.real(0.3f, 2.f), random.real(0.3f, 2.f));
    turn.setRotate(Quaternion(random.vector(), random.real(-3.f, 3.f)));
    move.setTranslate(random.vector());
    Frustum frustum = box_frustum();
    for(Matrix const *m : {&centre, &project, &scale, &turn, &move})
        frustum.multFull(*m);
    return frustum.Volume().getPlanes();
}

inline void random_triangle(RandomNumbers &random, Pnt3f *corners)
{
    Pnt3f const centre = random.point(-1.5f, 1.5f);
    Real32 const size = random.real(0.05f, 2.f);
    for(int i = 0; i < 3; ++i)
        corners[i] = centre + random.vector() * size;
}

/// Three to eight corners on an ellipse.
inline std::vector<Pnt3f> random_convex_polygon(RandomNumbers &random)
{
    Pnt3f const centre = random.point(-1.5f, 1.5f);
    Vec3f const u = random.vector() * 2.f;
    Vec3f const v = random.vector() * 2.f;
    std::vector<Real32> angles(3 + random.below(6));
    for(Real32 &angle : angles)
        angle = random.real(0.f, 6.28f);
    std::sort(angles.begin(), angles.end());
    std::vector<Pnt3f> corners;
    for(Real32 angle : angles)
        corners.push_back(centre + u * std::cos(angle) + v * std::sin(angle));
    return corners;
}

inline SelectionClipping::SegmentList loop(Pnt3f const *corners, int count)
{
    SelectionClipping::SegmentList result;
    for(int i = 0; i < count; ++i)
        result.emplace_back(corners[i], corners[(i + 1) % count]);
    return result;
}

inline DoublePolygon as_doubles(std::vector<Pnt3f> const &corners)
{
    DoublePolygon result;
    for(Pnt3f const &c : corners)
        result.push_back({c[0], c[1], c[2]});
    return result;
}

inline double distance(Plane const &plane, DoublePoint const &p)
{
    Vec3f const &n = plane.getNormal();
    return n[0] * p.x + n[1] * p.y + n[2] * p.z - plane.getDistanceFromOrigin();
}

/// Area of a plane polygon: half the length of the sum of the cross products from its first corner.
inline double area(DoublePolygon const &polygon)
{
    double sum[3] = {};
    for(std::size_t i = 1; i + 1 < polygon.size(); ++i)
    {
        DoublePoint const &o = polygon[0], &a = polygon[i], &b = polygon[i + 1];
        double const e[3] = {a.x - o.x, a.y - o.y, a.z - o.z};
        double const f[3] = {b.x - o.x, b.y - o.y, b.z - o.z};
        for(int k = 0; k < 3; ++k)
            sum[k] += e[(k + 1) % 3] * f[(k + 2) % 3] - e[(k + 2) % 3] * f[(k + 1) % 3];
    }
    return std::sqrt(sum[0] * sum[0] + sum[1] * sum[1] + sum[2] * sum[2]) / 2;
}

/// Clipping by corners (Sutherland and Hodgman, 1974).
inline DoublePolygon reference_clip(DoublePolygon polygon, PlaneArray const &planes)
{
    for(Plane const &plane : planes)
    {
        DoublePolygon kept;
        for(std::size_t i = 0; i < polygon.size(); ++i)
        {
            DoublePoint const &a = polygon[i];
            DoublePoint const &b = polygon[(i + 1) % polygon.size()];
            double const da = distance(plane, a);
            double const db = distance(plane, b);
            if(da >= 0)
                kept.push_back(a);
            if((da >= 0) != (db >= 0))
            {
                double const t = da / (da - db);
                kept.push_back(
                    {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t});
            }
        }
        polygon = kept;
    }
    return polygon;
}

/// The interval of t within 0 to 1 where a + t (b - a) is inside. If it is empty, `from` is above
/// `to`.
inline void reference_interval(Pnt3f const &a, Pnt3f const &b, PlaneArray const &planes,
                               double &from, double &to)
{
    for(Plane const &plane : planes)
    {
        double const da = distance(plane, {a[0], a[1], a[2]});
        double const db = distance(plane, {b[0], b[1], b[2]});
        if(da < 0 && db < 0)
            to = -1;
        else if(da < 0)
            from = std::max(from, da / (da - db));
        else if(db < 0)
            to = std::min(to, da / (da - db));
    }
}
} // namespace OSG::Test
