#include "OSGSimpleTexturedMaterial.h"

#include "OSGCheckedState.h"
#include "OSGStateParts.h"

namespace OSG
{
SimpleTexturedMaterial::~SimpleTexturedMaterial() = default;

void SimpleTexturedMaterial::addTo(StateParts &parts) const
{
    SimpleTexturedMaterialBase::addTo(parts);
    if(getImage() == nullptr)
        return;
    TextureValues texture;
    texture.image = getImage();
    texture.minFilter = getMinFilter();
    texture.magFilter = getMagFilter();
    texture.isSphereMap = getEnvMap();
    parts.setTexture(checked_texture(texture), 0);
    parts.setEnvironment(checked_environment(getEnvMode()), 0);
}
} // namespace OSG
