#include "OSGObjRecords.h"

#include <gmock/gmock.h>

using namespace OSG;
using testing::ElementsAre;

namespace
{
ObjTiePoint corner(Int32 position) { return {{position, -1, -1}}; }

void add_face(ObjRecords &records, std::initializer_list<Int32> positions)
{
    for(Int32 position : positions)
        records.addTiePoint(corner(position));
    records.endFace();
}

/// Position indices face by face.
std::vector<std::vector<Int32>> positions(ObjFaces const &faces)
{
    std::vector<std::vector<Int32>> result;
    for(std::span<ObjTiePoint const> face : faces)
    {
        result.emplace_back();
        for(ObjTiePoint const &tiePoint : face)
            result.back().push_back(tiePoint.index[ObjPositionIndex]);
    }
    return result;
}
} // namespace

TEST(ObjRecords, StartWithOneMeshWithoutFacesOrMaterial)
{
    ObjRecords records;
    EXPECT_EQ(records.meshCount(), 1u);
    EXPECT_TRUE(records.faces(0).empty());
    EXPECT_EQ(records.material(0), ObjRecords::NoMaterial);
}

TEST(ObjRecords, FacesOfAMeshComeNewestFirstWithTheirCornersInOrder)
{
    ObjRecords records;
    add_face(records, {0, 1, 2});
    add_face(records, {});
    add_face(records, {3, 4});
    EXPECT_THAT(positions(records.faces(0)),
                ElementsAre(ElementsAre(3, 4), ElementsAre(), ElementsAre(0, 1, 2)));
    EXPECT_EQ(records.faces(0).size(), 3u);
    EXPECT_EQ(records.faces(0).tiePointCount(), 5u);
}

TEST(ObjRecords, MeshesComeNewestFirst)
{
    ObjRecords records;
    add_face(records, {0});
    records.startMesh();
    records.setMaterial(7);
    add_face(records, {1});
    add_face(records, {2});
    records.startMesh();
    ASSERT_EQ(records.meshCount(), 3u);
    EXPECT_TRUE(records.faces(0).empty());
    EXPECT_THAT(positions(records.faces(1)), ElementsAre(ElementsAre(2), ElementsAre(1)));
    EXPECT_THAT(positions(records.faces(2)), ElementsAre(ElementsAre(0)));
    EXPECT_EQ(records.material(0), ObjRecords::NoMaterial);
    EXPECT_EQ(records.material(1), 7);
    EXPECT_EQ(records.material(2), ObjRecords::NoMaterial);
}

TEST(ObjRecords, AMeshWithoutFacesIsUsedAgain)
{
    ObjRecords records;
    records.startMesh();
    records.setMaterial(1);
    records.startMesh();
    EXPECT_EQ(records.meshCount(), 1u);
    EXPECT_EQ(records.material(0), 1);
}

TEST(ObjRecords, AnEmptyFaceIsAFace)
{
    ObjRecords records;
    records.endFace();
    records.startMesh();
    EXPECT_EQ(records.meshCount(), 2u);
}

TEST(ObjRecords, MeshesAreDroppedNewestFirst)
{
    ObjRecords records;
    add_face(records, {0});
    add_face(records, {1, 2});
    records.startMesh();
    records.setMaterial(3);
    add_face(records, {4});
    records.dropNewestMesh();
    EXPECT_EQ(records.meshCount(), 1u);
    EXPECT_THAT(positions(records.faces(0)), ElementsAre(ElementsAre(1, 2), ElementsAre(0)));
    EXPECT_EQ(records.material(0), ObjRecords::NoMaterial);
    records.dropNewestMesh();
    EXPECT_EQ(records.meshCount(), 0u);
}

TEST(ObjRecords, DroppingGivesMemoryBackOnTheWay)
{
    UInt64 const before = get_mem_bytes();
    ObjRecords records;
    for(int mesh = 0; mesh < 10000; ++mesh)
    {
        add_face(records, {mesh, mesh, mesh});
        records.startMesh();
    }
    UInt64 const full = get_mem_bytes() - before;
    while(records.meshCount() > 1000)
        records.dropNewestMesh();
    EXPECT_EQ(positions(records.faces(0)).at(0), std::vector<Int32>(3, 999));
    EXPECT_LT(get_mem_bytes() - before, full / 2);
}
