#include <gtest/gtest.h>

#include <limits>

#include "GeometryBuilders.h"
#include "OSGGeometryIterators.h"
#include "OSGMeshMaker.h"
#include "RandomNumbers.h"

namespace OSG::Test
{
namespace
{
constexpr Real32 NaN = std::numeric_limits<Real32>::quiet_NaN();

DrawMesh mesh_of(Geometry const &geometry)
{
    DrawMesh mesh;
    make_mesh(geometry, mesh);
    return mesh;
}

TEST(MeshMakerTest, AGeometryWithoutAnythingHasAnEmptyMesh)
{
    GeometryPtr const geometry(Geometry::create());
    DrawMesh const mesh = mesh_of(*geometry);
    EXPECT_TRUE(mesh.positions.empty());
    EXPECT_TRUE(mesh.triangles.empty());
}

TEST(MeshMakerTest, AVertexThatPrimitivesShareStandsOnce)
{
    GeometryPtr const geometry = make_geometry(one_primitive(
        QuadsPrimitive, {Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 1, 0), Pnt3f(0, 1, 0)}));
    DrawMesh const mesh = mesh_of(*geometry);
    EXPECT_EQ(mesh.positions.size(), 4u);
    EXPECT_EQ(mesh.triangles, (std::vector<UInt32>{0, 1, 2, 0, 2, 3}));
}

TEST(MeshMakerTest, OnlyTheElementsInUseOfALargeArrayAreTaken)
{
    GeometryParts parts;
    parts.positions.resize(10000);
    parts.types = {TrianglesPrimitive};
    parts.lengths = {3};
    parts.index = {9999, 5, 700};
    DrawMesh const mesh = mesh_of(*make_geometry(parts));
    EXPECT_EQ(mesh.positions.size(), 3u);
    EXPECT_EQ(mesh.triangles, (std::vector<UInt32>{0, 1, 2}));
}

TEST(MeshMakerTest, PrimitivesThatAreNotFiniteAreLeftOut)
{
    GeometryPtr const geometry = make_geometry(
        one_primitive(TrianglesPrimitive, {Pnt3f(NaN, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 1, 0),
                                           Pnt3f(0, 0, 0), Pnt3f(1, 0, 0), Pnt3f(1, 1, 0)}));
    DrawMesh const mesh = mesh_of(*geometry);
    EXPECT_EQ(mesh.triangles.size(), 3u);
    for(Pnt3f const &position : mesh.positions)
        EXPECT_EQ(position[0], position[0]);
}

TEST(MeshMakerTest, ColoursOfThreeNumbersAreOpaqueAndTexturesGetAQ)
{
    GeometryPtr const geometry =
        make_geometry(one_primitive(PointsPrimitive, {Pnt3f(0, 0, 0), Pnt3f(1, 0, 0)}));
    geometry->setColors(make_property<GeoColor3fProperty>(std::vector{Color3f(0.5f, 0.25f, 1)}));
    geometry->setTexCoords(
        make_property<GeoVec2fProperty>(std::vector{Vec2f(3.f, 4.f), Vec2f(5.f, 6.f)}));
    DrawMesh const mesh = mesh_of(*geometry);
    EXPECT_EQ(mesh.points, (std::vector<UInt32>{0, 1}));
    EXPECT_EQ(mesh.colors, (std::vector{Color4f(0.5f, 0.25f, 1, 1), Color4f(0, 0, 0, 1)}));
    EXPECT_EQ(mesh.texCoords, (std::vector{Vec4f(3.f, 4.f, 0.f, 1.f), Vec4f(5.f, 6.f, 0.f, 1.f)}));
}

TEST(MeshMakerTest, TheOrderOfMixedPrimitivesIsKept)
{
    using Run = DrawMesh::Run;
    using Kind = DrawMesh::Kind;
    GeometryParts parts;
    parts.positions.resize(13);
    parts.types = {LinesPrimitive, QuadsPrimitive, TrianglesPrimitive, PointsPrimitive,
                   LinesPrimitive};
    parts.lengths = {2, 4, 3, 2, 2};
    EXPECT_EQ(mesh_of(*make_geometry(parts)).runs,
              (std::vector{Run{Kind::Lines, 2}, Run{Kind::Triangles, 9}, Run{Kind::Points, 2},
                           Run{Kind::Lines, 2}}));
    parts.types = {TrianglesPrimitive, LinesPrimitive, PointsPrimitive};
    parts.lengths = {3, 4, 2};
    EXPECT_TRUE(mesh_of(*make_geometry(parts)).runs.empty());
}

/// Corners of a mesh or of what iterators deliver.
struct Corner
{
    Pnt3f position;
    Vec3f normal;

    bool operator==(Corner const &) const = default;
};

TEST(MeshMakerTest, AMeshHasTheCornersThatIteratorsDeliver)
{
    RandomNumbers random(7);
    for(int round = 0; round < 400; ++round)
    {
        GeometryParts parts;
        UInt32 const vertices = 1 + random.below(30);
        for(UInt32 i = 0; i < vertices; ++i)
            parts.positions.push_back(random.point(-1, 1));
        for(UInt32 i = random.below(3) * vertices / 2; i > 0; --i)
            parts.normals.push_back(random.vector());
        for(UInt32 i = 1 + random.below(4); i > 0; --i)
        {
            parts.types.push_back(random.below(10));
            parts.lengths.push_back(random.below(12));
        }
        bool const isIndexed = random.below(2) == 0;
        for(UInt32 i = isIndexed ? random.below(40) : 0; i > 0; --i)
            parts.index.push_back(random.below(vertices + 2));
        for(UInt32 i = isIndexed ? random.below(2) * 40 : 0; i > 0; --i)
            parts.normalIndex.push_back(random.below(vertices));
        GeometryPtr const geometry = make_geometry(parts);
        DrawMesh const mesh = mesh_of(*geometry);
        std::vector<Corner> drawn;
        auto const add = [&](UInt32 vertex)
        {
            drawn.push_back({mesh.positions.at(vertex),
                             mesh.normals.empty() ? Vec3f() : mesh.normals.at(vertex)});
        };
        for(UInt32 vertex : mesh.triangles)
            add(vertex);
        for(UInt32 vertex : mesh.lines)
            add(vertex);
        std::vector<Corner> delivered;
        for(TriangleIterator it = geometry->beginTriangles(); it != geometry->endTriangles(); ++it)
        {
            for(Int32 i = 0; i < 3; ++i)
                delivered.push_back({it.getPosition(i), it.getNormal(i)});
        }
        for(LineIterator it = geometry->beginLines(); it != geometry->endLines(); ++it)
        {
            for(Int32 i = 0; i < 2; ++i)
                delivered.push_back({it.getPosition(i), it.getNormal(i)});
        }
        ASSERT_TRUE(drawn == delivered) << round;
    }
}
} // namespace
} // namespace OSG::Test
