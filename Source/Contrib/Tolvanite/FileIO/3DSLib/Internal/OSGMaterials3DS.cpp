#include "OSGMaterials3DS.h"

#include "OSGBlendChunk.h"
#include "OSGGLNames.h"
#include "OSGImageFileHandler.h"
#include "OSGLog.h"
#include "OSGMaterialChunk.h"
#include "OSGName.h"
#include "OSGShownText.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"

namespace OSG
{
namespace
{
char with_other_case(char c)
{
    bool const isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    constexpr char CaseBit = 'a' ^ 'A';
    return static_cast<char>(isLetter ? c ^ CaseBit : c);
}

std::string with_other_case_of_last_part(std::string name)
{
    std::size_t const slash = name.find_last_of("/\\");
    for(std::size_t i = slash == std::string::npos ? 0 : slash + 1; i < name.size(); ++i)
        name[i] = with_other_case(name[i]);
    return name;
}

// Flags of a map.
constexpr unsigned NoTile = 0x10;
constexpr unsigned AlphaSource = 0x40;

/// What the maps of a material have said of it.
struct Marks
{
    bool isTextured = false;
    bool hasBumps = false;
    bool hasAlpha = false;
};

// Scale, offset and rotation of a map are not used.
bool add_map(ChunkMaterial &material, Lib3dsTextureMap const &map)
{
    UnrecordedRefPtr<Image> const image(load_image(map.name));
    if(image == nullptr)
        return false;
    image->setForceAlphaBinary(image->calcIsAlphaBinary());
    UnrecordedRefPtr<TextureObjChunk> const texture(TextureObjChunk::create());
    UInt32 const wrap = (map.flags & NoTile) != 0 ? GLName::Clamp : GLName::Repeat;
    texture->setImage(image);
    texture->setWrapS(wrap);
    texture->setWrapT(wrap);
    texture->setWrapR(wrap);
    texture->setMinFilter(GLName::LinearMipmapLinear);
    texture->setMagFilter(GLName::Linear);
    UnrecordedRefPtr<TextureEnvChunk> const environment(TextureEnvChunk::create());
    environment->setEnvMode(GLName::Modulate);
    material.addChunk(texture, ChunkMaterial::AutoSlot);
    material.addChunk(environment, ChunkMaterial::AutoSlot);
    return true;
}

void add_texture_map(ChunkMaterial &material, Lib3dsTextureMap const &map, Marks &marks)
{
    if(!add_map(material, map))
        return;
    marks.isTextured = true;
    if((map.flags & AlphaSource) != 0)
        marks.hasAlpha = true;
}

Marks add_maps(ChunkMaterial &material, Lib3dsMaterial const &source)
{
    Marks marks;
    add_texture_map(material, source.texture1_map, marks);
    add_texture_map(material, source.texture2_map, marks);
    marks.hasBumps = add_map(material, source.bump_map);
    return marks;
}

void add_blending(ChunkMaterial &material)
{
    UnrecordedRefPtr<BlendChunk> const blend(BlendChunk::create());
    blend->setSrcFactor(GLName::SourceAlpha);
    blend->setDestFactor(GLName::OneMinusSourceAlpha);
    material.addChunk(blend, ChunkMaterial::AutoSlot);
}

Color4f with_alpha(float const (&color)[3], Real32 alpha)
{
    return Color4f(color[0], color[1], color[2], alpha);
}

void add_colors(ChunkMaterial &material, Lib3dsMaterial const &source, Marks const &marks)
{
    Real32 const alpha = 1.f - source.transparency;
    Real32 const strength = source.shin_strength;
    float const *const specular = source.specular;
    UnrecordedRefPtr<MaterialChunk> const colors(MaterialChunk::create());
    colors->setEmission(Color4f(0.f, 0.f, 0.f, alpha));
    if(marks.isTextured && !marks.hasBumps && !marks.hasAlpha)
    {
        colors->setAmbient(Color4f(0.2f, 0.2f, 0.2f, alpha));
        colors->setDiffuse(Color4f(0.8f, 0.8f, 0.8f, alpha));
        colors->setSpecular(Color4f(0.f, 0.f, 0.f, alpha));
    }
    else
    {
        colors->setAmbient(with_alpha(source.ambient, alpha));
        colors->setDiffuse(with_alpha(source.diffuse, alpha));
        colors->setSpecular(Color4f(specular[0] * strength, specular[1] * strength,
                                    specular[2] * strength, alpha * strength));
    }
    colors->setShininess(source.shininess > 0.f ? 128.f * source.shininess : 25.6f);
    material.addChunk(colors, ChunkMaterial::AutoSlot);
}
} // namespace

TransitPtr<Image> load_image(char const *name)
{
    if(name == nullptr || *name == '\0')
        return nullptr;
    TransitPtr<Image> image = Image::create();
    if(image->read(name))
        return image;
    std::string const other = with_other_case_of_last_part(name);
    OSG_LOG_WARNING("Couldn't load image '%s', trying case reversed version '%s'! \n",
                    shown_text(name).c_str(), shown_text(other).c_str());
    if(!image->read(other.c_str()))
        return nullptr;
    return image;
}

bool names_pictures(Lib3dsMaterial const &material)
{
    return material.texture1_map.name[0] != '\0' || material.texture2_map.name[0] != '\0' ||
           material.bump_map.name[0] != '\0';
}

// The chunk of colours comes last.
TransitPtr<ChunkMaterial> convert_material(Lib3dsMaterial const &source)
{
    TransitPtr<ChunkMaterial> material = ChunkMaterial::create();
    setName(material.get(), source.name);
    Marks const marks = add_maps(*material, source);
    if(source.transparency > 0.f || marks.hasAlpha)
        add_blending(*material);
    add_colors(*material, source, marks);
    return material;
}
} // namespace OSG
