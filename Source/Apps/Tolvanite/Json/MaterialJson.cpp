#include "MaterialJson.h"

#include <unordered_set>

#include "OSGBlendChunk.h"
#include "OSGChunkMaterial.h"
#include "OSGImage.h"
#include "OSGMaterialChunk.h"
#include "OSGSimpleTexturedMaterial.h"
#include "OSGSwitchMaterial.h"
#include "OSGTextureEnvChunk.h"
#include "OSGTextureObjChunk.h"
#include "ValueJson.h"

namespace Tool
{
namespace
{
/// Switch materials may nest. In a hostile file one may contain itself, or pairs over many levels
/// may multiply. The choices of a switch material are left out where it is written within itself,
/// and beyond a number of switch materials.
struct WrittenSwitches
{
    std::unordered_set<OSG::SwitchMaterial const *> open;
    std::size_t count = 0;
};
constexpr std::size_t MostSwitches = 1000; // this also bounds the depth

void write_material(JsonWriter &json, OSG::Material *material, WrittenSwitches &written);

void write_image(JsonWriter &json, OSG::Image const *image)
{
    json.key("image");
    if(image != nullptr)
        json.value(image->getName());
    else
        json.null();
}

void write_simple(JsonWriter &json, OSG::SimpleMaterial const &material)
{
    write_tuple(json, "ambient", material.getAmbient(), 3);
    write_tuple(json, "diffuse", material.getDiffuse(), 3);
    write_tuple(json, "specular", material.getSpecular(), 3);
    write_tuple(json, "emission", material.getEmission(), 3);
    json.member("shininess", material.getShininess())
        .member("transparency", material.getTransparency())
        .member("lit", material.getLit())
        .member("colorMaterial", material.getColorMaterial());
}

void write_textured(JsonWriter &json, OSG::SimpleTexturedMaterial const &material)
{
    write_image(json, material.getImage());
    json.member("envMap", material.getEnvMap())
        .member("envMode", material.getEnvMode())
        .member("minFilter", material.getMinFilter())
        .member("magFilter", material.getMagFilter());
}

void write_chunk(JsonWriter &json, OSG::StateChunk *chunk)
{
    if(chunk == nullptr)
    {
        json.null();
        return;
    }
    json.beginObject().member("type", chunk->getType().getCName());
    if(auto const *const colours = dynamic_cast<OSG::MaterialChunk *>(chunk))
    {
        write_tuple(json, "ambient", colours->getAmbient(), 4);
        write_tuple(json, "diffuse", colours->getDiffuse(), 4);
        write_tuple(json, "specular", colours->getSpecular(), 4);
        write_tuple(json, "emission", colours->getEmission(), 4);
        json.member("shininess", colours->getShininess())
            .member("lit", colours->getLit())
            .member("colorMaterial", colours->getColorMaterial());
    }
    else if(auto const *const blend = dynamic_cast<OSG::BlendChunk *>(chunk))
        json.member("srcFactor", blend->getSrcFactor())
            .member("destFactor", blend->getDestFactor());
    else if(auto const *const texture = dynamic_cast<OSG::TextureObjChunk *>(chunk))
    {
        write_image(json, texture->getImage());
        json.member("wrapS", texture->getWrapS())
            .member("wrapT", texture->getWrapT())
            .member("wrapR", texture->getWrapR())
            .member("minFilter", texture->getMinFilter())
            .member("magFilter", texture->getMagFilter());
    }
    else if(auto const *const environment = dynamic_cast<OSG::TextureEnvChunk *>(chunk))
        json.member("envMode", environment->getEnvMode());
    json.endObject();
}

void write_chunks(JsonWriter &json, OSG::ChunkMaterial const &material)
{
    json.key("chunks").beginArray();
    for(OSG::StateChunk *chunk : *material.getMFChunks())
        write_chunk(json, chunk);
    json.endArray();
}

void write_switch(JsonWriter &json, OSG::SwitchMaterial const &material, WrittenSwitches &written)
{
    json.member("choice", material.getChoice());
    if(written.count >= MostSwitches || !written.open.insert(&material).second)
        return;
    ++written.count;
    json.key("materials").beginArray();
    for(OSG::Material *choice : *material.getMFMaterials())
        write_material(json, choice, written);
    json.endArray();
    written.open.erase(&material);
}

void write_material(JsonWriter &json, OSG::Material *material, WrittenSwitches &written)
{
    if(material == nullptr)
    {
        json.null();
        return;
    }
    json.beginObject().member("type", material->getType().getCName()).key("name");
    write_name(json, material);
    if(auto const *const simple = dynamic_cast<OSG::SimpleMaterial *>(material))
        write_simple(json, *simple);
    if(auto const *const textured = dynamic_cast<OSG::SimpleTexturedMaterial *>(material))
        write_textured(json, *textured);
    if(auto const *const chunks = dynamic_cast<OSG::ChunkMaterial *>(material))
        write_chunks(json, *chunks);
    if(auto const *const choice = dynamic_cast<OSG::SwitchMaterial *>(material))
        write_switch(json, *choice, written);
    json.endObject();
}
} // namespace

void write_material(JsonWriter &json, OSG::Material *material)
{
    WrittenSwitches written;
    write_material(json, material, written);
}
} // namespace Tool
