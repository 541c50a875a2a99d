#include "OSGMaterialChunkOverrideGroup.h"

#include "OSGRenderHandlers.h"

namespace OSG
{
MaterialChunkOverrideGroup::~MaterialChunkOverrideGroup() = default;

void MaterialChunkOverrideGroup::initMethod(TypeBase::InitPhase phase)
{
    MaterialChunkOverrideGroupBase::initMethod(phase);
    if(phase == TypeBase::SystemPost)
        register_render_scope(
            getClassType(),
            [](NodeCore &core, RenderAction &action) {
                action.pushOverriding(
                    static_cast<MaterialChunkOverrideGroup &>(core).getMaterial());
            },
            Action::HandlerPromise::Repeats);
}
} // namespace OSG
