#include "OSGGeometryNormals.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "MathPrinters.h"
#include "OSGGeometryIterators.h"
#include "OSGMemManager.h"
#include "PrimitiveExpansion.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
using testing::ElementsAre;

std::vector<Vec3f> normals_of(Geometry const &geometry)
{
    std::vector<Vec3f> result;
    for(UInt32 i = 0; i < geometry.getNormals()->size(); ++i)
        result.emplace_back(geometry.getNormals()->getArray()[i]);
    return result;
}

Vec3f unit(Vec3f v)
{
    v.normalize();
    return v;
}

TEST(CalcVertexNormals, ATriangleHasItsFaceNormalAtEveryCorner)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(TrianglesPrimitive, {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}}));
    calcVertexNormals(geometry);
    Vec3f const up(0, 0, 1);
    EXPECT_THAT(normals_of(*geometry), ElementsAre(up, up, up));
}

TEST(CalcVertexNormals, WhereTrianglesMeetTheirUnitNormalsAreAdded)
{
    // Two faces at a right angle, of very different size.
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive},
                                                {6},
                                                {{0, 0, 0}, {1, 0, 0}, {0, 9, 0}, {0, 0, 1}},
                                                {},
                                                {0, 1, 2, 0, 3, 1}});
    calcVertexNormals(geometry);
    Vec3f const between = unit({0, 1, 1});
    EXPECT_THAT(normals_of(*geometry),
                ElementsAre(between, between, Vec3f(0, 0, 1), Vec3f(0, 1, 0)));
}

TEST(CalcVertexNormals, FullyUsedPositionsShareTheirIndex)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {3}, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {2, 0, 1}});
    calcVertexNormals(geometry);
    EXPECT_EQ(geometry->getIndex(Geometry::NormalsSlot),
              geometry->getIndex(Geometry::PositionsSlot));
}

TEST(CalcVertexNormals, EqualPositionsOfDifferentIndexAreNotSmoothedAcross)
{
    GeometryPtr const geometry = make_geometry(one_primitive(
        TrianglesPrimitive, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}}));
    calcVertexNormals(geometry);
    EXPECT_EQ(normals_of(*geometry)[0], Vec3f(0, 0, 1));
    EXPECT_EQ(normals_of(*geometry)[3], Vec3f(0, 1, 0));
}

TEST(CalcVertexNormals, TrianglesWithoutAreaDoNotCount)
{
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive},
                                                {6},
                                                {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {2, 0, 0}},
                                                {},
                                                {0, 1, 2, 0, 1, 3}});
    calcVertexNormals(geometry);
    EXPECT_EQ(normals_of(*geometry)[0], Vec3f(0, 0, 1));
    EXPECT_EQ(normals_of(*geometry)[3], Vec3f());
}

TEST(CalcVertexNormals, PositionsOfLinesAndPointsHaveNone)
{
    GeometryPtr const geometry = make_geometry(
        {{LinesPrimitive, PointsPrimitive}, {2, 1}, {{0, 0, 0}, {1, 0, 0}, {5, 5, 5}}});
    calcVertexNormals(geometry);
    EXPECT_THAT(normals_of(*geometry), ElementsAre(Vec3f(), Vec3f(), Vec3f()));
}

TEST(CalcVertexNormals, SmallTrianglesKeepTheirShortNormalInTheSum)
{
    // The cross product is shorter than the guard: it counts as it is beside a full one.
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive},
                       {6},
                       {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1e-4f, 0, 0}, {0, 0, 1e-4f}},
                       {},
                       {0, 1, 2, 0, 4, 3}});
    calcVertexNormals(geometry);
    Real32 const area = 1e-4f * 1e-4f;
    EXPECT_EQ(normals_of(*geometry)[0], unit({0, area, 1}));
}

TEST(CalcVertexNormals, APartOfASharedArrayGetsNormalsAndAnIndexOfItsOwn)
{
    std::vector<Pnt3f> positions(1000);
    positions[400] = {0, 0, 0};
    positions[700] = {1, 0, 0};
    positions[200] = {0, 1, 0};
    GeometryPtr const geometry =
        make_geometry({{TrianglesPrimitive}, {3}, positions, {}, {400, 700, 200}});
    UnrecordedRefPtr<GeoVectorProperty> const shared(geometry->getPositions());
    calcVertexNormals(geometry);
    EXPECT_EQ(geometry->getPositions(), shared);
    EXPECT_EQ(geometry->getNormals()->size(), 3u);
    EXPECT_NE(geometry->getIndex(Geometry::NormalsSlot),
              geometry->getIndex(Geometry::PositionsSlot));
    TriangleIterator const it = geometry->beginTriangles();
    for(int corner = 0; corner < 3; ++corner)
        EXPECT_EQ(it.getNormal(corner), Vec3f(0, 0, 1));
}

TEST(CalcVertexNormals, AnArrayOfItsOwnKeepsOneIndexThoughSomeOfItIsUnused)
{
    GeometryPtr const geometry = make_geometry(
        {{TrianglesPrimitive}, {3}, {{0, 0, 0}, {9, 9, 9}, {1, 0, 0}, {0, 1, 0}}, {}, {0, 2, 3}});
    calcVertexNormals(geometry);
    EXPECT_EQ(geometry->getIndex(Geometry::NormalsSlot),
              geometry->getIndex(Geometry::PositionsSlot));
    EXPECT_EQ(normals_of(*geometry),
              (std::vector<Vec3f>{{0, 0, 1}, {0, 0, 0}, {0, 0, 1}, {0, 0, 1}}));
}

TEST(CalcVertexNormals, ManyGeometriesOverOneArrayTakeMemoryForWhatTheyUse)
{
    std::vector<Pnt3f> positions(100000);
    GeometryPtr const first =
        make_geometry({{TrianglesPrimitive}, {3}, positions, {}, {5, 600, 70000}});
    UInt64 const before = get_mem_bytes();
    std::vector<GeometryPtr> geometries;
    for(int i = 0; i < 100; ++i)
    {
        GeometryPtr const geometry =
            make_geometry({{TrianglesPrimitive}, {3}, {}, {}, {5, 600, 70000}});
        geometry->setPositions(first->getPositions());
        calcVertexNormals(geometry);
        geometries.push_back(geometry);
    }
    EXPECT_LT(get_mem_bytes() - before, 100000u * sizeof(Vec3f));
}

TEST(CalcVertexNormals, IndicesOutOfRangeAreLeftOut)
{
    LogCapture log;
    GeometryPtr const geometry = make_geometry({{TrianglesPrimitive},
                                                {6},
                                                {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
                                                {},
                                                {0, 1, 2, 0, 1, 4000000000u}});
    calcVertexNormals(geometry);
    Vec3f const up(0, 0, 1);
    EXPECT_THAT(normals_of(*geometry), ElementsAre(up, up, up));
}

TEST(CalcVertexNormals, NullAndGeometriesWithoutPositionsAreLeftAsTheyAre)
{
    calcVertexNormals(nullptr);
    GeometryPtr const geometry(Geometry::create());
    calcVertexNormals(geometry);
    EXPECT_EQ(geometry->getNormals(), nullptr);
}

TEST(CalcVertexNormals, EqualsThePlainSumOnRandomGeometries)
{
    LogCapture log;
    RandomNumbers random(72);
    for(int round = 0; round < 500; ++round)
    {
        SCOPED_TRACE(round);
        GeometryParts parts;
        parts.types = {TrianglesPrimitive, QuadsPrimitive, PolygonPrimitive};
        parts.lengths = {3 * random.below(5), 4 * random.below(4), random.below(7)};
        for(UInt32 i = 1 + random.below(200); i > 0; --i)
            parts.positions.push_back(random.point(-1, 1));
        UInt32 const size = static_cast<UInt32>(parts.positions.size());
        for(UInt32 i = parts.lengths[0] + parts.lengths[1] + parts.lengths[2] + 1; i > 0; --i)
            parts.index.push_back(random.below(size + size / 10));

        std::vector<Vec3f> sums(size);
        for(std::array<UInt32, 3> const &triangle : expand_parts(parts, triangles_of))
        {
            Pnt3f const p = position_of(parts, triangle[0]);
            Vec3f const cross =
                (position_of(parts, triangle[1]) - p).cross(position_of(parts, triangle[2]) - p);
            for(UInt32 vertex : triangle)
                sums[position_element(parts, vertex)] += unit(cross);
        }
        GeometryPtr const geometry = make_geometry(parts);
        calcVertexNormals(geometry);
        for(TriangleIterator it = geometry->beginTriangles(); it != geometry->endTriangles(); ++it)
        {
            for(int corner = 0; corner < 3; ++corner)
                ASSERT_EQ(it.getNormal(corner), unit(sums[it.getPositionIndex(corner)]));
        }
    }
}
} // namespace
} // namespace OSG::Test
