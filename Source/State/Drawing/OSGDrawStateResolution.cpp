#include "OSGDrawStateResolution.h"

#include "OSGMaterial.h"
#include "OSGStateParts.h"

namespace OSG
{
DrawState resolve_draw_state(Material const *material, Material const *overriding)
{
    StateParts parts;
    if(material != nullptr)
        material->addTo(parts);
    if(overriding != nullptr)
        overriding->addTo(parts);
    return parts.resolve();
}
} // namespace OSG
