/// \file
/// Material libraries and images as they are written beside OBJ files, and what of them is read
/// back.

#include "LogCapture.h"
#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGMaterialChunk.h"
#include "OSGMaterialChunkOverrideGroup.h"
#include "OSGMaterialGroup.h"
#include "OSGSceneFileHandler.h"
#include "OSGTextureObjChunk.h"
#include "ObjScene.h"
#include "ObjWriting.h"

using namespace OSG;
using namespace OSG::Test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{
class ObjMaterialEntry : public ObjWriting
{
};

// --- materials ---

TEST_F(ObjMaterialEntry, AMaterialOfTheGeometryAloneHasAnEntryButNoUse)
{
    ObjTexts const texts = write(with_material(make_triangle(), make_material()));
    EXPECT_THAT(texts.scene, Not(HasSubstr("usemtl")));
    EXPECT_EQ(texts.library, "\nnewmtl Geometry1\n" + DefaultMaterialLines);
}

TEST_F(ObjMaterialEntry, AnOverrideAboveAPlainGeometryIsUsedWithoutAnEntry)
{
    ObjTexts const texts =
        write(make_material_group<MaterialChunkOverrideGroup>(make_material(), {make_triangle()}));
    EXPECT_THAT(texts.scene, HasSubstr("usemtl Geometry1\n"));
    EXPECT_EQ(texts.library, "");
}

TEST_F(ObjMaterialEntry, TheNearestMaterialIsTheOneOfTheEntry)
{
    auto const red = make_material();
    red->setDiffuse(Color3f(1, 0, 0));
    NodePtr const own = with_material(make_triangle(), red);
    ObjTexts const texts =
        write(make_material_group<MaterialGroup>(make_material(), {own, make_triangle()}));
    EXPECT_THAT(texts.library, HasSubstr("newmtl Geometry1\n    Ka 0.200000 0.200000 0.200000\n"
                                         "    Kd 1.000000 0.000000 0.000000\n"));
    EXPECT_THAT(texts.library, testing::EndsWith("newmtl Geometry2\n" + DefaultMaterialLines));
    EXPECT_THAT(texts.scene, HasSubstr("usemtl Geometry1\n"));
}

TEST_F(ObjMaterialEntry, AGroupWithoutAMaterialGivesAnEntryWithoutValues)
{
    ObjTexts const texts = write(make_material_group<MaterialGroup>(nullptr, {make_triangle()}));
    EXPECT_EQ(texts.library, "\nnewmtl Geometry1\n");
    EXPECT_THAT(texts.scene, HasSubstr("usemtl Geometry1\n"));
}

TEST_F(ObjMaterialEntry, AMaterialOfAnotherClassGivesAnEntryWithoutValues)
{
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    EXPECT_EQ(write(with_material(make_triangle(), material)).library, "\nnewmtl Geometry1\n");
}

TEST_F(ObjMaterialEntry, OneMaterialOnFiveGeometriesGivesFiveEntries)
{
    auto const material = make_material();
    Children children;
    for(int i = 0; i < 5; ++i)
        children.push_back(with_material(make_triangle(), material));
    std::string library = write(make_group(children)).library;
    for(int i = 1; i <= 5; ++i)
        EXPECT_THAT(library, HasSubstr("newmtl Geometry" + std::to_string(i) + "\n"));
}

TEST_F(ObjMaterialEntry, WritesOpacityInDoublePrecisionAndShininess)
{
    auto const material = make_material();
    material->setTransparency(0.3f);
    material->setShininess(96.5f);
    EXPECT_THAT(write(with_material(make_triangle(), material)).library,
                HasSubstr("    d 0.700000\n    Ns 96.500000\n"));
}

TEST_F(ObjMaterialEntry, WritesAChunkMaterialFromItsChunks)
{
    UnrecordedRefPtr<MaterialChunk> const colors(MaterialChunk::create());
    colors->setDiffuse(Color4f(0.5f, 0.25f, 0.125f, 0.75f));
    colors->setShininess(12);
    UnrecordedRefPtr<TextureObjChunk> const texture(TextureObjChunk::create());
    auto const image = make_image("/somewhere/wood.png");
    texture->setImage(image);
    UnrecordedRefPtr<BlendChunk> const blend(BlendChunk::create());
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    material->addChunk(blend);
    material->addChunk(texture);
    material->addChunk(colors);
    std::string const library = write(with_material(make_triangle(), material)).library;
    EXPECT_THAT(library, HasSubstr("    Kd 0.500000 0.250000 0.125000\n"));
    EXPECT_THAT(library, HasSubstr("    illum 2\n    d 0.750000\n    Ns 12.000000\n"
                                   "    Ni 1.000000\n    map_Kd wood.png\n"));
    EXPECT_TRUE(std::filesystem::exists(folder.path("wood.png")));
}

// --- images ---

TEST_F(ObjMaterialEntry, WritesASharedImageOnceBesideTheFileAndNamesItInBothEntries)
{
    auto const image = make_image("/no/such/folder/tiles.png");
    ObjTexts const texts =
        write(make_group({with_material(make_triangle(), make_textured(image)),
                          with_material(make_triangle(), make_textured(image))}));
    std::size_t const first = texts.library.find("    map_Kd tiles.png\n");
    EXPECT_NE(texts.library.find("    map_Kd tiles.png\n", first + 1), std::string::npos);
    UnrecordedRefPtr<Image> const read(Image::create());
    ASSERT_TRUE(read->read(folder.path("tiles.png").c_str()));
    EXPECT_EQ(read->getWidth(), 2);
}

TEST_F(ObjMaterialEntry, AnImageWithoutANameIsNeitherNamedNorWritten)
{
    auto const image = make_image("");
    EXPECT_EQ(write(with_material(make_triangle(), make_textured(image))).library,
              "\nnewmtl Geometry1\n" + DefaultMaterialLines);
}

TEST_F(ObjMaterialEntry, PassesOverAnImageThatCannotBeWrittenWithoutAMessage)
{
    auto const image = make_image("picture.unknown");
    LogCapture const log;
    EXPECT_THAT(write(with_material(make_triangle(), make_textured(image))).library,
                HasSubstr("map_Kd picture.unknown\n"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("picture.unknown")));
    EXPECT_THAT(log.messages(), IsEmpty());
}

TEST_F(ObjMaterialEntry, TheHandlerNamesTheFilesThatCouldNotBeWritten)
{
    auto const image = make_image("picture.unknown");
    NodePtr const node = with_material(make_triangle(), make_textured(image));
    SceneFileHandlerBase &handler = *SceneFileHandlerBase::the();
    EXPECT_TRUE(handler.write(node, folder.path("a.obj").c_str()));
    EXPECT_THAT(handler.getUnwrittenFiles(), testing::ElementsAre(folder.path("picture.unknown")));
    EXPECT_TRUE(handler.write(make_triangle(), folder.path("a.obj").c_str()));
    EXPECT_THAT(handler.getUnwrittenFiles(), IsEmpty());
}

TEST_F(ObjMaterialEntry, ALibraryThatCannotBeOpenedIsNamedAndTheSceneIsWritten)
{
    folder.makeFolder("a.mtl");
    SceneFileHandlerBase &handler = *SceneFileHandlerBase::the();
    EXPECT_TRUE(handler.write(make_triangle(), folder.path("a.obj").c_str()));
    EXPECT_THAT(handler.getUnwrittenFiles(), testing::ElementsAre(folder.path("a.mtl")));
    EXPECT_THAT(content_of(folder.path("a.obj")), HasSubstr("f 1//1 2//2 3//3\n"));
}

// --- names of the library ---

TEST_F(ObjMaterialEntry, NamesTheLibraryAfterTheFileWhateverItsSuffix)
{
    for(auto const &[name, library] : {std::pair("a.b.obj", "a.b.mtl"), {"plain", "plain.mtl"}})
    {
        std::ostringstream out;
        OBJSceneFileTypeTN::the().write(make_triangle(), out, folder.path(name).c_str());
        EXPECT_THAT(out.str(), HasSubstr(std::string("\nmtllib ") + library + "\n"));
        EXPECT_TRUE(std::filesystem::exists(folder.path(library)));
    }
}

TEST_F(ObjMaterialEntry, ABareSuffixAsTheNameWritesTheLibraryIntoTheCurrentFolder)
{
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path(""));
    std::ostringstream out;
    EXPECT_TRUE(SceneFileHandlerBase::the()->write(make_triangle(), out, "obj"));
    std::filesystem::current_path(before);
    EXPECT_THAT(out.str(), HasSubstr("\nmtllib obj.mtl\n"));
    EXPECT_TRUE(std::filesystem::exists(folder.path("obj.mtl")));
}

// --- round trips ---

TEST_F(ObjMaterialEntry, AReadSceneKeepsItsTrianglesAndLosesItsMaterialsOnTheWayBack)
{
    folder.write("m.mtl", "newmtl red\nKd 1 0 0\n");
    std::string const file =
        folder.write("in.obj", "mtllib m.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\nusemtl red\n"
                               "f 1 2 3\nf 2 4 3\n");
    ObjScene const read = read_obj_file(file);
    std::string const back = folder.path("back.obj");
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(read.root, back.c_str()));
    EXPECT_THAT(content_of(folder.path("back.mtl")), HasSubstr("Kd 1.000000 0.000000 0.000000"));
    ObjScene const again = read_obj_file(back);
    EXPECT_EQ(count_triangles(again.root), 2u);
    EXPECT_EQ(material_of(*again.geometries()[0])->getDiffuse(), Color3f(0.8f, 0.8f, 0.8f));
}

TEST_F(ObjMaterialEntry, AMaterialAboveTheGeometriesSurvivesTheWayBack)
{
    auto const image = make_image("tiles.png");
    auto const material = make_textured(image);
    material->setAmbient(Color3f(0.1f, 0.2f, 0.3f));
    material->setDiffuse(Color3f(0.4f, 0.5f, 0.6f));
    material->setSpecular(Color3f(0.7f, 0.8f, 0.9f));
    material->setShininess(17);
    material->setTransparency(0.25f);
    material->setEmission(Color3f(1, 1, 1));
    std::string const file = folder.path("back.obj");
    NodePtr const root = make_material_group<MaterialGroup>(material, {make_triangle()});
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(root, file.c_str()));
    ObjScene const again = read_obj_file(file);
    SimpleTexturedMaterial const &read = *material_of(*again.geometries().at(0));
    EXPECT_EQ(read.getAmbient(), material->getAmbient());
    EXPECT_EQ(read.getDiffuse(), Color3f(1, 1, 1)); // the texture replaces the diffuse colour
    EXPECT_EQ(read.getSpecular(), material->getSpecular());
    EXPECT_EQ(read.getShininess(), 17.f);
    EXPECT_EQ(read.getTransparency(), 0.25f);
    EXPECT_EQ(read.getEmission(), Color3f());
    ASSERT_NE(read.getImage(), nullptr);
    EXPECT_EQ(read.getImage()->getWidth(), 2);
}

TEST_F(ObjMaterialEntry, TheUseOfAnOverrideWithoutAnEntryIsUnknownToTheReader)
{
    std::string const file = folder.path("back.obj");
    NodePtr const root =
        make_material_group<MaterialChunkOverrideGroup>(make_material(), {make_triangle()});
    ASSERT_TRUE(SceneFileHandlerBase::the()->write(root, file.c_str()));
    EXPECT_THAT(read_obj_file(file).log, testing::Contains("1: Unkown mtl Geometry1\n"));
}
} // namespace
