#include "OSGDrawStateResolution.h"

#include <limits>

#include <gtest/gtest.h>

#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGSimpleMaterial.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "OSGTextureTransformChunk.h"

namespace OSG::Test
{
namespace
{
template <class T>
using Ptr = UnrecordedRefPtr<T>;

template <class T>
Ptr<T> make()
{
    return Ptr<T>(T::create());
}

Ptr<Image> image_of(UInt32 channels, bool isForcedBinary = false)
{
    Ptr<Image> image = make<Image>();
    EXPECT_TRUE(image->set(1, 1, channels, nullptr));
    image->setForceAlphaBinary(isForcedBinary);
    return image;
}

Ptr<ChunkMaterial> material_of(std::initializer_list<StateChunk *> chunks)
{
    Ptr<ChunkMaterial> material = make<ChunkMaterial>();
    for(StateChunk *chunk : chunks)
        EXPECT_TRUE(material->addChunk(chunk));
    return material;
}

Ptr<MaterialChunk> red_surface()
{
    Ptr<MaterialChunk> chunk = make<MaterialChunk>();
    chunk->setDiffuse(Color4f(1, 0, 0, 0.5f));
    return chunk;
}

Ptr<TextureObjChunk> texture_of(Image *image)
{
    Ptr<TextureObjChunk> chunk = make<TextureObjChunk>();
    chunk->setImage(image);
    return chunk;
}

Ptr<TextureEnvChunk> environment_of(UInt32 mode)
{
    Ptr<TextureEnvChunk> chunk = make<TextureEnvChunk>();
    chunk->setEnvMode(mode);
    return chunk;
}

constexpr Real32 NotANumber = std::numeric_limits<Real32>::quiet_NaN();
constexpr Real32 Infinite = std::numeric_limits<Real32>::infinity();

// --- simple materials ---

TEST(DrawStateResolution, NoMaterialIsANewSimpleMaterial)
{
    EXPECT_EQ(resolve_draw_state(nullptr), resolve_draw_state(make<SimpleMaterial>()));
    EXPECT_EQ(resolve_draw_state(nullptr), DrawState());
}

TEST(DrawStateResolution, ASimpleMaterialGivesItsColours)
{
    Ptr<SimpleMaterial> const material = make<SimpleMaterial>();
    material->setAmbient(Color3f(0.1f, 0.2f, 0.3f));
    material->setDiffuse(Color3f(0.4f, 0.5f, 0.6f));
    material->setSpecular(Color3f(0.7f, 0.8f, 0.9f));
    material->setEmission(Color3f(1, 2, -1));
    material->setShininess(12);
    material->setLit(false);
    material->setColorMaterial(GLName::Diffuse);
    DrawState const state = resolve_draw_state(material);
    EXPECT_EQ(state.surface.ambient, Color4f(0.1f, 0.2f, 0.3f, 1));
    EXPECT_EQ(state.surface.diffuse, Color4f(0.4f, 0.5f, 0.6f, 1));
    EXPECT_EQ(state.surface.specular, Color4f(0.7f, 0.8f, 0.9f, 1));
    EXPECT_EQ(state.surface.emission, Color4f(1, 2, -1, 1));
    EXPECT_EQ(state.surface.shininess, 12);
    EXPECT_FALSE(state.surface.lit);
    EXPECT_EQ(state.surface.colorMaterial, GLName::Diffuse);
    EXPECT_FALSE(state.isTransparent());
}

struct TransparencyCase
{
    char const *name;
    Real32 transparency;
    Real32 alpha;
    bool isTransparent;
};
class SimpleTransparency : public testing::TestWithParam<TransparencyCase>
{
};
TEST_P(SimpleTransparency, IsClampedAndBlends)
{
    Ptr<SimpleMaterial> const material = make<SimpleMaterial>();
    material->setTransparency(GetParam().transparency);
    DrawState const state = resolve_draw_state(material);
    EXPECT_EQ(state.surface.diffuse[3], GetParam().alpha);
    EXPECT_EQ(state.isTransparent(), GetParam().isTransparent);
    EXPECT_EQ(state.blend.srcFactor, GLName::SourceAlpha);
    EXPECT_EQ(state.blend.destFactor, GLName::OneMinusSourceAlpha);
}
TransparencyCase const TransparencyCases[] = {
    {"None", 0, 1, false},          {"AQuarter", 0.25f, 0.75f, true}, {"All", 1, 0, true},
    {"Beyond", 7, 0, true},         {"Negative", -1, 1, false},       {"NaN", NotANumber, 1, false},
    {"Infinite", Infinite, 0, true}};
INSTANTIATE_TEST_SUITE_P(Values, SimpleTransparency, testing::ValuesIn(TransparencyCases),
                         [](auto const &row) { return row.param.name; });

struct ShininessCase
{
    char const *name;
    Real32 given;
    Real32 drawn;
};
class Shininess : public testing::TestWithParam<ShininessCase>
{
};
TEST_P(Shininess, IsClampedForDrawing)
{
    Ptr<SimpleMaterial> const material = make<SimpleMaterial>();
    material->setShininess(GetParam().given);
    EXPECT_EQ(resolve_draw_state(material).surface.shininess, GetParam().drawn);
    Ptr<MaterialChunk> const chunk = make<MaterialChunk>();
    chunk->setShininess(GetParam().given);
    EXPECT_EQ(resolve_draw_state(material_of({chunk})).surface.shininess, GetParam().drawn);
}
ShininessCase const ShininessCases[] = {{"Within", 127.5f, 127.5f},
                                        {"Beyond", 128.5f, 128},
                                        {"Negative", -3, 0},
                                        {"NaN", NotANumber, 0},
                                        {"Infinite", Infinite, 128}};
INSTANTIATE_TEST_SUITE_P(Values, Shininess, testing::ValuesIn(ShininessCases),
                         [](auto const &row) { return row.param.name; });

TEST(DrawStateResolution, ColoursThatAreNotFiniteBecomeFinite)
{
    Ptr<SimpleMaterial> const material = make<SimpleMaterial>();
    material->setDiffuse(Color3f(NotANumber, Infinite, -Infinite));
    constexpr Real32 Largest = std::numeric_limits<Real32>::max();
    EXPECT_EQ(resolve_draw_state(material).surface.diffuse, Color4f(0, Largest, -Largest, 1));
}

TEST(DrawStateResolution, AnUnknownColourMaterialIsNone)
{
    Ptr<SimpleMaterial> const material = make<SimpleMaterial>();
    material->setColorMaterial(0x1203);
    EXPECT_EQ(resolve_draw_state(material).surface.colorMaterial, 0u);
}

TEST(DrawStateResolution, ASimpleTextureRepeatsAndTakesTheMaterialsSettings)
{
    Ptr<SimpleTexturedMaterial> const material = make<SimpleTexturedMaterial>();
    Ptr<Image> const image = image_of(3);
    material->setImage(image);
    material->setMinFilter(GLName::Nearest);
    material->setMagFilter(GLName::Nearest);
    material->setEnvMode(GLName::Decal);
    material->setEnvMap(true);
    TextureValues expected;
    expected.image = image;
    expected.minFilter = expected.magFilter = GLName::Nearest;
    expected.envMode = GLName::Decal;
    expected.isSphereMap = true;
    EXPECT_EQ(resolve_draw_state(material).textures, std::vector<TextureValues>{expected});
}

TEST(DrawStateResolution, ATexturedMaterialWithoutImageIsAPlainOne)
{
    EXPECT_EQ(resolve_draw_state(make<SimpleTexturedMaterial>()), DrawState());
}

// --- chunks ---

TEST(DrawStateResolution, AChunksAlphaAloneBlendsNothing)
{
    DrawState const state = resolve_draw_state(material_of({red_surface()}));
    EXPECT_EQ(state.surface.diffuse, Color4f(1, 0, 0, 0.5f));
    EXPECT_FALSE(state.isTransparent());
}

TEST(DrawStateResolution, ABlendChunkBlendsByItsFactors)
{
    Ptr<BlendChunk> const blend = make<BlendChunk>();
    blend->setSrcFactor(GLName::One);
    blend->setDestFactor(GLName::One);
    DrawState const state = resolve_draw_state(material_of({blend}));
    EXPECT_TRUE(state.isTransparent());
    EXPECT_EQ(state.blend.srcFactor, GLName::One);
    EXPECT_EQ(state.blend.destFactor, GLName::One);
    EXPECT_EQ(state.surface, SurfaceValues());
}

TEST(DrawStateResolution, FactorsThatOpenGLDoesNotKnowAreTheDefaults)
{
    Ptr<BlendChunk> const blend = make<BlendChunk>();
    blend->setSrcFactor(77);
    blend->setDestFactor(GLName::SourceAlphaSaturate);
    DrawState const state = resolve_draw_state(material_of({blend}));
    EXPECT_EQ(state.blend.srcFactor, GLName::SourceAlpha);
    EXPECT_EQ(state.blend.destFactor, GLName::OneMinusSourceAlpha);
}

TEST(DrawStateResolution, TexturesAreUnitsInOrderEachWithTheEnvironmentOfItsRank)
{
    Ptr<Image> const one = image_of(3);
    Ptr<Image> const two = image_of(1);
    Ptr<TextureTransformChunk> const transform = make<TextureTransformChunk>();
    Matrix twice;
    twice.setScale(2);
    transform->setMatrix(twice);
    DrawState const state =
        resolve_draw_state(material_of({texture_of(one), environment_of(GLName::Replace),
                                        texture_of(two), environment_of(GLName::Add), transform}));
    ASSERT_EQ(state.textures.size(), 2u);
    EXPECT_EQ(state.textures[0].image, one);
    EXPECT_EQ(state.textures[0].envMode, GLName::Replace);
    EXPECT_TRUE(state.textures[0].isTransformed);
    EXPECT_EQ(state.textures[0].transform, twice);
    EXPECT_EQ(state.textures[1].image, two);
    EXPECT_EQ(state.textures[1].envMode, GLName::Add);
    EXPECT_FALSE(state.textures[1].isTransformed);
}

TEST(DrawStateResolution, SlotsOrderTheUnits)
{
    Ptr<Image> const one = image_of(3);
    Ptr<Image> const two = image_of(3);
    Ptr<ChunkMaterial> const material = make<ChunkMaterial>();
    material->addChunk(texture_of(two), 5);
    material->addChunk(texture_of(one), 1);
    DrawState const state = resolve_draw_state(material);
    ASSERT_EQ(state.textures.size(), 2u);
    EXPECT_EQ(state.textures[0].image, one);
    EXPECT_EQ(state.textures[1].image, two);
}

TEST(DrawStateResolution, WithoutAnEnvironmentATextureModulates)
{
    Ptr<Image> const image = image_of(3);
    EXPECT_EQ(resolve_draw_state(material_of({texture_of(image)})).textures[0].envMode,
              GLName::Modulate);
}

TEST(DrawStateResolution, ATextureWithoutImageKeepsItsUnit)
{
    Ptr<Image> const image = image_of(3);
    DrawState const state =
        resolve_draw_state(material_of({texture_of(nullptr), texture_of(image)}));
    ASSERT_EQ(state.textures.size(), 2u);
    EXPECT_EQ(state.textures[0], TextureValues());
    EXPECT_EQ(state.textures[1].image, image);
}

TEST(DrawStateResolution, AnIgnoredChunkHasNoEffect)
{
    Ptr<MaterialChunk> const surface = red_surface();
    Ptr<BlendChunk> const blend = make<BlendChunk>();
    Ptr<Image> const image = image_of(4);
    Ptr<TextureObjChunk> const texture = texture_of(image);
    surface->setIgnore(true);
    blend->setIgnore(true);
    texture->setIgnore(true);
    EXPECT_EQ(resolve_draw_state(material_of({surface, blend, texture})), DrawState());
}

TEST(DrawStateResolution, SettingsOfATextureThatOpenGLDoesNotKnowAreTheDefaults)
{
    Ptr<Image> const image = image_of(3);
    Ptr<TextureObjChunk> const texture = texture_of(image);
    texture->setMinFilter(1);
    texture->setMagFilter(GLName::LinearMipmapLinear);
    texture->setWrapS(0);
    texture->setWrapT(0xFFFFFFFF);
    TextureValues expected;
    expected.image = image;
    DrawState const state = resolve_draw_state(material_of({texture, environment_of(3)}));
    EXPECT_EQ(state.textures, std::vector<TextureValues>{expected});
}

TEST(DrawStateResolution, ATextureMatrixThatIsNotFiniteIsTheIdentity)
{
    Ptr<Image> const image = image_of(3);
    Ptr<TextureTransformChunk> const transform = make<TextureTransformChunk>();
    Matrix broken;
    broken[3][1] = NotANumber;
    transform->setMatrix(broken);
    EXPECT_FALSE(
        resolve_draw_state(material_of({texture_of(image), transform})).textures[0].isTransformed);
}

TEST(DrawStateResolution, ChunksWhoseSlotsAreNotKnownTakeTheFirstFreeOnes)
{
    Ptr<Image> const one = image_of(3);
    Ptr<Image> const two = image_of(3);
    Ptr<ChunkMaterial> const material = material_of({texture_of(one), texture_of(two)});
    // As in a file that holds fewer slots than chunks.
    EditFieldHandlePtr const slots = material->editField(ChunkMaterial::SlotsFieldId);
    EXPECT_TRUE(slots->pushIndexedValueFromCString("-1", 0));
    EXPECT_TRUE(slots->removeIndex(1));
    DrawState const state = resolve_draw_state(material);
    ASSERT_EQ(state.textures.size(), 2u);
    EXPECT_EQ(state.textures[0].image, one);
    EXPECT_EQ(state.textures[1].image, two);
}

// --- alpha of textures ---

TEST(DrawStateResolution, ATextureWithAlphaIsBlended)
{
    for(UInt32 channels : {1u, 2u, 3u, 4u})
    {
        Ptr<Image> const image = image_of(channels);
        DrawState const state = resolve_draw_state(material_of({texture_of(image)}));
        EXPECT_EQ(state.isTransparent(), channels == 2 || channels == 4) << channels;
        EXPECT_FALSE(state.blend.dropsLowAlpha);
    }
}

TEST(DrawStateResolution, ForcedBinaryAlphaIsDroppedBelowAHalf)
{
    Ptr<Image> const image = image_of(4, true);
    DrawState const state = resolve_draw_state(material_of({texture_of(image)}));
    EXPECT_FALSE(state.isTransparent());
    EXPECT_TRUE(state.blend.dropsLowAlpha);
    Ptr<Image> const plain = image_of(3, true);
    EXPECT_FALSE(resolve_draw_state(material_of({texture_of(plain)})).blend.dropsLowAlpha);
}

TEST(DrawStateResolution, ForcedBinaryAlphaOfATransparentMaterialIsBlendedWithoutTheTest)
{
    Ptr<Image> const image = image_of(4, true);
    DrawState const state =
        resolve_draw_state(material_of({texture_of(image), make<BlendChunk>()}));
    EXPECT_TRUE(state.isTransparent());
    EXPECT_FALSE(state.blend.dropsLowAlpha);
}

// --- switches ---

TEST(DrawStateResolution, ASwitchShowsItsChoiceThroughOtherSwitches)
{
    Ptr<SimpleMaterial> const red = make<SimpleMaterial>();
    red->setDiffuse(Color3f(1, 0, 0));
    Ptr<SwitchMaterial> inner = make<SwitchMaterial>();
    inner->editMFMaterials()->push_back(nullptr);
    inner->editMFMaterials()->push_back(red);
    inner->setChoice(1);
    Ptr<SwitchMaterial> outer = make<SwitchMaterial>();
    outer->editMFMaterials()->push_back(inner);
    EXPECT_EQ(resolve_draw_state(outer), resolve_draw_state(red));
    inner->setChoice(0);
    EXPECT_EQ(resolve_draw_state(outer), DrawState());
    inner->setChoice(2);
    EXPECT_EQ(resolve_draw_state(outer), DrawState());
}

TEST(DrawStateResolution, ASwitchThatLeadsToItselfIsTheDefault)
{
    for(UInt32 length : {1u, 2u, 3u, 7u})
    {
        // A tail of two leads into a circle of that many.
        std::vector<Ptr<SwitchMaterial>> switches;
        for(UInt32 i = 0; i < length + 2; ++i)
            switches.push_back(make<SwitchMaterial>());
        for(UInt32 i = 0; i < switches.size(); ++i)
            switches[i]->editMFMaterials()->push_back(
                switches[i + 1 < switches.size() ? i + 1 : 2]);
        EXPECT_EQ(resolve_draw_state(switches[0]), DrawState()) << length;
        switches.back()->editMFMaterials()->clear();
    }
}

// --- overriding ---

TEST(DrawStateResolution, OverridingChunksReplaceByKindAndSlotAndJoinElsewhere)
{
    Ptr<Image> const one = image_of(3);
    Ptr<Image> const two = image_of(3);
    Ptr<Image> const other = image_of(3);
    Ptr<ChunkMaterial> const below = material_of(
        {red_surface(), texture_of(one), texture_of(two), environment_of(GLName::Replace)});
    Ptr<ChunkMaterial> const over = make<ChunkMaterial>();
    over->addChunk(texture_of(other), 1);
    over->addChunk(make<BlendChunk>());
    DrawState const state = resolve_draw_state(below, over);
    EXPECT_EQ(state.surface, red_surface()->getSurface());
    EXPECT_TRUE(state.isTransparent());
    ASSERT_EQ(state.textures.size(), 2u);
    EXPECT_EQ(state.textures[0].image, one);
    EXPECT_EQ(state.textures[0].envMode, GLName::Replace);
    EXPECT_EQ(state.textures[1].image, other);
}

TEST(DrawStateResolution, ASimpleMaterialIsOverriddenAsTheChunksThatItAmountsTo)
{
    Ptr<SimpleTexturedMaterial> const below = make<SimpleTexturedMaterial>();
    Ptr<Image> const image = image_of(3);
    below->setImage(image);
    below->setTransparency(0.5f);
    DrawState const state = resolve_draw_state(below, material_of({red_surface()}));
    EXPECT_EQ(state.surface, red_surface()->getSurface());
    EXPECT_TRUE(state.isTransparent());
    ASSERT_EQ(state.textures.size(), 1u);
    EXPECT_EQ(state.textures[0].image, image);
}

TEST(DrawStateResolution, ASimpleMaterialOverridesAsTheChunksThatItAmountsTo)
{
    Ptr<Image> const image = image_of(3);
    Ptr<ChunkMaterial> const below = material_of({red_surface(), texture_of(image)});
    Ptr<SimpleMaterial> const over = make<SimpleMaterial>();
    over->setTransparency(0.25f);
    DrawState const state = resolve_draw_state(below, over);
    EXPECT_EQ(state.surface.diffuse, Color4f(0.8f, 0.8f, 0.8f, 0.75f));
    EXPECT_TRUE(state.isTransparent());
    ASSERT_EQ(state.textures.size(), 1u);
}

TEST(DrawStateResolution, AnOverridingChunkThatIsIgnoredReplacesNothing)
{
    Ptr<MaterialChunk> const over = make<MaterialChunk>();
    over->setIgnore(true);
    EXPECT_EQ(resolve_draw_state(material_of({red_surface()}), material_of({over})),
              resolve_draw_state(material_of({red_surface()})));
}
} // namespace
} // namespace OSG::Test
