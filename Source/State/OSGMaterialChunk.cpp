#include "OSGMaterialChunk.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
StateChunkClass MaterialChunk::_class("Material");

MaterialChunk::~MaterialChunk() = default;

StateChunkClass const *MaterialChunk::getClass() const { return &_class; }

SurfaceValues MaterialChunk::getSurface() const
{
    SurfaceValues surface;
    surface.ambient = getAmbient();
    surface.diffuse = getDiffuse();
    surface.specular = getSpecular();
    surface.emission = getEmission();
    surface.shininess = getShininess();
    surface.lit = getLit();
    surface.colorMaterial = getColorMaterial();
    return checked_surface(surface);
}

void MaterialChunk::activate(DrawEnv *, UInt32) {}
void MaterialChunk::deactivate(DrawEnv *, UInt32) {}

bool MaterialChunk::operator==(StateChunk const &other) const
{
    auto const *const chunk = dynamic_cast<MaterialChunk const *>(&other);
    return chunk != nullptr && (chunk == this || getSurface() == chunk->getSurface());
}

void MaterialChunk::addTo(StateParts &parts, UInt32 slot) const
{
    parts.setSurface(getSurface(), slot);
}
} // namespace OSG
