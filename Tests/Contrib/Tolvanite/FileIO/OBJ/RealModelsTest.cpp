/// \file
/// Models that people made with real programs, as scripts/fixtures lays them down.

#include <filesystem>
#include <map>
#include <set>

#include <gmock/gmock.h>

#include "OSGGeometryIterators.h"
#include "OSGImage.h"
#include "ObjScene.h"
#include "OsbScenes.h"
#include "SceneInvariants.h"

#ifdef TEST_WITH_TINYOBJLOADER
#include <tiny_obj_loader.h>
#endif

using namespace OSG;
using namespace OSG::Test;

namespace
{
/// Whether tinyobjloader reads the same faces: it knows of more, so not for every file.
enum class OtherReader
{
    Agrees,
    Differs
};

struct Model
{
    char const *name;
    char const *path; ///< below .cache/fixtures
    char const *root; ///< class of its core, or "null"
    std::size_t geometries;
    UInt64 triangles;
    OtherReader other = OtherReader::Agrees;
    std::map<std::string, int> messages = {}; ///< how often each was logged
    std::set<std::string> textures = {};      ///< pictures of the materials that are used
};

void PrintTo(Model const &model, std::ostream *out) { *out << model.path; }

#define ASSIMP "assimp-testmodels/OBJ/"

std::string unknown(std::string const &word) { return "2: Unkown obj data elem: " + word + "\n"; }
std::string unknown_material(std::string const &name) { return "1: Unkown mtl " + name + "\n"; }

Model const Models[] = {
    {"Spider",
     ASSIMP "spider.obj",
     "Group",
     19,
     1368,
     OtherReader::Agrees,
     {},
     {"SpiderTex.jpg", "drkwood2.jpg", "engineflare1.jpg", "wal67ar_small.jpg"}},
    {"ThreeComponentTexCoords", ASSIMP "regr01.obj", "Group", 38, 2710},
    {"Wuson", ASSIMP "WusonOBJ.obj", "Geometry", 1, 3732},
    {"Mixed",
     ASSIMP "testmixed.obj",
     "Geometry",
     1,
     12,
     OtherReader::Differs,
     {{unknown("l"), 6}, {unknown("p"), 6}, {unknown_material("Default"), 2}}},
    {"Lines",
     ASSIMP "testline.obj",
     "null",
     0,
     0,
     OtherReader::Differs,
     {{unknown("l"), 6}, {unknown_material("Default"), 1}, {"2: Mesh with empty faceList\n", 1}}},
    {"Points",
     ASSIMP "testpoints.obj",
     "null",
     0,
     0,
     OtherReader::Differs,
     {{unknown("p"), 6}, {unknown_material("Default"), 1}, {"2: Mesh with empty faceList\n", 1}}},
    {"ConcavePolygon", ASSIMP "concave_polygon.obj", "Geometry", 1, 64},
    {"LongLine",
     ASSIMP "box_longline.obj",
     "Geometry",
     1,
     944,
     OtherReader::Differs,
     {{unknown_material("Defauli"), 1}}},
    {"NumberFormats",
     ASSIMP "number_formats.obj",
     "Geometry",
     1,
     1,
     OtherReader::Differs,
     {{unknown("+e2"), 3}, {unknown("-e2"), 3}}},
    {"VertexColors",
     ASSIMP "cube_with_vertexcolors.obj",
     "Geometry",
     1,
     12,
     OtherReader::Agrees,
     {{unknown("0.01569"), 1},
      {unknown("0.09020"), 1},
      {unknown("0.09412"), 2},
      {unknown("0.30588"), 1},
      {unknown("0.48627"), 2},
      {unknown("0.87843"), 1}}},
    {"BlanksInNames",
     ASSIMP "box_mat_with_spaces.obj",
     "Geometry",
     1,
     12,
     OtherReader::Agrees,
     {{"2: Invalid name entry in ./box_spaces.mtl\n", 1}, {unknown("name"), 1}}},
    {"Utf16",
     ASSIMP "box_UTF16BE.obj",
     "null",
     0,
     0,
     OtherReader::Differs,
     {{unknown("\\x00"), 6},
      {unknown("\\x00#\\x00"), 7},
      {unknown("\\x00f\\x00"), 6},
      {unknown("\\x00o\\x00"), 1},
      {unknown("\\x00u\\x00s\\x00e\\x00m\\x00t\\x00l\\x00"), 1},
      {unknown("\\x00v\\x00"), 8},
      {unknown("\xfe\xff\\x00#\\x00"), 1},
      {"2: Mesh with empty faceList\n", 1}}},
    {"NoLastLineBreak",
     ASSIMP "box_without_lineending.obj",
     "Geometry",
     1,
     12,
     OtherReader::Agrees,
     {{unknown_material("Default"), 1}}},
    {"Malformed",
     "assimp-testmodels/invalid/malformed.obj",
     "Geometry",
     1,
     9,
     OtherReader::Differs,
     {{unknown_material("Default"), 1},
      {"2: Geometry without a name: an index is out of range, what it belongs to is passed over\n",
       1}}},
    {"MalformedWithoutGeometry",
     "assimp-testmodels/invalid/malformed2.obj",
     "null",
     0,
     0,
     OtherReader::Differs,
     {{unknown_material("DefaultDoesNotExist"), 1}, {"2: The read ends in line 23, at 'f'!\n", 1}}},
    {"Empty",
     "assimp-testmodels/invalid/empty.obj",
     "null",
     0,
     0,
     OtherReader::Agrees,
     {{"2: Mesh with empty faceList\n", 1}}},
    {"Bunny", "glmark2-data/bunny.obj", "Geometry", 1, 69666},
    {"Logo",
     "python3-pyglet/logo3d.obj",
     "Geometry",
     1,
     3092,
     OtherReader::Agrees,
     {{"2: Invalid Ke entry in logo3d.mtl\n", 1}}},
    {"Valve", "minetest-mod-pipeworks/pipeworks_valve_off.obj", "Geometry", 1, 3592},
    {"Refinery", "qtdatavisualization5-examples/refinery.obj", "Geometry", 1, 1112},
    {"Shuttle",
     "mayavi2/shuttle.obj",
     "Group",
     7,
     616,
     OtherReader::Agrees,
     {{"2: Couldn't open './vp.mtl'!\n", 1},
      {unknown_material("black"), 1},
      {unknown_material("bone"), 1},
      {unknown_material("brass"), 1},
      {unknown_material("dkdkgrey"), 1},
      {unknown_material("fldkdkgrey"), 1},
      {unknown_material("glass"), 1},
      {unknown_material("redbrick"), 1}}},
};

class RealModel : public testing::TestWithParam<Model>
{
  protected:
    void SetUp() override
    {
        _path = std::string(TEST_SOURCE_DIR "/.cache/fixtures/") + GetParam().path;
        if(!std::filesystem::exists(_path))
            GTEST_SKIP() << GetParam().path << " is not there: scripts/fixtures fetches it";
    }

    std::string _path;
};

std::set<std::string> texture_names(ObjScene const &scene)
{
    std::set<std::string> names;
    for(Geometry const *geometry : scene.geometries())
    {
        Image const *const image = material_of(*geometry)->getImage();
        if(image != nullptr)
            names.insert(std::filesystem::path(image->getName()).filename().string());
    }
    return names;
}
} // namespace

TEST_P(RealModel, IsReadAsItStands)
{
    Model const &model = GetParam();
    ObjScene const scene = read_obj_file(_path);
    EXPECT_STREQ(scene.root != nullptr ? scene.root->getCore()->getType().getCName() : "null",
                 model.root);
    EXPECT_EQ(scene.geometries().size(), model.geometries);
    EXPECT_EQ(count_triangles(scene.root), model.triangles);
    EXPECT_EQ(fault_of_scene(scene.root), "");
    std::map<std::string, int> messages;
    for(std::string const &line : scene.log)
        ++messages[line];
    EXPECT_EQ(messages, model.messages);
    EXPECT_EQ(texture_names(scene), model.textures);
}

TEST_P(RealModel, ComesBackFromTheBinaryFormat)
{
    ObjScene const scene = read_obj_file(_path);
    if(scene.root == nullptr)
        return;
    std::string const bytes = osb_bytes(scene.root);
    NodePtr const back = osb_scene(bytes);
    EXPECT_EQ(fault_of_scene(back), "");
    EXPECT_EQ(count_triangles(back), GetParam().triangles);
    EXPECT_TRUE(osb_bytes(back) == bytes);
}

INSTANTIATE_TEST_SUITE_P(All, RealModel, testing::ValuesIn(Models),
                         [](auto const &row) { return row.param.name; });

// --- beside another reader ---

#ifdef TEST_WITH_TINYOBJLOADER
namespace
{
using Numbers = std::vector<Real32>;

/// One face: positions, texture coordinates and normals of its corners, one after the other;
/// nothing of a kind where the file gives none.
struct Face
{
    std::size_t corners = 0;
    Numbers positions;
    Numbers texCoords;
    Numbers normals;
};

void append(Numbers &to, std::vector<Real32> const &values, int element, std::size_t dimension)
{
    if(element < 0)
        return;
    auto const begin = values.begin() + static_cast<std::ptrdiff_t>(element * dimension);
    to.insert(to.end(), begin, begin + static_cast<std::ptrdiff_t>(dimension));
}

std::vector<Face> faces_of_other_reader(std::string const &path)
{
    tinyobj::ObjReaderConfig config;
    config.triangulate = false;
    tinyobj::ObjReader reader;
    EXPECT_TRUE(reader.ParseFromFile(path, config)) << reader.Error();
    tinyobj::attrib_t const &arrays = reader.GetAttrib();
    std::vector<Face> faces;
    for(tinyobj::shape_t const &shape : reader.GetShapes())
    {
        std::size_t corner = 0;
        for(std::size_t length : shape.mesh.num_face_vertices)
        {
            Face &face = faces.emplace_back();
            face.corners = length;
            for(std::size_t i = 0; i < length; ++i, ++corner)
            {
                tinyobj::index_t const &index = shape.mesh.indices[corner];
                append(face.positions, arrays.vertices, index.vertex_index, 3);
                append(face.texCoords, arrays.texcoords, index.texcoord_index, 2);
                append(face.normals, arrays.normals, index.normal_index, 3);
            }
        }
    }
    return faces;
}

void append(Numbers &to, Geometry const &geometry, UInt16 slot, std::size_t vertex)
{
    GeoVectorProperty const *const property = geometry.getProperty(slot);
    if(property == nullptr)
        return;
    Numbers values(property->getDimension());
    property->getValue(values.data(),
                       geometry.getIndex(slot)->getValue(static_cast<UInt32>(vertex)));
    to.insert(to.end(), values.begin(), values.end());
}

/// Ours, in the order of the file: runs and faces come newest first.
std::vector<Face> faces_of(ObjScene const &scene)
{
    std::vector<Face> faces;
    for(Geometry const *geometry : scene.geometries())
    {
        std::size_t vertex = 0;
        for(UInt32 length : values_of(geometry->getLengths()))
        {
            Face &face = faces.emplace_back();
            face.corners = length;
            for(UInt32 i = 0; i < length; ++i, ++vertex)
            {
                append(face.positions, *geometry, Geometry::PositionsSlot, vertex);
                append(face.texCoords, *geometry, Geometry::TexCoordsSlot, vertex);
                append(face.normals, *geometry, Geometry::NormalsSlot, vertex);
            }
        }
    }
    std::reverse(faces.begin(), faces.end());
    return faces;
}

std::vector<Model> models_of_both()
{
    std::vector<Model> result;
    std::copy_if(std::begin(Models), std::end(Models), std::back_inserter(result),
                 [](Model const &model) { return model.other == OtherReader::Agrees; });
    return result;
}

class RealModelOfBothReaders : public RealModel
{
};

// The other reader rounds in its own way.
void expect_near(Numbers const &ours, Numbers const &others, char const *kind, std::size_t face)
{
    ASSERT_EQ(ours.size(), others.size()) << kind << " of face " << face;
    for(std::size_t i = 0; i < ours.size(); ++i)
        ASSERT_NEAR(ours[i], others[i], 1e-5 * (1 + std::abs(others[i])))
            << kind << " of face " << face;
}
} // namespace

TEST_P(RealModelOfBothReaders, HasTheSameFaces)
{
    std::vector<Face> const ours = faces_of(read_obj_file(_path));
    std::vector<Face> const others = faces_of_other_reader(_path);
    ASSERT_EQ(ours.size(), others.size());
    for(std::size_t i = 0; i < ours.size() && !HasFatalFailure(); ++i)
    {
        ASSERT_EQ(ours[i].corners, others[i].corners) << "face " << i;
        expect_near(ours[i].positions, others[i].positions, "positions", i);
        // Kinds that not every face of a run has are dropped; normals are computed then.
        if(!ours[i].texCoords.empty())
            expect_near(ours[i].texCoords, others[i].texCoords, "texture coordinates", i);
        if(others[i].normals.size() == others[i].positions.size())
            expect_near(ours[i].normals, others[i].normals, "normals", i);
    }
}

INSTANTIATE_TEST_SUITE_P(All, RealModelOfBothReaders, testing::ValuesIn(models_of_both()),
                         [](auto const &row) { return row.param.name; });
#endif
