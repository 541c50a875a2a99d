#include <algorithm>

#include "Chunks.h"

namespace OSG::Lib3ds
{
namespace
{
// Where a chunk holds several colours, a linear one counts more than one with gamma, and of equal
// forms the last.
void read_color(Chunk chunk, float (&color)[3])
{
    bool hasLinear = false;
    chunk.readChildren(
        [&](Chunk &form)
        {
            unsigned const kind = form.kind();
            bool const isLinear = kind == LinearColorByteChunk || kind == LinearColorFloatChunk;
            float read[3];
            switch(kind)
            {
            case ColorFloatChunk:
            case LinearColorFloatChunk:
                form.reals(read, 3);
                break;
            case ColorByteChunk:
            case LinearColorByteChunk:
                for(float &component : read)
                    component = static_cast<float>(form.byte()) / 255.f;
                break;
            default:
                return false;
            }
            if(isLinear || !hasLinear)
                std::copy_n(read, 3, color);
            hasLinear = hasLinear || isLinear;
            return true;
        });
}

void read_percentage(Chunk chunk, float &value)
{
    chunk.readChildren(
        [&value](Chunk &form)
        {
            if(form.kind() != PercentageChunk)
                return false;
            value = static_cast<float>(static_cast<short>(form.word())) / 100.f;
            return true;
        });
}

void read_map(Chunk chunk, Lib3dsTextureMap &map)
{
    chunk.readChildren(
        [&map](Chunk &part)
        {
            if(part.kind() == MapNameChunk)
                part.name(map.name);
            else if(part.kind() == MapFlagsChunk)
                map.flags = part.word();
            else
                return false;
            return true;
        });
}

bool read_map_of_kind(Chunk const &part, Lib3dsMaterial &material)
{
    Lib3dsTextureMap unused{};
    switch(part.kind())
    {
    case Texture1Chunk:
        read_map(part, material.texture1_map);
        return true;
    case Texture2Chunk:
        read_map(part, material.texture2_map);
        return true;
    case BumpChunk:
        read_map(part, material.bump_map);
        return true;
    case Texture1MaskChunk:
    case Texture2MaskChunk:
    case OpacityChunk:
    case OpacityMaskChunk:
    case BumpMaskChunk:
    case SpecularMapChunk:
    case SpecularMaskChunk:
    case ShininessMapChunk:
    case ShininessMaskChunk:
    case SelfIlluminationChunk:
    case SelfIlluminationMaskChunk:
    case ReflectionChunk:
    case ReflectionMaskChunk:
        read_map(part, unused); // it may be damaged as others
        return true;
    default:
        return false;
    }
}

bool read_part(Chunk &part, Lib3dsMaterial &material)
{
    switch(part.kind())
    {
    case MaterialNameChunk:
        part.name(material.name);
        return true;
    case AmbientChunk:
        read_color(part, material.ambient);
        return true;
    case DiffuseChunk:
        read_color(part, material.diffuse);
        return true;
    case SpecularChunk:
        read_color(part, material.specular);
        return true;
    case ShininessChunk:
        read_percentage(part, material.shininess);
        return true;
    case ShininessStrengthChunk:
        read_percentage(part, material.shin_strength);
        return true;
    case TransparencyChunk:
        read_percentage(part, material.transparency);
        return true;
    default:
        break;
    }
    return read_map_of_kind(part, material);
}
} // namespace

void read_material(Chunk chunk, File &file)
{
    Lib3dsMaterial material = new_material();
    if(chunk.readChildren([&material](Chunk &part) { return read_part(part, material); }))
        file.addMaterial(material);
    else
        file.addEmptyMaterial();
}
} // namespace OSG::Lib3ds
