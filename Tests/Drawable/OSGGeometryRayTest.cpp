#include "OSGGeometryRay.h"

#include <cmath>

#include <gtest/gtest.h>

#include "GeometryBuilders.h"
#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGGeometryIterators.h"
#include "OSGPlane.h"
#include "RandomNumbers.h"

using namespace OSG;
using namespace OSG::Test;

namespace
{
GeometryPtr triangles(std::vector<Pnt3f> const &corners)
{
    return make_geometry(one_primitive(TrianglesPrimitive, corners));
}

/// In the plane z = 0, counter-clockwise as seen from +z.
GeometryPtr unit_triangle() { return triangles({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}); }

Line down(Real32 x, Real32 y, Real32 z) { return Line(Pnt3f(x, y, z), Vec3f(0, 0, -1)); }

TEST(GeometryRay, GivesDistanceNumberAndNormalOfTheTriangle)
{
    RayHit const hit = nearest_triangle(*unit_triangle(), down(0.2f, 0.3f, 5), 100);
    EXPECT_EQ(hit.triangle, 0);
    EXPECT_EQ(hit.distance, 5);
    EXPECT_EQ(hit.normal, Vec3f(0, 0, 1));
}

TEST(GeometryRay, SeesTrianglesFromBehind)
{
    Line const up(Pnt3f(0.2f, 0.3f, -5), Vec3f(0, 0, 1));
    RayHit const hit = nearest_triangle(*unit_triangle(), up, 100);
    EXPECT_EQ(hit.distance, 5);
    EXPECT_EQ(hit.normal, Vec3f(0, 0, 1));
}

TEST(GeometryRay, HitsFromDistanceZeroToItsReach)
{
    GeometryPtr const geometry = unit_triangle();
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 0), 100).triangle, 0);
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), 5).triangle, 0);
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), 4.999).triangle, -1);
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, -1), 100).triangle, -1);
}

TEST(GeometryRay, OfEqualDistancesTheFirstTriangleStays)
{
    GeometryPtr const geometry = triangles({{0, 0, -1},
                                            {1, 0, -1},
                                            {0, 1, -1}, //
                                            {0, 0, 0},
                                            {1, 0, 0},
                                            {0, 1, 0}, //
                                            {0, 0, 0},
                                            {0, 1, 0},
                                            {1, 0, 0}});
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), 100).triangle, 1);
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), 5).triangle, 1);
}

TEST(GeometryRay, PassesWhatItRunsAlong)
{
    Line const along(Pnt3f(-1, 0.25f, 0), Vec3f(1, 0, 0));
    EXPECT_EQ(nearest_triangle(*unit_triangle(), along, 100).triangle, -1);
}

TEST(GeometryRay, PassesTrianglesWithoutAnAreaOrWithNumbersThatAreNone)
{
    struct Row
    {
        char const *name;
        Pnt3f corner;
    };
    Real32 const none = NAN;
    Real32 const endless = INFINITY;
    for(Row const &row : {Row{"repeated", {0, 0, 0}}, Row{"on a line", {0.5f, 0, 0}},
                          Row{"nan", {none, 1, 0}}, Row{"infinite", {0, endless, 0}}})
    {
        GeometryPtr const geometry = triangles({{0, 0, 0}, {1, 0, 0}, row.corner});
        RayHit const hit = nearest_triangle(*geometry, down(0.25f, 0, 5), 1e30);
        EXPECT_EQ(hit.triangle, -1) << row.name;
    }
}

TEST(GeometryRay, RaysWithoutADirectionOrWithNumbersThatAreNoneHitNothing)
{
    GeometryPtr const geometry = unit_triangle();
    EXPECT_EQ(nearest_triangle(*geometry, Line(), 1e30).triangle, -1);
    EXPECT_EQ(nearest_triangle(*geometry, down(NAN, 0, 5), 1e30).triangle, -1);
    Line const lost(Pnt3f(0.2f, 0.3f, 5), Vec3f(0, NAN, -1));
    EXPECT_EQ(nearest_triangle(*geometry, lost, 1e30).triangle, -1);
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), NAN).triangle, -1);
}

TEST(GeometryRay, WorksOnTrianglesOfAnySize)
{
    for(Real32 const size : {1e-30f, 1e-12f, 1e-3f, 1e6f, 1e30f})
    {
        GeometryPtr const geometry = triangles({{0, 0, 0}, {size, 0, 0}, {0, size, 0}});
        RayHit const hit = nearest_triangle(*geometry, down(size / 4, size / 4, size), 1e38);
        EXPECT_EQ(hit.triangle, 0) << size;
        EXPECT_EQ(hit.distance, size);
    }
}

TEST(GeometryRay, CountsAsTheTriangleIteratorDoes)
{
    LogCapture const log; // the first triangle names a position that is not there
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {6}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {0, 1, 9, 0, 1, 2}});
    EXPECT_EQ(nearest_triangle(*geometry, down(0.2f, 0.3f, 5), 100).triangle, 0);
}

TEST(GeometryRay, SharedEdgesLeaveNoGap)
{
    // A fan about the origin: rays straight down onto the inner edges.
    std::vector<Pnt3f> fan{{0, 0, 0}};
    RandomNumbers random(11);
    for(int i = 0; i <= 64; ++i)
    {
        Real32 const angle = static_cast<Real32>(i) * 6.2831853f / 64;
        fan.push_back(Pnt3f(std::cos(angle), std::sin(angle), random.real(-0.2f, 0.2f)));
    }
    fan.back() = fan[1];
    GeometryPtr const geometry = make_geometry(one_primitive(TriangleFanPrimitive, fan));
    for(int i = 0; i < 2000; ++i)
    {
        Pnt3f const rim = fan[1 + random.below(64)];
        Pnt3f const onEdge = Pnt3f() + rim.subZero() * random.real(0.05f, 0.95f);
        RayHit const hit = nearest_triangle(*geometry, down(onEdge[0], onEdge[1], 5), 100);
        EXPECT_GE(hit.triangle, 0) << onEdge[0] << ' ' << onEdge[1];
    }
}

// --- the slow obvious way ---

/// Where a ray meets the plane of a triangle, and whether it lies inside of all three edges.
RayHit by_planes(Geometry const &geometry, Line const &ray)
{
    RayHit nearest;
    nearest.distance = 1e30;
    for(TriangleIterator it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
    {
        Pnt3f const p[3] = {it.getPosition(0), it.getPosition(1), it.getPosition(2)};
        Plane const plane(p[0], p[1], p[2]);
        Pnt3f point;
        if(!plane.intersectInfinite(ray, point))
            continue;
        bool inside = true;
        for(int i = 0; i < 3; ++i)
        {
            Vec3f const edge = p[(i + 1) % 3] - p[i];
            inside = inside && edge.cross(point - p[i]).dot(plane.getNormal()) >= 0;
        }
        Real32 const distance = (point - ray.getPosition()).dot(ray.getDirection());
        if(inside && distance >= 0 && distance < nearest.distance)
            nearest = {distance, it.getIndex(), plane.getNormal()};
    }
    return nearest;
}

TEST(GeometryRay, AgreesWithPlanesAndEdges)
{
    RandomNumbers random(12);
    int hits = 0;
    for(int round = 0; round < 40; ++round)
    {
        std::vector<Pnt3f> corners;
        for(int i = 0; i < 90; ++i)
            corners.push_back(random.point(-1, 1));
        GeometryPtr const geometry = triangles(corners);
        for(int i = 0; i < 50; ++i)
        {
            Pnt3f const from = random.point(-2, 2);
            Line const ray(from, random.point(-1, 1) - from);
            RayHit const fast = nearest_triangle(*geometry, ray, 1e30);
            RayHit const slow = by_planes(*geometry, ray);
            if(fast.triangle != slow.triangle) // an edge: either way
                continue;
            hits += fast.triangle >= 0 ? 1 : 0;
            if(fast.triangle >= 0)
            {
                EXPECT_NEAR(fast.distance, slow.distance, 1e-4);
                EXPECT_TRUE(fast.normal.equals(slow.normal, 1e-4f));
            }
        }
    }
    EXPECT_GT(hits, 1000);
}

TEST(GeometryRay, SeldomDiffersFromPlanesAndEdges)
{
    RandomNumbers random(13);
    int different = 0;
    for(int i = 0; i < 20000; ++i)
    {
        GeometryPtr const geometry =
            triangles({random.point(-1, 1), random.point(-1, 1), random.point(-1, 1)});
        Line const ray(random.point(-2, 2), random.vector());
        different +=
            nearest_triangle(*geometry, ray, 1e30).triangle != by_planes(*geometry, ray).triangle
                ? 1
                : 0;
    }
    EXPECT_LE(different, 2);
}
} // namespace
