/// \file
/// The materials that come of those of 3DS files, and the pictures that they name.

#include <filesystem>

#include <gmock/gmock.h>

#include "Chunks3DS.h"
#include "MathPrinters.h"
#include "OSGBlendChunk.h"
#include "OSGImage.h"
#include "OSGImageFileHandler.h"
#include "OSGPathHandler.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "Scene3DS.h"
#include "TempFolder.h"

using namespace OSG;
using namespace OSG::Test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// A scene with one material, of these parts, on its one triangle.
class Materials3DS : public testing::Test
{
  protected:
    ChunkMaterial &read(std::string const &parts)
    {
        std::string const mesh = triangle_3ds("t", 0, "", face_material_3ds("m", {0}));
        scene = read_3ds(file_3ds(material_3ds("m", parts) + mesh));
        return *chunks_of(*scene.geometries().at(0));
    }
    MaterialChunk &colors(std::string const &parts)
    {
        return *chunk_of<MaterialChunk>(read(parts));
    }

    static std::vector<std::string> typesOf(ChunkMaterial const &material)
    {
        std::vector<std::string> names;
        for(StateChunk const *chunk : *material.getMFChunks())
            names.emplace_back(chunk->getType().getCName());
        return names;
    }

    std::string picture(std::string const &name) const
    {
        std::filesystem::create_directories(std::filesystem::path(folder.path(name)).parent_path());
        UInt8 const pixels[] = {255, 0, 0, 0, 255, 0};
        UnrecordedRefPtr<Image> const image(Image::create());
        image->set(2, 1, 3, pixels);
        EXPECT_TRUE(image->write(folder.path(name).c_str()));
        return folder.path(name);
    }

    TempFolder folder;
    Scene3DS scene;
};

constexpr unsigned Ambient = 0xA010;
constexpr unsigned Diffuse = 0xA020;
constexpr unsigned Specular = 0xA030;
constexpr unsigned Shininess = 0xA040;
constexpr unsigned Strength = 0xA041;
constexpr unsigned Transparency = 0xA050;
constexpr unsigned Texture1 = 0xA200;
constexpr unsigned Texture2 = 0xA33A;
constexpr unsigned Opacity = 0xA210;
constexpr unsigned Bump = 0xA230;

// --- colours ---

TEST_F(Materials3DS, AMaterialThatSaysNothingHasTheDefaultColours)
{
    MaterialChunk const &chunk = colors("");
    EXPECT_EQ(chunk.getAmbient(), Color4f(0.588235f, 0.588235f, 0.588235f, 1));
    EXPECT_EQ(chunk.getDiffuse(), Color4f(0.588235f, 0.588235f, 0.588235f, 1));
    EXPECT_EQ(chunk.getSpecular(), Color4f(0, 0, 0, 0)); // the strength is 0, alpha included
    EXPECT_EQ(chunk.getEmission(), Color4f(0, 0, 0, 1));
    EXPECT_EQ(chunk.getShininess(), 12.8f);
}

TEST_F(Materials3DS, TakesColoursAndAlphaAndScalesTheSpecularColourWithItsAlpha)
{
    MaterialChunk const &chunk =
        colors(color_3ds(Ambient, {0.1f, 0.2f, 0.3f}) + color_3ds(Diffuse, {0.4f, 0.5f, 0.6f}) +
               color_3ds(Specular, {1, 0.5f, 0.25f}) + percent_3ds(Strength, 50) +
               percent_3ds(Transparency, 50));
    EXPECT_EQ(chunk.getAmbient(), Color4f(0.1f, 0.2f, 0.3f, 0.5f));
    EXPECT_EQ(chunk.getDiffuse(), Color4f(0.4f, 0.5f, 0.6f, 0.5f));
    EXPECT_EQ(chunk.getSpecular(), Color4f(0.5f, 0.25f, 0.125f, 0.25f));
    EXPECT_EQ(chunk.getEmission(), Color4f(0, 0, 0, 0.5f));
}

TEST_F(Materials3DS, BlendsWhereItIsTransparent)
{
    ChunkMaterial const &material = read(percent_3ds(Transparency, 1));
    EXPECT_THAT(typesOf(material), ElementsAre("BlendChunk", "MaterialChunk"));
    BlendChunk const &blend = *chunk_of<BlendChunk>(material);
    EXPECT_EQ(blend.getSrcFactor(), 0x302u);
    EXPECT_EQ(blend.getDestFactor(), 0x303u);
    EXPECT_THAT(typesOf(read(percent_3ds(Transparency, 0))), ElementsAre("MaterialChunk"));
    EXPECT_THAT(typesOf(read(percent_3ds(Transparency, -100))), ElementsAre("MaterialChunk"));
}

TEST_F(Materials3DS, PercentagesBeyondTheirRangePassThrough)
{
    EXPECT_EQ(colors(percent_3ds(Transparency, -100)).getDiffuse()[3], 2.f);
    EXPECT_EQ(colors(percent_3ds(Transparency, 300)).getDiffuse()[3], -2.f);
    EXPECT_EQ(colors(percent_3ds(Shininess, 200)).getShininess(), 256.f);
}

TEST_F(Materials3DS, ShininessIsScaledAndHasADefaultWhereItIsNotAboveZero)
{
    EXPECT_EQ(colors(percent_3ds(Shininess, 50)).getShininess(), 64.f);
    EXPECT_EQ(colors(percent_3ds(Shininess, 0)).getShininess(), 25.6f);
    EXPECT_EQ(colors(percent_3ds(Shininess, -5)).getShininess(), 25.6f);
}

TEST_F(Materials3DS, APercentageInFloatFormIsPassedOver)
{
    EXPECT_EQ(colors(chunk(Shininess, chunk(0x0031, Bytes().real(0.9f)))).getShininess(), 12.8f);
}

TEST_F(Materials3DS, ALinearColourCountsMoreThanOneWithGammaAndOfEqualFormsTheLast)
{
    std::string const gamma = chunk(0x0010, Bytes().reals({1, 1, 1}));
    std::string const bytes = chunk(0x0011, Bytes().raw(std::string("\x00\xff\x33", 3)));
    std::string const linear = chunk(0x0013, Bytes().reals({0.25f, 0, 0}));
    std::string const linearBytes = chunk(0x0012, Bytes().raw(std::string("\xff\x00\x00", 3)));
    auto const diffuse = [this](std::string const &forms)
    { return colors(chunk(Diffuse, forms)).getDiffuse(); };
    EXPECT_EQ(diffuse(linear + gamma), Color4f(0.25f, 0, 0, 1));
    EXPECT_EQ(diffuse(gamma + linear), Color4f(0.25f, 0, 0, 1));
    EXPECT_EQ(diffuse(gamma + bytes), Color4f(0, 1, 0.2f, 1));
    EXPECT_EQ(diffuse(linear + linearBytes), Color4f(1, 0, 0, 1));
    EXPECT_EQ(diffuse(""), Color4f(0.588235f, 0.588235f, 0.588235f, 1));
}

TEST_F(Materials3DS, ALaterChunkOfAKindCountsButKeepsWhatItDoesNotSay)
{
    EXPECT_EQ(colors(color_3ds(Diffuse, {1, 0, 0}) + color_3ds(Diffuse, {0, 1, 0})).getDiffuse(),
              Color4f(0, 1, 0, 1));
    EXPECT_EQ(colors(color_3ds(Diffuse, {1, 0, 0}) + chunk(Diffuse)).getDiffuse(),
              Color4f(1, 0, 0, 1));
}

// --- textures ---

TEST_F(Materials3DS, ATextureReplacesTheColoursByGreyAndComesBeforeThem)
{
    ChunkMaterial const &material =
        read(color_3ds(Diffuse, {1, 0, 0}) + percent_3ds(Strength, 100) +
             map_3ds(Texture1, picture("t.png"), 0));
    EXPECT_THAT(typesOf(material),
                ElementsAre("TextureObjChunk", "TextureEnvChunk", "MaterialChunk"));
    MaterialChunk const &chunk = *chunk_of<MaterialChunk>(material);
    EXPECT_EQ(chunk.getAmbient(), Color4f(0.2f, 0.2f, 0.2f, 1));
    EXPECT_EQ(chunk.getDiffuse(), Color4f(0.8f, 0.8f, 0.8f, 1));
    EXPECT_EQ(chunk.getSpecular(), Color4f(0, 0, 0, 1));
    TextureObjChunk const &texture = *chunk_of<TextureObjChunk>(material);
    EXPECT_EQ(texture.getImage()->getWidth(), 2);
    EXPECT_EQ(texture.getMinFilter(), 0x2703u);
    EXPECT_EQ(texture.getMagFilter(), 0x2601u);
    EXPECT_EQ(chunk_of<TextureEnvChunk>(material)->getEnvMode(), 0x2100u);
    EXPECT_THAT(scene.log, IsEmpty());
}

TEST_F(Materials3DS, AMapIsClampedUnlessItsFlagsSayThatItTiles)
{
    std::string const name = picture("t.png");
    EXPECT_EQ(chunk_of<TextureObjChunk>(read(map_3ds(Texture1, name, 0)))->getWrapS(), 0x2901u);
    EXPECT_EQ(chunk_of<TextureObjChunk>(read(map_3ds(Texture1, name, 0x10)))->getWrapT(), 0x2900u);
    EXPECT_EQ(chunk_of<TextureObjChunk>(read(map_3ds(Texture1, name)))->getWrapR(), 0x2900u);
}

TEST_F(Materials3DS, ABumpMapIsOneMoreTextureAndKeepsTheColours)
{
    std::string const name = picture("t.png");
    ChunkMaterial const &material = read(color_3ds(Diffuse, {1, 0, 0}) + map_3ds(Bump, name) +
                                         map_3ds(Texture2, name) + map_3ds(Texture1, name));
    EXPECT_THAT(typesOf(material),
                ElementsAre("TextureObjChunk", "TextureEnvChunk", "TextureObjChunk",
                            "TextureEnvChunk", "TextureObjChunk", "TextureEnvChunk",
                            "MaterialChunk"));
    EXPECT_EQ(chunk_of<MaterialChunk>(material)->getDiffuse(), Color4f(1, 0, 0, 1));
    std::set<Image *> images;
    for(StateChunk const *chunk : *material.getMFChunks())
    {
        if(auto const *const texture = dynamic_cast<TextureObjChunk const *>(chunk))
            images.insert(texture->getImage());
    }
    EXPECT_EQ(images.size(), 3u); // each map has an image of its own
}

TEST_F(Materials3DS, AnAlphaSourceBlendsAndKeepsTheColoursWhereItsPictureIsRead)
{
    std::string const red = color_3ds(Diffuse, {1, 0, 0});
    ChunkMaterial const &material = read(red + map_3ds(Texture1, picture("t.png"), 0x40));
    EXPECT_THAT(typesOf(material),
                ElementsAre("TextureObjChunk", "TextureEnvChunk", "BlendChunk", "MaterialChunk"));
    EXPECT_EQ(chunk_of<MaterialChunk>(material)->getDiffuse(), Color4f(1, 0, 0, 1));
    EXPECT_THAT(typesOf(read(map_3ds(Texture1, "missing.png", 0x40))),
                ElementsAre("MaterialChunk"));
}

TEST_F(Materials3DS, OtherMapsAreNotUsed)
{
    EXPECT_THAT(typesOf(read(map_3ds(Opacity, picture("t.png")))), ElementsAre("MaterialChunk"));
}

TEST_F(Materials3DS, APictureInTheOtherCaseIsFoundWithAWarningAndItsFolderKeepsItsCase)
{
    picture("Dir/tex.png");
    std::string const wanted = folder.path("Dir/TEX.PNG");
    std::string const found = folder.path("Dir/tex.png");
    EXPECT_NE(chunk_of<TextureObjChunk>(read(map_3ds(Texture1, wanted))), nullptr);
    EXPECT_THAT(scene.log, ElementsAre("2: Couldn't load image '" + wanted +
                                       "', trying case reversed version '" + found + "'! \n"));
}

TEST_F(Materials3DS, AMissingPictureIsOneWarningAndLeavesTheTextureOut)
{
    ChunkMaterial const &material =
        read(color_3ds(Diffuse, {1, 0, 0}) + map_3ds(Texture1, "a\\No1.jpg"));
    EXPECT_THAT(typesOf(material), ElementsAre("MaterialChunk"));
    EXPECT_EQ(chunk_of<MaterialChunk>(material)->getDiffuse(), Color4f(1, 0, 0, 1));
    EXPECT_THAT(scene.log, ElementsAre("2: Couldn't load image 'a\\No1.jpg', trying case reversed "
                                       "version 'a\\nO1.JPG'! \n"));
}

TEST_F(Materials3DS, AMissingPictureOfAMaterialThatNobodyUsesIsAWarningToo)
{
    Scene3DS const unused =
        read_3ds(file_3ds(material_3ds("m", map_3ds(Bump, "no")) + triangle_3ds("t")));
    EXPECT_EQ(unused.describe(), "[[[] [t1]]]");
    EXPECT_THAT(unused.log, ElementsAre("2: Couldn't load image 'no', trying case reversed version "
                                        "'NO'! \n"));
}

TEST_F(Materials3DS, MaterialsOfWhichTheFileSaysNothingKeepTheirPlaces)
{
    std::string const mesh =
        mesh_3ds("t", points_3ds({0, 0, 0, 1, 0, 0, 0, 1, 0}) +
                          faces_3ds({{{0, 1, 2}}, {{1, 2, 0}}},
                                    face_material_3ds("", {0}) + face_material_3ds("m", {1})));
    Scene3DS const some = read_3ds(
        file_3ds(chunk(0xAFFF) + material_3ds("m") + chunk(0xAFFF) + chunk(0xAFFF) + mesh));
    EXPECT_EQ(some.describe(), "[[[t1] [t1] [] [] []]]");
    EXPECT_STREQ(getName(chunks_of(*some.geometries()[0])), "");
    EXPECT_STREQ(getName(chunks_of(*some.geometries()[1])), "m");
}

TEST_F(Materials3DS, AMapWithoutANameIsNone)
{
    EXPECT_THAT(typesOf(read(map_3ds(Texture1, ""))), ElementsAre("MaterialChunk"));
    EXPECT_THAT(typesOf(read(chunk(Texture1))), ElementsAre("MaterialChunk"));
    EXPECT_THAT(scene.log, IsEmpty());
}

TEST_F(Materials3DS, ThePathHandlerOfAHostFindsPicturesOfRelativeNames)
{
    picture("textures/of-the-host.png");
    PathHandler paths;
    paths.pushBackPath(folder.path("textures").c_str());
    ImageFileHandlerBase::the()->setPathHandler(&paths);
    bool const isFound =
        chunk_of<TextureObjChunk>(read(map_3ds(Texture1, "of-the-host.png"))) != nullptr;
    ImageFileHandlerBase::the()->setPathHandler(nullptr);
    EXPECT_TRUE(isFound);
    EXPECT_EQ(chunk_of<TextureObjChunk>(read(map_3ds(Texture1, "of-the-host.png"))), nullptr);
}

TEST_F(Materials3DS, AMaterialWithoutANameHasTheEmptyName)
{
    Scene3DS const nameless =
        read_3ds(file_3ds(chunk(0xAFFF) + triangle_3ds("t", 0, "", face_material_3ds("", {0}))));
    EXPECT_STREQ(getName(chunks_of(*nameless.geometries().at(0))), "");
}
} // namespace
