#include "OSGObjDefaultMaterial.h"

namespace OSG
{
namespace
{
constexpr Color3f Ambient(0.2f, 0.2f, 0.2f); // that of every new material
constexpr Color3f Diffuse(0.8f, 0.8f, 0.8f);
constexpr Color3f Specular(1.f, 1.f, 1.f);
constexpr Real32 Shininess = 20.f;
} // namespace

TransitPtr<SimpleTexturedMaterial> make_obj_default()
{
    TransitPtr<SimpleTexturedMaterial> material = SimpleTexturedMaterial::create();
    material->setDiffuse(Diffuse);
    material->setSpecular(Specular);
    material->setShininess(Shininess);
    return material;
}

bool is_obj_default(Material const &material)
{
    auto const *const simple = dynamic_cast<SimpleMaterial const *>(&material);
    auto const *const textured = dynamic_cast<SimpleTexturedMaterial const *>(&material);
    return simple != nullptr && (textured == nullptr || textured->getImage() == nullptr) &&
           simple->getAmbient() == Ambient && simple->getDiffuse() == Diffuse &&
           simple->getSpecular() == Specular && simple->getShininess() == Shininess &&
           simple->getTransparency() == 0.f;
}
} // namespace OSG
