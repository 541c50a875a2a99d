/// \file
/// The geometries that come of the meshes of 3DS files.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "Chunks3DS.h"
#include "RandomNumbers.h"
#include "Scene3DS.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
TEST(Meshes3DS, AFileWithoutNodesGivesAGroupForEachMeshWithItsVerticesAsTheyAre)
{
    Scene3DS const scene = read_3ds(file_3ds(triangle_3ds("b", 5) + triangle_3ds("a", 7)));
    EXPECT_EQ(scene.describe(), "[[[b1]] [[a1]]]");
    EXPECT_THAT(positions_of(*scene.geometries()[0]),
                ElementsAre(Pnt3f(5, 0, 0), Pnt3f(6, 0, 0), Pnt3f(5, 1, 0)));
    EXPECT_THAT(scene.log, IsEmpty());
    EXPECT_TRUE(scene.isComplete);
}

TEST(Meshes3DS, AnOutermostChunkWithoutContentGivesAnEmptyGroup)
{
    for(unsigned const kind : {0x4D4Du, 0x3DAAu, 0xC23Du, 0x3D3Du})
    {
        Scene3DS const scene = read_3ds(chunk(kind));
        EXPECT_EQ(scene.describe(), "[]");
        EXPECT_THAT(scene.log, IsEmpty());
    }
}

TEST(Meshes3DS, ABareEditorSectionIsAFile)
{
    EXPECT_EQ(read_3ds(chunk(0x3D3D, triangle_3ds("a"))).describe(), "[[[a1]]]");
}

TEST(Meshes3DS, EachLaterSectionAddsToTheFile)
{
    std::string const sections =
        chunk(0x3D3D, triangle_3ds("a")) + chunk(0x3D3D, triangle_3ds("b"));
    EXPECT_EQ(read_3ds(chunk(0x4D4D, sections)).describe(), "[[[a1]] [[b1]]]");
}

TEST(Meshes3DS, FacesWithoutAMaterialComeInTheLastListAndOtherListsMayBeEmpty)
{
    std::string const mesh = triangle_3ds("m", 0, "", face_material_3ds("second", {0}));
    Scene3DS const scene = read_3ds(
        file_3ds(material_3ds("first") + material_3ds("second") + mesh + triangle_3ds("n")));
    EXPECT_EQ(scene.describe(), "[[[] [m1] []] [[] [] [n1]]]");
    EXPECT_STREQ(getName(chunks_of(*scene.geometries()[0])), "second");
    EXPECT_EQ(scene.geometries()[1]->getMaterial(), nullptr);
}

TEST(Meshes3DS, AMaterialThatTheFileDefinesLaterIsUnknown)
{
    std::string const mesh = triangle_3ds("m", 0, "", face_material_3ds("later", {0}));
    EXPECT_EQ(read_3ds(file_3ds(mesh + material_3ds("later"))).describe(), "[[[] [m1]]]");
}

TEST(Meshes3DS, OfMaterialsOfOneNameTheFirstIsMeant)
{
    std::string const mesh = triangle_3ds("m", 0, "", face_material_3ds("same", {0}));
    EXPECT_EQ(read_3ds(file_3ds(material_3ds("same") + material_3ds("same") + mesh)).describe(),
              "[[[m1] [] []]]");
}

std::string const TwoFaces = points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 1});

TEST(Meshes3DS, TheLastGroupThatNamesAFaceGivesItsMaterialAndFacesBeyondTheEndAreIgnored)
{
    std::string const groups = face_material_3ds("a", {0, 1, 77}) + face_material_3ds("b", {1}) +
                               face_material_3ds("unknown", {0});
    std::string const mesh =
        mesh_3ds("m", TwoFaces + faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}}, groups));
    EXPECT_EQ(read_3ds(file_3ds(material_3ds("a") + material_3ds("b") + mesh)).describe(),
              "[[[] [m1] [m1]]]");
}

TEST(Meshes3DS, SmoothingGroupsSplitInAscendingUnsignedOrderWithVerticesOfTheirOwn)
{
    std::string const faces =
        faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}}, smoothing_3ds({0x80000000u, 4}));
    Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", TwoFaces + faces)));
    ASSERT_EQ(scene.describe(), "[[[m1 m1]]]");
    EXPECT_THAT(positions_of(*scene.geometries()[0]), // group 4: vertices in the order of their use
                ElementsAre(Pnt3f(1, 0, 0), Pnt3f(1, 1, 1), Pnt3f(0, 1, 0)));
    EXPECT_EQ(positions_of(*scene.geometries()[1])[0], Pnt3f(0, 0, 0));
}

TEST(Meshes3DS, AVertexOfSeveralFacesHasTheNormalOfTheLastOne)
{
    std::string const faces = faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}});
    Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", TwoFaces + faces)));
    Geometry const &geometry = *scene.geometries()[0];
    EXPECT_EQ(normal_of(geometry, 0), Vec3f(0, 0, 1));
    Real32 const third = 1.f / std::sqrt(3.f);
    for(UInt32 const shared : {1u, 2u})
        EXPECT_TRUE(normal_of(geometry, shared).equals(Vec3f(-third, -third, third), 1e-6f));
}

TEST(Meshes3DS, AMeshMayHaveAsManyVerticesAsItsNumbersReach)
{
    constexpr UInt32 Most = 65535;
    std::vector<float> points(3 * Most);
    std::vector<Face3DS> faces;
    for(UInt32 i = 0; i < Most; ++i)
        points[3 * i] = static_cast<float>(i);
    for(UInt32 i = 0; i < Most; i += 3)
        faces.push_back({{Most - 1 - i, Most - 2 - i, Most - 3 - i}});
    Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", points_3ds(points) + faces_3ds(faces))));
    std::vector<Pnt3f> const at = positions_of(*scene.geometries().at(0));
    ASSERT_EQ(at.size(), Most);
    for(UInt32 i = 0; i < Most; ++i)
        ASSERT_EQ(at[i][0], static_cast<Real32>(Most - 1 - i));
}

// More vertices than are looked at together, in two parts.
TEST(Meshes3DS, TheNormalOfTheLastFaceIsKeptInMeshesOfManyVerticesToo)
{
    RandomNumbers random(73);
    std::vector<float> points(3 * 900);
    for(float &number : points)
        number = random.real(-9, 9);
    std::vector<Face3DS> faces(2000);
    std::vector<std::uint32_t> groups(faces.size());
    for(std::size_t i = 0; i < faces.size(); ++i)
    {
        UInt32 const corner = random.below(900);
        faces[i] = {{corner, (corner + 1 + random.below(400)) % 900,
                     (corner + 401 + random.below(400)) % 900}};
        groups[i] = random.below(8) == 0 ? 2 : 1;
    }
    Scene3DS const scene = read_3ds(
        file_3ds(mesh_3ds("m", points_3ds(points) + faces_3ds(faces, smoothing_3ds(groups)))));
    ASSERT_EQ(scene.geometries().size(), 2u);
    for(UInt32 part = 0; part < 2; ++part)
    {
        Geometry const &geometry = *scene.geometries()[part];
        std::vector<Pnt3f> const at = positions_of(geometry);
        std::vector<Vec3f> expected(at.size());
        for(auto it = geometry.beginTriangles(); it != geometry.endTriangles(); ++it)
        {
            Vec3f normal = (it.getPosition(1) - it.getPosition(0))
                               .cross(it.getPosition(2) - it.getPosition(0));
            normal.normalize();
            for(Int32 i = 0; i < 3; ++i)
                expected[it.getPositionIndex(i)] = normal;
        }
        for(UInt32 i = 0; i < at.size(); ++i)
            ASSERT_TRUE(normal_of(geometry, i).equals(expected[i], 1e-3f)) << part << " " << i;
    }
}

TEST(Meshes3DS, EachFaceIsAPrimitiveOfItsOwn)
{
    std::string const faces = faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}});
    Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", TwoFaces + faces)));
    Geometry const &geometry = *scene.geometries()[0];
    for(UInt32 i = 0; i < 2; ++i)
    {
        EXPECT_EQ(geometry.getTypes()->getValue(i), UInt32(TrianglesPrimitive));
        EXPECT_EQ(geometry.getLengths()->getValue(i), 3u);
    }
    EXPECT_EQ(geometry.getIndex(Geometry::PositionsSlot), geometry.getIndex(Geometry::NormalsSlot));
}

struct AxisCase
{
    char const *name;
    std::vector<float> points;
    Vec3f normal;
};
void PrintTo(AxisCase const &row, std::ostream *out) { *out << row.name; }

class ShortNormals3DS : public testing::TestWithParam<AxisCase>
{
};

TEST_P(ShortNormals3DS, BecomeThePositiveAxisOfTheirLargestComponent)
{
    Scene3DS const scene =
        read_3ds(file_3ds(mesh_3ds("m", points_3ds(GetParam().points) + faces_3ds({{{0, 1, 2}}}))));
    EXPECT_EQ(normal_of(*scene.geometries()[0], 0), GetParam().normal);
}

INSTANTIATE_TEST_SUITE_P(
    Meshes3DS, ShortNormals3DS,
    testing::Values(AxisCase{"NoArea", {1, 1, 1, 2, 2, 2, 3, 3, 3}, Vec3f(1, 0, 0)},
                    AxisCase{"SmallAlongZ", {0, 0, 0, 1e-3f, 0, 0, 0, 1e-3f, 0}, Vec3f(0, 0, 1)},
                    AxisCase{"SmallAlongY", {0, 0, 0, 0, 0, 1e-3f, 1e-3f, 0, 0}, Vec3f(0, 1, 0)},
                    AxisCase{"SmallAgainstZ", {0, 0, 0, 0, 1e-3f, 0, 1e-3f, 0, 0}, Vec3f(1, 0, 0)},
                    AxisCase{"LargeAgainstZ", {0, 0, 0, 0, 1, 0, 1, 0, 0}, Vec3f(0, 0, -1)}),
    [](auto const &row) { return std::string(row.param.name); });

TEST(Meshes3DS, TextureCoordinatesAreThoseOfTheFile)
{
    Scene3DS const scene =
        read_3ds(file_3ds(triangle_3ds("m", 0, tex_coords_3ds({0.25f, -3, 1, 1, 2, 5}))));
    Real32 numbers[2];
    scene.geometries()[0]->getTexCoords()->getValue(numbers, 0);
    EXPECT_EQ(Vec2f(numbers[0], numbers[1]), Vec2f(0.25f, -3));
    EXPECT_EQ(read_3ds(file_3ds(triangle_3ds("m"))).geometries()[0]->getTexCoords(), nullptr);
    EXPECT_EQ(read_3ds(file_3ds(triangle_3ds("m", 0, tex_coords_3ds({}))))
                  .geometries()[0]
                  ->getTexCoords(),
              nullptr);
}

TEST(Meshes3DS, MoreTextureCoordinatesThanPointsAddZeroVertices)
{
    std::string const mesh = mesh_3ds(
        "m", points_3ds({9, 9, 9}) + tex_coords_3ds({1, 1, 2, 2, 3, 3}) + faces_3ds({{{0, 1, 2}}}));
    Scene3DS const scene = read_3ds(file_3ds(mesh));
    EXPECT_THAT(positions_of(*scene.geometries()[0]),
                ElementsAre(Pnt3f(9, 9, 9), Pnt3f(0, 0, 0), Pnt3f(0, 0, 0)));
}

TEST(Meshes3DS, FewerTextureCoordinatesAndLaterPointsLeaveZeroes)
{
    std::string const few = mesh_3ds("m", points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
                                              tex_coords_3ds({7, 7}) + faces_3ds({{{0, 1, 2}}}));
    std::string const later =
        mesh_3ds("m", tex_coords_3ds({7, 7}) + points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
                          faces_3ds({{{0, 1, 2}}}));
    for(std::string const &mesh : {few, later})
    {
        Scene3DS const scene = read_3ds(file_3ds(mesh));
        Real32 numbers[2];
        scene.geometries()[0]->getTexCoords()->getValue(numbers, 2);
        EXPECT_EQ(Vec2f(numbers[0], numbers[1]), Vec2f(0, 0));
    }
}

TEST(Meshes3DS, ALaterListOfTextureCoordinatesReplacesAllOfTheFirst)
{
    std::string const points = points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0});
    std::string const all = tex_coords_3ds({1, 2, 3, 4, 5, 6});
    std::string const few = tex_coords_3ds({7, 8});
    std::string const face = faces_3ds({{{0, 1, 2}}});
    std::vector<std::string> const orders[] = {{points, all, few, face},
                                               {all, points, few, face},
                                               {all, points_3ds({}), few, points, face}};
    for(std::vector<std::string> const &order : orders)
    {
        std::string parts;
        for(std::string const &part : order)
            parts += part;
        Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", parts)));
        for(UInt32 i = 0; i < 3; ++i)
        {
            Real32 numbers[2];
            scene.geometries()[0]->getTexCoords()->getValue(numbers, i);
            EXPECT_EQ(Vec2f(numbers[0], numbers[1]), i == 0 ? Vec2f(7, 8) : Vec2f(0, 0));
        }
    }
}

TEST(Meshes3DS, MeshesWithoutContentAreShownOneByOne)
{
    std::string const object =
        chunk(0x4000, Bytes().text("o").raw(chunk(0x4100) + chunk(0x4100, chunk(0x9999))));
    std::string const full = triangle_3ds("o");
    EXPECT_EQ(read_3ds(file_3ds(object + mesh_3ds("p", "") + full + object)).describe(),
              "[[[]] [[]] [[]] [[o1]] [[]] [[]]]");
    std::string const node = instance_3ds(0, "o", NoParent3DS);
    EXPECT_EQ(read_3ds(file_3ds(object + full, node)).describe(), "[[]]");
    EXPECT_EQ(read_3ds(file_3ds(full + object, node)).describe(), "[[o1]]");
}

TEST(Meshes3DS, ASecondListOfFacesReplacesTheFirstWithItsMaterialsAndSmoothing)
{
    std::string const first = faces_3ds({{{0, 1, 2}}, {{1, 3, 2}}},
                                        face_material_3ds("a", {0, 1}) + smoothing_3ds({1, 2}));
    Scene3DS const scene = read_3ds(
        file_3ds(material_3ds("a") + mesh_3ds("m", TwoFaces + first + faces_3ds({{{1, 3, 2}}}))));
    EXPECT_EQ(scene.describe(), "[[[] [m1]]]");
}

TEST(Meshes3DS, ASecondMeshOfAnObjectIsAMeshOfItsOwnUnderItsName)
{
    std::string const parts = points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) + faces_3ds({{{0, 1, 2}}});
    std::string const object =
        chunk(0x4000, Bytes().text("o").raw(chunk(0x4100, parts) + chunk(0x4100, parts)));
    EXPECT_EQ(read_3ds(file_3ds(object)).describe(), "[[[o1]] [[o1]]]");
}

TEST(Meshes3DS, FacesBeyondTheVerticesAreDroppedWithOneWarningAfterMaterialsWereGiven)
{
    std::string const faces =
        faces_3ds({{{0, 1, 9}}, {{0, 1, 2}}, {{4, 1, 2}}}, face_material_3ds("a", {1}));
    Scene3DS const scene =
        read_3ds(file_3ds(material_3ds("a") + mesh_3ds("broken\x1b[0m", TwoFaces + faces)));
    EXPECT_EQ(scene.describe(), "[[[broken\x1b[0m1] []]]");
    EXPECT_THAT(scene.log,
                ElementsAre("2: Mesh 'broken\\x1B[0m': faces that name vertices that are "
                            "not there are dropped: 2\n"));
    EXPECT_FALSE(scene.isComplete);
}

TEST(Meshes3DS, FacesWithoutPointsAreAllDropped)
{
    Scene3DS const scene = read_3ds(file_3ds(mesh_3ds("m", faces_3ds({{{0, 0, 0}}}))));
    EXPECT_EQ(scene.describe(), "[[[]]]");
    EXPECT_EQ(scene.log.size(), 1u);
}

TEST(Meshes3DS, FacesMayStandBeforeThePoints)
{
    std::string const mesh =
        mesh_3ds("m", faces_3ds({{{0, 1, 2}}}) + points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}));
    EXPECT_EQ(read_3ds(file_3ds(mesh)).describe(), "[[[m1]]]");
}

TEST(Meshes3DS, AnEmptyListOfFacesHasNoPartsThatCouldBeDamaged)
{
    std::string const faces = faces_3ds({}, chunk_of_length(0x4150, 2, ""));
    EXPECT_EQ(read_3ds(file_3ds(mesh_3ds("m", TwoFaces + faces))).describe(), "[[[]]]");
}

// --- meshes that their matrix mirrors ---

TEST(Meshes3DS, AMeshThatItsMatrixMirrorsIsMirroredAlongItsFirstAxisWithoutNodesToo)
{
    std::string const mesh =
        triangle_3ds("m", 5, matrix_3ds({-1, 0, 0, 0, 1, 0, 0, 0, 1, 10, 0, 0}));
    EXPECT_THAT(positions_of(*read_3ds(file_3ds(mesh)).geometries()[0]),
                ElementsAre(Pnt3f(15, 0, 0), Pnt3f(14, 0, 0), Pnt3f(15, 1, 0)));
}

TEST(Meshes3DS, ASingularOrNotANumberMatrixMirrorsNothing)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    for(Real32 const first : {0.f, nan})
    {
        Scene3DS const scene = read_3ds(
            file_3ds(triangle_3ds("m", 5, matrix_3ds({first, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}))));
        EXPECT_EQ(positions_of(*scene.geometries()[0])[0], Pnt3f(5, 0, 0));
        EXPECT_THAT(scene.log, IsEmpty()); // nobody needs the inverse
    }
}

TEST(Meshes3DS, NumbersThatAreNotFiniteStayWithTheirVertices)
{
    Real32 const nan = std::numeric_limits<Real32>::quiet_NaN();
    std::string const mesh =
        mesh_3ds("m", points_3ds({nan, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1}) +
                          faces_3ds({{{0, 1, 2}}, {{3, 1, 2}}}, smoothing_3ds({1, 2})));
    Scene3DS const scene = read_3ds(file_3ds(mesh));
    EXPECT_TRUE(std::isnan(positions_of(*scene.geometries()[0])[0][0]));
    EXPECT_TRUE(std::isfinite(normal_of(*scene.geometries()[1], 0).length()));
}
} // namespace
