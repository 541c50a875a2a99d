#include "Surface.h"

#include <algorithm>
#include <set>

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
constexpr Int32 HighestSlot = 32;
constexpr Blending OverBlending{GLName::SourceAlpha, GLName::OneMinusSourceAlpha};

Vec4d color_of(Color3f const &color, Real64 alpha)
{
    return Vec4d(Real64(color[0]), Real64(color[1]), Real64(color[2]), alpha);
}
Vec4d color_of(Color4f const &color) { return color_of(color.rgb(), color[3]); }

// Of what is not a number comes `low`.
Real64 limited(Real64 value, Real64 low, Real64 high)
{
    return value > low ? std::min(value, high) : low;
}

ChunkSet chunks_of_simple(SimpleMaterial const &material)
{
    Real64 const transparency = limited(material.getTransparency(), 0, 1);
    SurfaceColors colors;
    colors.ambient = color_of(material.getAmbient(), 1);
    colors.diffuse = color_of(material.getDiffuse(), 1 - transparency);
    colors.specular = color_of(material.getSpecular(), 1);
    colors.emission = color_of(material.getEmission(), 1);
    colors.shininess = limited(material.getShininess(), 0, 128);
    colors.colorMaterial = material.getColorMaterial();
    colors.lit = material.getLit();
    ChunkSet result;
    result.colors[0] = colors;
    if(transparency > 0)
        result.blendings[0] = OverBlending;
    auto const *const textured = dynamic_cast<SimpleTexturedMaterial const *>(&material);
    if(textured == nullptr || textured->getImage() == nullptr)
        return result;
    result.textures[0] = {textured->getImage(), textured->getMinFilter(), textured->getMagFilter(),
                          GLName::Repeat,       GLName::Repeat,           textured->getEnvMap()};
    result.environments[0] = textured->getEnvMode();
    return result;
}

SurfaceColors colors_of(MaterialChunk const &chunk)
{
    SurfaceColors colors;
    colors.ambient = color_of(chunk.getAmbient());
    colors.diffuse = color_of(chunk.getDiffuse());
    colors.specular = color_of(chunk.getSpecular());
    colors.emission = color_of(chunk.getEmission());
    colors.shininess = limited(chunk.getShininess(), 0, 128);
    colors.colorMaterial = chunk.getColorMaterial();
    colors.lit = chunk.getLit();
    return colors;
}

template <class Chunk>
Chunk const *active(ChunkMaterial const &material, Int32 slot)
{
    auto const *const chunk =
        dynamic_cast<Chunk const *>(material.find(Chunk::getClassType(), slot));
    return chunk != nullptr && !chunk->getIgnore() ? chunk : nullptr;
}

ChunkSet chunks_of_list(ChunkMaterial const &material)
{
    ChunkSet result;
    for(Int32 slot = 0; slot < HighestSlot; ++slot)
    {
        if(auto const *const chunk = active<MaterialChunk>(material, slot))
            result.colors[slot] = colors_of(*chunk);
        if(auto const *const chunk = active<BlendChunk>(material, slot))
            result.blendings[slot] = {chunk->getSrcFactor(), chunk->getDestFactor()};
        if(auto const *const chunk = active<TextureObjChunk>(material, slot))
            result.textures[slot] = {chunk->getImage(),     chunk->getMinFilter(),
                                     chunk->getMagFilter(), chunk->getWrapS(),
                                     chunk->getWrapT(),     false};
        if(auto const *const chunk = active<TextureEnvChunk>(material, slot))
            result.environments[slot] = chunk->getEnvMode();
        if(auto const *const chunk = active<TextureTransformChunk>(material, slot))
            result.textureMatrices[slot] = Matrix4d(chunk->getMatrix());
    }
    return result;
}

// The material that a chain of choices leads to; null where it leads nowhere.
Material const *chosen(Material const *material)
{
    std::set<Material const *> seen;
    while(auto const *const choice = dynamic_cast<SwitchMaterial const *>(material))
    {
        bool const leads =
            seen.insert(material).second && choice->getChoice() < choice->getMFMaterials()->size();
        material = leads ? (*choice->getMFMaterials())[choice->getChoice()] : nullptr;
    }
    return material;
}

template <class Values>
void take_over(Values &below, Values const &above)
{
    for(auto const &[slot, value] : above)
        below.insert_or_assign(slot, value);
}

// The value that has `rank` others before it, in the order of slots.
template <class Value>
Value of_rank(std::map<Int32, Value> const &values, std::size_t rank, Value const &otherwise)
{
    return rank < values.size() ? std::next(values.begin(), static_cast<long>(rank))->second
                                : otherwise;
}
} // namespace

ChunkSet chunks_of(Material const *material)
{
    Material const *const meant = chosen(material);
    if(auto const *const simple = dynamic_cast<SimpleMaterial const *>(meant))
        return chunks_of_simple(*simple);
    if(auto const *const list = dynamic_cast<ChunkMaterial const *>(meant))
        return chunks_of_list(*list);
    return {};
}

void override_chunks(ChunkSet &below, ChunkSet const &above)
{
    take_over(below.colors, above.colors);
    take_over(below.blendings, above.blendings);
    take_over(below.textures, above.textures);
    take_over(below.environments, above.environments);
    take_over(below.textureMatrices, above.textureMatrices);
}

Surface surface_of(ChunkSet const &chunks)
{
    Surface surface;
    surface.colors = of_rank(chunks.colors, 0, SurfaceColors());
    bool alpha = false;
    bool binary = false;
    for(std::size_t rank = 0; rank < chunks.textures.size(); ++rank)
    {
        TexturePicture const picture = of_rank(chunks.textures, rank, TexturePicture());
        if(picture.image == nullptr || picture.image->getMFPixel()->empty())
            continue;
        surface.stages.push_back({picture, of_rank(chunks.environments, rank, GLName::Modulate),
                                  of_rank(chunks.textureMatrices, rank, Matrix4d())});
        if(picture.image->hasAlpha())
            (picture.image->getForceAlphaBinary() ? binary : alpha) = true;
    }
    surface.transparent = !chunks.blendings.empty() || alpha;
    surface.blending = of_rank(chunks.blendings, 0, OverBlending);
    surface.alphaTest = binary && !surface.transparent;
    return surface;
}
} // namespace OSG::Test
