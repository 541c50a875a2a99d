#include "OSGLight.h"

#include "OSGNode.h"
#include "OSGRenderHandlers.h"

namespace OSG
{
Light::~Light() = default;

LightValues Light::makeValues(Matrix const &toEye) const
{
    LightValues values;
    values.ambient = getAmbient();
    values.diffuse = getDiffuse();
    values.specular = getSpecular();
    addTo(values, toEye);
    return values;
}

void Light::initMethod(TypeBase::InitPhase phase)
{
    LightBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_scope(
            getClassType(),
            [](NodeCore &core, RenderAction &action)
            { action.pushLight(static_cast<Light *>(&core)); },
            Action::HandlerPromise::Repeats);
}
} // namespace OSG
