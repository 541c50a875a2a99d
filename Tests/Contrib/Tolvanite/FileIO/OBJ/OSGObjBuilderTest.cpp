#include "OSGObjBuilder.h"

#include <gmock/gmock.h>

#include "LogCapture.h"
#include "OSGGeometryView.h"
#include "ObjScene.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// Records as a reader would leave them, and the scene made of them.
class ObjBuilderTest : public testing::Test
{
  protected:
    ObjBuilderTest()
    {
        ObjVertexArrays arrays = _builder.arrays();
        for(int i = 0; i < 4; ++i)
        {
            arrays.positions.emplace_back(i % 2, i / 2, 0);
            _corners.push_back({{i, -1, -1}});
        }
    }

    void addTexCoords(int count)
    {
        for(int i = 0; i < count; ++i)
            _builder.arrays().texCoords.emplace_back(i * 0.25f, 0.5f);
    }
    void addNormals(int count)
    {
        for(int i = 0; i < count; ++i)
            _builder.arrays().normals.emplace_back(0, 0, i + 1);
    }

    void addFace(std::vector<ObjTiePoint> const &corners)
    {
        for(ObjTiePoint const &corner : corners)
            _records.addTiePoint(corner);
        _records.endFace();
    }
    void addTriangle() { addFace({_corners[0], _corners[1], _corners[2]}); }

    ObjScene build()
    {
        LogCapture log;
        ObjScene scene;
        scene.root = _builder.build(_records, _materials);
        for(LogCapture::Message const &message : log.messages())
            scene.log.push_back(std::to_string(message.level) + ": " + message.text);
        return scene;
    }
    /// For records of one mesh that works.
    Geometry &buildGeometry()
    {
        _scene = build();
        EXPECT_THAT(_scene.log, IsEmpty());
        return *_scene.geometries().at(0);
    }

    ObjBuilder _builder;
    ObjRecords _records;
    ObjMaterialSlots _materials;
    std::vector<ObjTiePoint> _corners; ///< one for each of four positions
    ObjScene _scene;
};

std::vector<Real32> row(std::initializer_list<Real32> numbers) { return numbers; }
} // namespace

// --- nodes ---

TEST_F(ObjBuilderTest, TheOnlyMeshIsTheRootItself)
{
    addTriangle();
    Geometry const &geometry = buildGeometry();
    EXPECT_EQ(_scene.root->getCore(), &geometry);
    EXPECT_EQ(_scene.root->getNChildren(), 0u);
    EXPECT_EQ(_scene.root->getParent(), nullptr);
}

TEST_F(ObjBuilderTest, SeveralMeshesStandBelowAGroup)
{
    addTriangle();
    _records.startMesh();
    addTriangle();
    ObjScene const scene = build();
    EXPECT_EQ(describe_scene(scene.root), "Group[(0 1 2), (0 1 2)]");
}

TEST_F(ObjBuilderTest, MeshesAreCountedWhetherOrNotTheyAreBuilt)
{
    addTriangle();
    _records.startMesh();
    EXPECT_EQ(describe_scene(build().root), "Group[(0 1 2)]");
}

TEST_F(ObjBuilderTest, NoMeshThatCanBeBuiltGivesNull)
{
    ObjScene const scene = build();
    EXPECT_EQ(scene.root, nullptr);
    EXPECT_THAT(scene.log, ElementsAre("2: Mesh with empty faceList\n"));
}

TEST_F(ObjBuilderTest, TheCallerOwnsTheTree)
{
    addTriangle();
    _records.startMesh();
    addTriangle();
    ObjScene const scene = build();
    EXPECT_EQ(scene.root->getRefCount(), 1);
    EXPECT_EQ(scene.root->getChild(0)->getRefCount(), 1);
    EXPECT_EQ(scene.geometries()[0]->getRefCount(), 1);
}

// --- primitives ---

TEST_F(ObjBuilderTest, FacesBecomePolygonsNewestFirst)
{
    addTriangle();
    addFace({_corners[3], _corners[2], _corners[1], _corners[0]});
    Geometry const &geometry = buildGeometry();
    EXPECT_THAT(values_of(geometry.getTypes()), ElementsAre(9, 9));
    EXPECT_THAT(values_of(geometry.getLengths()), ElementsAre(4, 3));
    EXPECT_THAT(values_of(geometry.getIndex(Geometry::PositionsSlot)),
                ElementsAre(3, 2, 1, 0, 0, 1, 2));
    EXPECT_EQ(count_triangles(geometry), 3u);
}

TEST_F(ObjBuilderTest, TypesTakeABytePerFaceAndLengthsAWord)
{
    addTriangle();
    Geometry const &geometry = buildGeometry();
    EXPECT_NE(dynamic_cast<GeoUInt8Property *>(geometry.getTypes()), nullptr);
    EXPECT_NE(dynamic_cast<GeoUInt32Property *>(geometry.getLengths()), nullptr);
}

// --- one index ---

TEST_F(ObjBuilderTest, EqualIndicesShareOneArrayInThreeSlots)
{
    addTexCoords(4);
    addNormals(4);
    addFace({{{0, 0, 0}}, {{1, 1, 1}}, {{3, 3, 3}}});
    Geometry const &geometry = buildGeometry();
    GeoIntegralProperty *const index = geometry.getIndex(Geometry::PositionsSlot);
    EXPECT_THAT(values_of(index), ElementsAre(0, 1, 3));
    EXPECT_EQ(geometry.getIndex(Geometry::NormalsSlot), index);
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot), index);
    EXPECT_THAT(vertex_values(geometry, Geometry::TexCoordsSlot),
                ElementsAre(row({0.f, 0.5f}), row({0.25f, 0.5f}), row({0.75f, 0.5f})));
}

TEST_F(ObjBuilderTest, TheOneIndexIsAttachedToSlotsWithoutAnArrayToo)
{
    addFace({_corners[0], _corners[1], _corners[2], _corners[3]});
    Geometry const &geometry = buildGeometry();
    GeoIntegralProperty *const index = geometry.getIndex(Geometry::PositionsSlot);
    EXPECT_EQ(geometry.getTexCoords(), nullptr);
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot), index);
    EXPECT_EQ(geometry.getIndex(Geometry::NormalsSlot), index);
}

TEST_F(ObjBuilderTest, KindsThatTheFileHasNoElementsOfAreLeftOut)
{
    addFace({{{0, 0, 0}}, {{1, 1, 1}}, {{2, 2, 2}}});
    Geometry const &geometry = buildGeometry();
    EXPECT_EQ(geometry.getTexCoords(), nullptr);
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot),
              geometry.getIndex(Geometry::PositionsSlot));
    EXPECT_EQ(vertex_values(geometry, Geometry::NormalsSlot)[0], row({0, 0, 1}));
}

TEST_F(ObjBuilderTest, AMissingIndexInAMixedRunIsBeyondEveryArray)
{
    addFace({{{0, -1, -1}}, {{-1, -1, -1}}, {{2, -1, -1}}});
    LogCapture log;
    ObjScene const scene = build();
    EXPECT_EQ(describe_scene(scene.root), "(0 4294967295 2)");
    EXPECT_EQ(count_triangles(scene.root), 0u);
}

// --- several indices ---

TEST_F(ObjBuilderTest, DifferentIndicesBecomeOneWithTheSameVertices)
{
    addTexCoords(4);
    addFace({{{0, 1, -1}}, {{1, 2, -1}}, {{2, 3, -1}}});
    Geometry const &geometry = buildGeometry();
    GeoIntegralProperty *const index = geometry.getIndex(Geometry::PositionsSlot);
    EXPECT_THAT(values_of(index), ElementsAre(0, 1, 2));
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot), index);
    EXPECT_THAT(vertex_values(geometry, Geometry::PositionsSlot),
                ElementsAre(row({0, 0, 0}), row({1, 0, 0}), row({0, 1, 0})));
    EXPECT_THAT(vertex_values(geometry, Geometry::TexCoordsSlot),
                ElementsAre(row({0.25f, 0.5f}), row({0.5f, 0.5f}), row({0.75f, 0.5f})));
}

TEST_F(ObjBuilderTest, NormalsOfTheFileAreNotComputedAnew)
{
    addNormals(2);
    addFace({{{0, -1, 1}}, {{1, -1, 1}}, {{2, -1, 0}}});
    Geometry const &geometry = buildGeometry();
    EXPECT_THAT(vertex_values(geometry, Geometry::NormalsSlot),
                ElementsAre(row({0, 0, 2}), row({0, 0, 2}), row({0, 0, 1})));
}

TEST_F(ObjBuilderTest, WithoutElementsOfTheOtherKindsOnlyThePositionsHaveAnIndex)
{
    addFace({{{0, 1, -1}}, {{1, 2, -1}}, {{2, 3, -1}}});
    Geometry const &geometry = buildGeometry();
    EXPECT_EQ(geometry.getTexCoords(), nullptr);
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot), nullptr);
    EXPECT_THAT(values_of(geometry.getIndex(Geometry::PositionsSlot)), ElementsAre(0, 1, 2));
}

TEST_F(ObjBuilderTest, AKindThatOneFaceLacksIsDroppedForAll)
{
    addTexCoords(4);
    addNormals(4);
    addFace({{{0, 3, 1}}, {{1, 2, 1}}, {{2, 1, 1}}});
    addFace({{{0, -1, 2}}, {{1, -1, 2}}, {{2, -1, 2}}});
    Geometry const &geometry = buildGeometry();
    EXPECT_EQ(geometry.getTexCoords(), nullptr);
    EXPECT_EQ(geometry.getIndex(Geometry::TexCoordsSlot), nullptr);
    EXPECT_EQ(vertex_values(geometry, Geometry::NormalsSlot).back(), row({0, 0, 2}));
    EXPECT_EQ(count_triangles(geometry), 2u);
}

TEST_F(ObjBuilderTest, ACornerWithoutATexCoordAmongOthersReadsAsZero)
{
    addTexCoords(4);
    addFace({{{0, 1, -1}}, {{1, -1, -1}}, {{2, 3, -1}}});
    Geometry const &geometry = buildGeometry();
    EXPECT_THAT(vertex_values(geometry, Geometry::TexCoordsSlot),
                ElementsAre(row({0.25f, 0.5f}), row({0, 0}), row({0.75f, 0.5f})));
}

TEST_F(ObjBuilderTest, FacesWithoutAnyPositionGiveAGeometryThatDeliversNothing)
{
    addTexCoords(4);
    addFace({{{-1, 1, -1}}, {{-1, 2, -1}}, {{-1, 3, -1}}});
    LogCapture log;
    ObjScene const scene = build();
    ASSERT_EQ(scene.geometries().size(), 1u);
    EXPECT_THAT(values_of(scene.geometries()[0]->getIndex(Geometry::PositionsSlot)),
                ElementsAre(4294967295u, 4294967295u, 4294967295u));
    EXPECT_EQ(count_triangles(scene.root), 0u);
}

// --- arrays ---

TEST_F(ObjBuilderTest, AllGeometriesShareTheArraysOfTheFile)
{
    addTriangle();
    _records.startMesh();
    addFace({_corners[1], _corners[2], _corners[3]});
    ObjScene const scene = build();
    ASSERT_EQ(scene.geometries().size(), 2u);
    GeoVectorProperty *const positions = scene.geometries()[0]->getPositions();
    EXPECT_EQ(positions->size(), 4u);
    EXPECT_EQ(scene.geometries()[1]->getPositions(), positions);
    EXPECT_EQ(positions, dynamic_cast<GeoPnt3fProperty *>(positions));
}

// --- normals ---

TEST_F(ObjBuilderTest, NormalsAreComputedWhereTheFileHasNone)
{
    addTriangle();
    Geometry const &geometry = buildGeometry();
    EXPECT_THAT(vertex_values(geometry, Geometry::NormalsSlot),
                ElementsAre(row({0, 0, 1}), row({0, 0, 1}), row({0, 0, 1})));
}

TEST_F(ObjBuilderTest, ComputedNormalsOfFlatFacesAreZero)
{
    addFace({_corners[0], _corners[0], _corners[1]});
    addFace({_corners[1], _corners[1]});
    Geometry const &geometry = buildGeometry();
    for(std::vector<Real32> const &normal : vertex_values(geometry, Geometry::NormalsSlot))
        EXPECT_EQ(normal, row({0, 0, 0}));
}

TEST_F(ObjBuilderTest, ComputedNormalsOfFacesWhoseCornersLieOnALineAreZero)
{
    for(Real32 scale : {1e-30f, 1.f, 1e18f})
    {
        std::size_t const first = _builder.arrays().positions.size();
        std::vector<ObjTiePoint> corners;
        for(int i = 0; i < 4; ++i)
        {
            _builder.arrays().positions.emplace_back(i * scale, 0, i * scale);
            corners.push_back({{static_cast<Int32>(first) + i, -1, -1}});
        }
        addFace(corners);
    }
    Geometry const &geometry = buildGeometry();
    for(std::vector<Real32> const &normal : vertex_values(geometry, Geometry::NormalsSlot))
        EXPECT_EQ(normal, row({0, 0, 0}));
}

// --- materials ---

TEST_F(ObjBuilderTest, MeshesWithoutMaterialGetOneOfLightGrey)
{
    addTriangle();
    _records.startMesh();
    addTriangle();
    ObjScene const scene = build();
    SimpleTexturedMaterial *const material = material_of(*scene.geometries().at(0));
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(material->getDiffuse(), Color3f(0.8f, 0.8f, 0.8f));
    EXPECT_EQ(material->getSpecular(), Color3f(1.f, 1.f, 1.f));
    EXPECT_EQ(material->getShininess(), 20.f);
    EXPECT_EQ(material->getAmbient(), Color3f(0.2f, 0.2f, 0.2f));
    EXPECT_EQ(material->getTransparency(), 0.f);
    EXPECT_EQ(material->getImage(), nullptr);
    EXPECT_EQ(material->getMinFilter(), 0x2702u);
    EXPECT_EQ(material->getMagFilter(), 0x2601u);
    EXPECT_EQ(material_of(*scene.geometries().at(1)), material);
}

TEST_F(ObjBuilderTest, MeshesOfOneSlotShareItsMaterial)
{
    _materials.emplace_back(SimpleTexturedMaterial::create());
    _records.setMaterial(0);
    addTriangle();
    _records.startMesh();
    addTriangle();
    _records.startMesh();
    _records.setMaterial(0);
    addTriangle();
    ObjScene const scene = build();
    ASSERT_EQ(scene.geometries().size(), 3u);
    EXPECT_EQ(material_of(*scene.geometries()[0]), _materials[0].get());
    EXPECT_NE(material_of(*scene.geometries()[1]), _materials[0].get());
    EXPECT_EQ(material_of(*scene.geometries()[2]), _materials[0].get());
}
