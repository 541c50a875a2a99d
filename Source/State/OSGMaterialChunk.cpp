#include "OSGMaterialChunk.h"

#include <epoxy/gl.h>

#include "OSGCheckedState.h"
#include "OSGChunkCalls.h"
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

// --- the context ---

void set_lit_surface(SurfaceValues const &surface, SurfaceValues const *former)
{
    auto const setColor = [&](GLenum name, Color4f SurfaceValues::*color)
    {
        if(former == nullptr || !(surface.*color == former->*color))
            glMaterialfv(GL_FRONT_AND_BACK, name, (surface.*color).values());
    };
    setColor(GL_AMBIENT, &SurfaceValues::ambient);
    setColor(GL_DIFFUSE, &SurfaceValues::diffuse);
    setColor(GL_SPECULAR, &SurfaceValues::specular);
    setColor(GL_EMISSION, &SurfaceValues::emission);
    if(former == nullptr || surface.shininess != former->shininess)
        glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, surface.shininess);
}

void set_unlit_surface(SurfaceValues const &surface) { glColor4fv(surface.diffuse.values()); }

bool is_unlit_color(UInt32 colorMaterial)
{
    return colorMaterial == GLName::Diffuse || colorMaterial == GLName::AmbientAndDiffuse;
}

namespace
{
Color4f const &named_color(SurfaceValues const &surface)
{
    switch(surface.colorMaterial)
    {
    case GLName::Ambient:
        return surface.ambient;
    case GLName::Specular:
        return surface.specular;
    case GLName::Emission:
        return surface.emission;
    default:
        return surface.diffuse;
    }
}
} // namespace

void MaterialChunk::activate(DrawEnv *, UInt32)
{
    SurfaceValues const surface = getSurface();
    set_lit_surface(surface);
    set_unlit_surface(surface);
    if(!surface.lit)
        glDisable(GL_LIGHTING);
    else if(surface.colorMaterial != 0)
    {
        glColorMaterial(GL_FRONT_AND_BACK, surface.colorMaterial);
        // From now on the current colour is the one that is named.
        glColor4fv(named_color(surface).values());
        glEnable(GL_COLOR_MATERIAL);
    }
}

void MaterialChunk::deactivate(DrawEnv *, UInt32)
{
    if(!getLit())
        glEnable(GL_LIGHTING);
    else if(getSurface().colorMaterial != 0)
        glDisable(GL_COLOR_MATERIAL);
}

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
