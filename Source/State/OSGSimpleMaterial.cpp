#include "OSGSimpleMaterial.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
SimpleMaterial::~SimpleMaterial() = default;

void SimpleMaterial::addTo(StateParts &parts) const
{
    Real32 const transparency = checked_transparency(getTransparency());
    SurfaceValues surface;
    surface.ambient = Color4f(getAmbient(), 1);
    surface.diffuse = Color4f(getDiffuse(), 1 - transparency);
    surface.specular = Color4f(getSpecular(), 1);
    surface.emission = Color4f(getEmission(), 1);
    surface.shininess = getShininess();
    surface.lit = getLit();
    surface.colorMaterial = getColorMaterial();
    parts.setSurface(checked_surface(surface), 0);
    if(transparency > 0)
    {
        BlendValues blend;
        blend.isOn = true;
        parts.setBlend(blend, 0);
    }
}
} // namespace OSG
