#include "OSGMaterialGroup.h"

#include "OSGRenderHandlers.h"

namespace OSG
{
MaterialGroup::~MaterialGroup() = default;

void MaterialGroup::initMethod(TypeBase::InitPhase phase)
{
    MaterialGroupBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_scope(
            getClassType(),
            [](NodeCore &core, RenderAction &action)
            { action.pushMaterial(static_cast<MaterialGroup &>(core).getMaterial()); },
            Action::HandlerPromise::Repeats);
}
} // namespace OSG
