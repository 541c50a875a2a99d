/// \file
/// Records as a library leaves them that does not check what it reads.

#include "OSGSafeRecords3DS.h"

#include <cstring>

#include <gmock/gmock.h>

#include "LogCapture.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
Lib3dsFile file_of(Lib3dsMesh *&mesh)
{
    Lib3dsFile file{};
    file.nmeshes = 1;
    file.meshes = &mesh;
    return file;
}

TEST(SafeRecords3DS, FacesWithoutTheirVerticesAreDroppedWithOneWarning)
{
    float vertices[3][3] = {};
    Lib3dsFace faces[] = {{{0, 1, 3}, 0, -1, 0}, {{0, 1, 2}, 0, -1, 5}, {{65535, 1, 2}, 0, -1, 0}};
    Lib3dsMesh mesh{"bad\x1b", {}, 3, vertices, nullptr, 3, faces};
    Lib3dsMesh *list = &mesh;
    Lib3dsFile file = file_of(list);
    LogCapture const log;
    make_records_safe(file);
    EXPECT_EQ(mesh.nfaces, 1);
    EXPECT_EQ(mesh.faces[0].smoothing_group, 5u);
    EXPECT_THAT(log.texts(),
                ElementsAre("Mesh 'bad\\x1B': faces that name vertices that are not there "
                            "are dropped: 2\n"));
}

TEST(SafeRecords3DS, ArraysThatAreNullHaveNoElements)
{
    Lib3dsFace face = {{0, 0, 0}, 0, -1, 0};
    Lib3dsMesh withoutVertices{"a", {}, 9, nullptr, nullptr, 1, &face};
    float vertices[1][3] = {};
    Lib3dsMesh withoutFaces{"b", {}, 1, vertices, nullptr, 9, nullptr};
    Lib3dsMesh *list[] = {&withoutVertices, &withoutFaces, nullptr};
    Lib3dsFile file{};
    file.nmaterials = 7;
    file.nmeshes = 3;
    file.meshes = list;
    LogCapture const log;
    make_records_safe(file);
    EXPECT_EQ(file.nmaterials, 0);
    EXPECT_EQ(file.nmeshes, 2);
    EXPECT_EQ(withoutVertices.nvertices, 0);
    EXPECT_EQ(withoutVertices.nfaces, 0);
    EXPECT_EQ(withoutFaces.nfaces, 0);
    EXPECT_EQ(log.texts().size(), 1u);
}

TEST(SafeRecords3DS, MaterialsThatAreNotThereBecomeNone)
{
    float vertices[1][3] = {};
    Lib3dsFace faces[] = {{{0, 0, 0}, 0, 0, 0}, {{0, 0, 0}, 0, 1, 0}, {{0, 0, 0}, 0, -7, 0}};
    Lib3dsMesh mesh{"m", {}, 1, vertices, nullptr, 3, faces};
    Lib3dsMesh *list = &mesh;
    Lib3dsFile file = file_of(list);
    Lib3dsMaterial material{};
    Lib3dsMaterial *materials = &material;
    file.nmaterials = 1;
    file.materials = &materials;
    make_records_safe(file);
    EXPECT_EQ(faces[0].material, 0);
    EXPECT_EQ(faces[1].material, -1);
    EXPECT_EQ(faces[2].material, -1);
}

TEST(SafeRecords3DS, NamesEnd)
{
    Lib3dsMaterial material;
    std::memset(&material, 'x', sizeof material);
    Lib3dsMaterial *materials = &material;
    Lib3dsMeshInstanceNode node{};
    std::memset(node.base.name, 'x', sizeof node.base.name);
    std::memset(node.instance_name, 'x', sizeof node.instance_name);
    node.base.type = LIB3DS_NODE_MESH_INSTANCE;
    Lib3dsFile file{};
    file.nmaterials = 1;
    file.materials = &materials;
    file.nodes = &node.base;
    make_records_safe(file);
    EXPECT_EQ(std::strlen(material.name), 63u);
    EXPECT_EQ(std::strlen(material.texture1_map.name), 63u);
    EXPECT_EQ(std::strlen(material.bump_map.name), 63u);
    EXPECT_EQ(std::strlen(node.base.name), 63u);
    EXPECT_EQ(std::strlen(node.instance_name), 63u);
}

TEST(SafeRecords3DS, ANodeStaysAtItsFirstPlaceAlone)
{
    Lib3dsNode a{};
    Lib3dsNode b{};
    Lib3dsNode c{};
    a.next = &b;
    b.childs = &c;
    Lib3dsFile file{};
    file.nodes = &a;
    LogCapture const log;
    make_records_safe(file);
    EXPECT_THAT(log.texts(), IsEmpty());

    c.childs = &a; // a round
    b.next = &b;
    make_records_safe(file);
    EXPECT_EQ(a.next, &b);
    EXPECT_EQ(b.childs, &c);
    EXPECT_EQ(c.childs, nullptr);
    EXPECT_EQ(b.next, nullptr);
    EXPECT_THAT(log.texts(),
                ElementsAre("Nodes that stand at several places are kept at the first one\n"));
}
} // namespace
