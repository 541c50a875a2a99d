#include "RandomMaterial.h"

#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGGLNames.h"
#include "OSGMaterialChunk.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "OSGTextureTransformChunk.h"

namespace OSG::Test
{
namespace
{
constexpr UInt32 ColorMaterials[] = {0,
                                     0,
                                     GLName::Ambient,
                                     GLName::Diffuse,
                                     GLName::Specular,
                                     GLName::Emission,
                                     GLName::AmbientAndDiffuse};
constexpr UInt32 Environments[] = {GLName::Modulate, GLName::Decal, GLName::Blend, GLName::Replace,
                                   GLName::Add};
constexpr UInt32 Wraps[] = {GLName::Repeat, GLName::Repeat, GLName::Clamp, GLName::ClampToEdge,
                            GLName::MirroredRepeat};

// OpenGL does not say what a gloss of 0 to the power of 0 is.
constexpr Real32 LeastShininess = 1;

template <std::size_t Count>
UInt32 one_of(RandomNumbers &random, UInt32 const (&values)[Count])
{
    return values[random.below(Count)];
}

/// Filters for smaller and for larger texels, one time in three with mipmaps.
struct Filters
{
    UInt32 min;
    UInt32 mag;
};
Filters random_filters(RandomNumbers &random)
{
    UInt32 const mag = random.below(2) == 0 ? GLName::Nearest : GLName::Linear;
    return {random.below(3) == 0 ? GLName::LinearMipmapLinear : mag, mag};
}

// OpenGL leaves open what decals of grey pictures look like.
UInt32 random_environment(RandomNumbers &random, Image const &image)
{
    UInt32 const mode = one_of(random, Environments);
    return mode == GLName::Decal && image.getChannels() < 3 ? GLName::Modulate : mode;
}

Color4f color_with_alpha(RandomNumbers &random, Real32 alpha)
{
    return Color4f(random_color(random), alpha);
}

// Alpha keeps away from a half, where a test of alpha could go either way.
UnrecordedRefPtr<Image> random_image(RandomNumbers &random, bool mayHaveAlpha)
{
    UInt32 const channels = mayHaveAlpha ? 1 + random.below(4) : 1 + 2 * random.below(2);
    UInt32 const width = 1 + random.below(6);
    UInt32 const height = 1 + random.below(6);
    std::vector<UInt8> pixels(std::size_t(width) * height * channels);
    for(std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<UInt8>(random.below(256));
    bool const binary = channels % 2 == 0 && random.below(2) == 0;
    for(std::size_t i = channels - 1; binary && i < pixels.size(); i += channels)
        pixels[i] = random.below(3) == 0 ? 0 : 255;
    UnrecordedRefPtr<Image> image(Image::create());
    image->set(width, height, channels, pixels.data());
    image->setForceAlphaBinary(binary);
    return image;
}

void fill(RandomNumbers &random, SimpleMaterial &material)
{
    material.setAmbient(random_color(random));
    material.setDiffuse(random_color(random));
    material.setSpecular(random_color(random));
    if(random.below(3) == 0)
        material.setEmission(random_color(random));
    material.setShininess(random.real(LeastShininess, 140));
    material.setLit(random.below(4) != 0);
    material.setColorMaterial(one_of(random, ColorMaterials));
}

MaterialPtr simple(RandomNumbers &random, bool mayBeTransparent)
{
    UnrecordedRefPtr<SimpleMaterial> const material(SimpleMaterial::create());
    fill(random, *material);
    if(mayBeTransparent && random.below(2) == 0)
        material->setTransparency(random.real(0.1f, 0.9f));
    return material;
}

MaterialPtr textured(RandomNumbers &random)
{
    UnrecordedRefPtr<SimpleTexturedMaterial> const material(SimpleTexturedMaterial::create());
    fill(random, *material);
    material->setImage(random_image(random, true));
    Filters const filters = random_filters(random);
    material->setMinFilter(filters.min);
    material->setMagFilter(filters.mag);
    material->setEnvMap(random.below(5) == 0);
    material->setEnvMode(random_environment(random, *material->getImage()));
    if(random.below(4) == 0)
        material->setTransparency(random.real(0.1f, 0.9f));
    return material;
}

void add_texture(RandomNumbers &random, ChunkMaterial &material, Int32 slot)
{
    UnrecordedRefPtr<TextureObjChunk> const texture(TextureObjChunk::create());
    texture->setImage(random_image(random, slot == 0));
    Filters const filters = random_filters(random);
    texture->setMinFilter(filters.min);
    texture->setMagFilter(filters.mag);
    texture->setWrapS(one_of(random, Wraps));
    texture->setWrapT(one_of(random, Wraps));
    material.addChunk(texture, slot);
    UnrecordedRefPtr<TextureEnvChunk> const environment(TextureEnvChunk::create());
    environment->setEnvMode(random_environment(random, *texture->getImage()));
    material.addChunk(environment, slot);
    UnrecordedRefPtr<TextureTransformChunk> const transform(TextureTransformChunk::create());
    Matrix matrix = rotation(Vec3f(0, 0, 1), random.real(0, 6));
    matrix[3][0] = random.real(-2, 2);
    transform->setMatrix(matrix);
    material.addChunk(transform, slot);
}

MaterialPtr chunks(RandomNumbers &random)
{
    UnrecordedRefPtr<ChunkMaterial> const material(ChunkMaterial::create());
    UnrecordedRefPtr<MaterialChunk> const colors(MaterialChunk::create());
    bool const blends = random.below(3) == 0;
    colors->setAmbient(color_with_alpha(random, 1));
    colors->setDiffuse(color_with_alpha(random, blends ? random.real(0.1f, 0.9f) : 1.f));
    colors->setSpecular(color_with_alpha(random, 1));
    colors->setShininess(random.real(LeastShininess, 128));
    colors->setLit(random.below(4) != 0);
    colors->setColorMaterial(one_of(random, ColorMaterials));
    colors->setIgnore(random.below(6) == 0);
    material->addChunk(colors);
    if(blends)
    {
        UnrecordedRefPtr<BlendChunk> const blend(BlendChunk::create());
        if(random.below(2) == 0)
            blend->setDestFactor(1);
        blend->setIgnore(random.below(6) == 0);
        material->addChunk(blend);
    }
    for(Int32 slot = 0; slot < static_cast<Int32>(random.below(3)); ++slot)
        add_texture(random, *material, slot);
    return material;
}

MaterialPtr choice(RandomNumbers &random)
{
    UnrecordedRefPtr<SwitchMaterial> const material(SwitchMaterial::create());
    material->editMFMaterials()->push_back(simple(random, true));
    material->editMFMaterials()->push_back(chunks(random));
    material->setChoice(random.below(3));
    return material;
}
} // namespace

Color3f random_color(RandomNumbers &random)
{
    Real32 const red = random.real(0, 1);
    Real32 const green = random.real(0, 1);
    return Color3f(red, green, random.real(0, 1));
}

MaterialPtr random_material(RandomNumbers &random, RandomMaterials kinds)
{
    switch(kinds)
    {
    case RandomMaterials::Simple:
        return simple(random, false);
    case RandomMaterials::Transparent:
        return simple(random, true);
    case RandomMaterials::Textured:
        return random.below(3) == 0 ? simple(random, false) : textured(random);
    default:
        break;
    }
    switch(random.below(6))
    {
    case 0:
        return MaterialPtr();
    case 1:
        return choice(random);
    case 2:
        return textured(random);
    case 3:
        return simple(random, true);
    default:
        return chunks(random);
    }
}
} // namespace OSG::Test
