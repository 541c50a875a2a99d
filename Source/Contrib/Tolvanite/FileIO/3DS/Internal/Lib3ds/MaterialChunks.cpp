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
    while(chunk.hasChild())
    {
        Chunk form = chunk.child();
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
            chunk.messages().passOver(kind);
            continue;
        }
        if(isLinear || !hasLinear)
            std::copy_n(read, 3, color);
        hasLinear = hasLinear || isLinear;
    }
}

void read_percentage(Chunk chunk, float &value)
{
    while(chunk.hasChild())
    {
        Chunk form = chunk.child();
        if(form.kind() == PercentageChunk)
            value = static_cast<float>(static_cast<short>(form.word())) / 100.f;
        else
            chunk.messages().passOver(form.kind());
    }
}

void read_map(Chunk chunk, Lib3dsTextureMap &map)
{
    while(chunk.hasChild())
    {
        Chunk part = chunk.child();
        if(part.kind() == MapNameChunk)
            part.name(map.name);
        else if(part.kind() == MapFlagsChunk)
            map.flags = part.word();
        else
            chunk.messages().passOver(part.kind());
    }
}

void read_part(Chunk part, Lib3dsMaterial &material)
{
    switch(part.kind())
    {
    case MaterialNameChunk:
        part.name(material.name);
        return;
    case AmbientChunk:
        read_color(part, material.ambient);
        return;
    case DiffuseChunk:
        read_color(part, material.diffuse);
        return;
    case SpecularChunk:
        read_color(part, material.specular);
        return;
    case ShininessChunk:
        read_percentage(part, material.shininess);
        return;
    case ShininessStrengthChunk:
        read_percentage(part, material.shin_strength);
        return;
    case TransparencyChunk:
        read_percentage(part, material.transparency);
        return;
    default:
        break;
    }
    auto const *const slot = std::find_if(std::begin(MapSlots), std::end(MapSlots),
                                          [&](MapSlot const &s) { return s.kind == part.kind(); });
    if(slot != std::end(MapSlots))
        read_map(part, material.*slot->map);
    else
        part.messages().passOver(part.kind());
}
} // namespace

void read_material(Chunk chunk, File &file)
{
    Lib3dsMaterial material = new_material();
    while(chunk.hasChild())
        read_part(chunk.child(), material);
    file.addMaterial(material);
}
} // namespace OSG::Lib3ds
